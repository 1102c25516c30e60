// The two languages of the resources must be one program: a text with other arguments, a control that is missing or an
// access key that stands twice shows only to the users of one language.
#include <windows.h>
#include <commctrl.h>
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <regex>
#include <set>

#include "base/text.h"
#include "document/gesture.h"
#include "frqctrl/frqctrl.h"
#include "frqmap/checkmark.h"
#include "resources/ids.h"
#include "window/controltexts.h"
#include "window/flatbutton.h"

namespace {

constexpr WORD kEnglish = MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);
constexpr WORD kJapanese = 1041;
constexpr int kDialogs[] = {IDD_EDITOR,        IDD_ABOUT,      IDD_OPTION,    IDD_CREATEFRQ, IDD_THUMBNAIL,
                            IDD_OPTIONVS4UFRQ, IDD_CONVERT,    IDD_CHECK,     IDD_MODIFY,    IDD_VIRTUALSTORE,
                            IDD_INITMRQ,       IDD_INITMRQALL, IDD_MAPCHANGED, IDD_FIND,     IDD_KEPTFILES,
                            IDD_CHECKPROGRESS, IDD_SUGGESTIONS};

// The editor's form is not shown without the controls that are our own.
struct Resources : testing::Test {
  static void SetUpTestSuite() {
    RegisterControl<CFrqCtrl>();
    RegisterControl<CFlatButton>();
    InitCommonControls();
  }
};

// Of exactly this language: no other one stands in for it.
const void* Find(const wchar_t* type, const wchar_t* name, WORD language) {
  return LockResource(LoadResource(nullptr, FindResourceExW(nullptr, type, name, language)));
}

std::wstring StringOf(int id, WORD language) {
  auto text = static_cast<const wchar_t*>(Find(RT_STRING, MAKEINTRESOURCEW(id / 16 + 1), language));
  for (int skipped = 0; text && skipped < id % 16; ++skipped) text += *text + 1;
  return text ? std::wstring(text + 1, *text) : L"";
}

struct Item {
  std::wstring kind;  // all that a translation must keep
  std::wstring text;
};
using Items = std::multimap<int, Item>;  // by their id

// `opener`: the number of the item that opens this menu; `before`: items that stand before these.
void AddMenu(HMENU menu, int opener, Items& items, int before = 0) {
  for (int i = 0; i < GetMenuItemCount(menu); ++i) {
    wchar_t text[99] = L"";
    GetMenuStringW(menu, static_cast<UINT>(i), text, 99, MF_BYPOSITION);
    items.emplace(opener, Item{std::to_wstring(GetMenuItemID(menu, i)), text});
    if (GetSubMenu(menu, i)) AddMenu(GetSubMenu(menu, i), 100 * opener + before + i + 1, items);
  }
}
// With the items that are appended to the menus from Edit on.
Items Menu(WORD language) {
  Items items;
  const HMENU menu = LoadMenuIndirectW(Find(RT_MENU, IDR_MENU1, language));
  AddMenu(menu, 0, items);
  DestroyMenu(menu);
  const HMENU added = LoadMenuIndirectW(Find(RT_MENU, MAKEINTRESOURCEW(IDR_ADDEDMENU), language));
  for (int i = 0; i < GetMenuItemCount(added); ++i) AddMenu(GetSubMenu(added, i), i + 2, items, 50);
  DestroyMenu(added);
  return items;
}

// As the menus of a language write it: "Ctrl+Shift+V".
std::wstring NameOf(const ACCEL& key, WORD language) {
  const bool isEnglish = language == kEnglish;
  const std::map<WORD, std::wstring> names = {
      {VK_UP, isEnglish ? L"Up" : L"\u2191"}, {VK_DOWN, isEnglish ? L"Down" : L"\u2193"}, {VK_DELETE, L"Del"},
      {VK_NUMPAD0, L"0"}, {VK_ADD, L"+"}, {VK_SUBTRACT, L"-"}, {VK_OEM_PLUS, L"+"}, {VK_OEM_MINUS, L"-"}};
  std::wstring name;
  if (key.fVirt & FCONTROL) name += L"Ctrl+";
  if (key.fVirt & FALT) name += L"Alt+";
  if (key.fVirt & FSHIFT) name += L"Shift+";
  if (names.contains(key.key)) return name + names.at(key.key);
  if (key.key >= VK_F1 && key.key <= VK_F12) return name + L"F" + std::to_wstring(key.key - VK_F1 + 1);
  return name + static_cast<wchar_t>(key.key);
}

std::vector<ACCEL> KeysOf(int table) {
  const HACCEL loaded = LoadAcceleratorsW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(table));
  std::vector<ACCEL> keys(static_cast<std::size_t>(CopyAcceleratorTableW(loaded, nullptr, 0)));
  CopyAcceleratorTableW(loaded, keys.data(), static_cast<int>(keys.size()));
  return keys;
}

// The dialog and then its controls, in tab order.
void Visit(int dialog, WORD language, const std::function<void(HWND)>& visit) {
  const auto* const form = static_cast<const DLGTEMPLATE*>(Find(RT_DIALOG, MAKEINTRESOURCEW(dialog), language));
  const HWND window = CreateDialogIndirectW(GetModuleHandleW(nullptr), form, nullptr,
                                            [] WINAPI(HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return 0; });
  for (HWND control = window; control; control = GetWindow(control, control == window ? GW_CHILD : GW_HWNDNEXT)) {
    visit(control);
  }
  DestroyWindow(window);
}

std::wstring ClassOf(HWND window) {
  wchar_t name[99] = L"";
  GetClassNameW(window, name, 99);
  return name;
}

// The dialog itself has the id 0.
Items Controls(int dialog, WORD language) {
  Items items;
  Visit(dialog, language, [&](HWND control) {
    const LONG style = GetWindowLongW(control, GWL_STYLE), exStyle = GetWindowLongW(control, GWL_EXSTYLE);
    items.emplace(GetParent(control) ? GetDlgCtrlID(control) : 0,
                  Item{ClassOf(control) + FormatText(L" %lx %lx", style, exStyle), WindowText(control)});
  });
  return items;
}

// The letters after "&" that stand in more than one of the texts, in upper case.
std::wstring KeysUsedTwice(const Items& items, int id = -1) {
  std::wstring keys, twice;
  for (const auto& [itemId, item] : items) {
    const auto at = item.text.find(L'&');
    if ((id >= 0 && itemId != id) || at == item.text.npos) continue;
    const auto key = static_cast<wchar_t>(towupper(item.text[at + 1]));
    (keys.find(key) == keys.npos ? keys : twice) += key;
  }
  return twice;
}

TEST_F(Resources, EveryTextIsThereInBothLanguagesWithTheSameArguments) {
  const auto nameOf = [](Gesture gesture) { return IDS_GESTURE_FIRST + static_cast<int>(gesture); };
  // The kinds of map go by their file extensions, and four gestures by their buttons.
  std::set<int> untranslated = {IDS_KIND_FRQ, IDS_KIND_VS4UFRQ, IDS_KIND_FRC, IDS_KIND_PMK, IDS_KIND_DIO, IDS_KIND_MRQ};
  for (const auto gesture : {Gesture::Triple, Gesture::Double, Gesture::Halve, Gesture::Third}) {
    untranslated.insert(nameOf(gesture));
  }
  const std::wregex argument(L"%([0-9.]*[a-z]|[0-9])");
  constexpr int kMostIds = 4096;
  int count = 0;
  for (int id = 1; id < kMostIds; ++id) {
    const auto english = StringOf(id, kEnglish), japanese = StringOf(id, kJapanese);
    if (english.empty() && japanese.empty()) continue;
    ++count;
    const auto arguments = [&](const std::wstring& text) {
      return std::vector<std::wstring>(std::wsregex_token_iterator(text.begin(), text.end(), argument), {});
    };
    EXPECT_FALSE(english.empty() || japanese.empty()) << id;
    EXPECT_EQ(english == japanese, untranslated.contains(id)) << id;
    EXPECT_EQ(arguments(english), arguments(japanese)) << id;
  }
  EXPECT_GT(count, 200);
}

// A key that stood twice would never reach its second command, and a menu may show one that does nothing.
TEST_F(Resources, EachKeyHasOneCommandAndTheMenusShowIt) {
  for (const WORD language : {kEnglish, kJapanese}) {
    // Space is no key while nothing sounds.
    std::map<std::wstring, int> commands = {{L"Space", ID_LISTEN_STOP}};
    for (const int table : {IDR_ACCELERATORS, IDR_SHAREDKEYS, IDR_ADDEDKEYS}) {
      for (const ACCEL& key : KeysOf(table)) {
        const int command = commands.try_emplace(NameOf(key, language), key.cmd).first->second;
        EXPECT_EQ(command, key.cmd) << NameOf(key, language).c_str();
      }
    }
    for (const auto& [opener, item] : Menu(language)) {
      const auto tab = item.text.find(L'\t');
      if (tab == item.text.npos) continue;
      const auto key = commands.find(item.text.substr(tab + 1));
      EXPECT_TRUE(key != commands.end() && std::to_wstring(key->second) == item.kind) << item.text.c_str();
    }
  }
}

TEST_F(Resources, BothLanguagesHaveTheSameMenu) {
  const Items english = Menu(kEnglish), japanese = Menu(kJapanese);
  EXPECT_GT(english.size(), 50u);
  EXPECT_TRUE(std::ranges::equal(english, japanese, [](const auto& one, const auto& other) {
    return one.first == other.first && one.second.kind == other.second.kind &&
           one.second.text.empty() == other.second.text.empty();
  }));
  // Users know these texts, so the clashes in them stay: the key moves from one of its items to the next.
  for (const auto& [items, known] : {std::pair(english, L"AR"), std::pair(japanese, L"R")}) {
    std::wstring clashes;
    for (auto menu = items.begin(); menu != items.end(); menu = items.upper_bound(menu->first)) {
      clashes += KeysUsedTwice(items, menu->first);
    }
    EXPECT_EQ(clashes, known);
  }
}

TEST_F(Resources, BothLanguagesHaveTheSameControls) {
  // The labels of the preview, which only the Japanese form greys together with their boxes.
  const std::set<int> japaneseOnly = {IDC_STATIC, IDC_EDITOR_PITCHLABEL, IDC_EDITOR_MODULATIONLABEL,
                                      IDC_EDITOR_PERCENTLABEL, IDC_EDITOR_FLAGSLABEL};
  const std::set<std::wstring> untranslated = {L"avg", L"$direct=True", L"filename", L"Application name"};
  const std::wregex word(L"[a-z]{3}");
  for (const int id : kDialogs) {
    SCOPED_TRACE(id);
    Items english = Controls(id, kEnglish), japanese = Controls(id, kJapanese);
    for (Items* const items : {&english, &japanese}) {
      EXPECT_EQ(KeysUsedTwice(*items), L"");
      std::erase_if(*items, [&](const auto& item) { return japaneseOnly.contains(item.first); });
    }
    EXPECT_GT(english.size(), 1u);
    ASSERT_EQ(english.size(), japanese.size());
    for (auto one = english.begin(), other = japanese.begin(); one != english.end(); ++one, ++other) {
      EXPECT_EQ(one->first, other->first);
      EXPECT_EQ(one->second.kind, other->second.kind) << one->first;
      const std::wstring& text = one->second.text;
      if (!std::regex_search(text, word)) continue;
      EXPECT_EQ(text == other->second.text, untranslated.contains(text)) << text.c_str();
    }
  }
}

TEST_F(Resources, EachControlThatAUserActsOnHasATipAndAName) {
  // The table tells of the place under the mouse; the link says where it leads.
  const std::set<int> withoutTip = {IDC_EDITOR_TABLE, IDC_VIRTUALSTORE_LINK, IDC_CREATEFRQ_PROGRESS};
  std::vector<int> dialogs(std::begin(kDialogs), std::end(kDialogs));
  dialogs.push_back(IDD_FILELIST);
  std::set<int> told;
  for (const int dialog : dialogs) {
    const auto texts = ControlTextsOf(dialog);
    const WORD language = dialog == IDD_FILELIST ? kEnglish : kJapanese;
    std::set<int> missing;
    for (const ControlText& text : texts) {
      if (text.Control < IDC_TABLE_VIEW || text.Control > IDC_TABLE_TRACKBAR) missing.insert(text.Control);
      told.insert({text.Tip, text.Name});
    }
    std::wstring label;
    Visit(dialog, language, [&](HWND control) {
      const int id = GetDlgCtrlID(control);
      const LONG style = GetWindowLongW(control, GWL_STYLE);
      const std::wstring kind = ClassOf(control);
      const bool isActedOn = GetParent(control) && kind != L"Static" &&
                             (style & (WS_VISIBLE | WS_DISABLED)) == WS_VISIBLE &&
                             !(kind == L"Button" && (style & BS_TYPEMASK) == BS_GROUPBOX);
      if (isActedOn) {
        const ControlText* const text = ControlTextOf(texts, id);
        EXPECT_TRUE(withoutTip.contains(id) || (text && text->Tip)) << dialog << " " << id;
        EXPECT_TRUE((text && text->Name) || !WindowText(control).empty() || !label.empty()) << dialog << " " << id;
      }
      missing.erase(id);
      label = kind == L"Static" ? WindowText(control) : L"";
    });
    EXPECT_EQ(missing, std::set<int>()) << dialog;
  }
  told.erase(0);
  for (const int id : told) {
    EXPECT_NE(StringOf(id, kEnglish), StringOf(id, kJapanese)) << id;
    EXPECT_FALSE(StringOf(id, kEnglish).empty() || StringOf(id, kJapanese).empty()) << id;
  }
}

TEST_F(Resources, AMarkIsToldWithItsReason) {
  FrameReading frame;
  frame.Position = 22050;
  frame.Pitch = ReadPitch(441.0);
  std::set<std::wstring> texts;
  std::vector<int> marks = {CheckMarkNone, 1};
  for (int mark = CheckMarkFactor; mark <= CheckMarkLast; ++mark) marks.push_back(mark);
  for (const int mark : marks) {
    frame.Mark = static_cast<std::uint32_t>(mark);
    texts.insert(TextOf({std::nullopt, frame}, 44100.0));
  }
  EXPECT_EQ(texts.size(), marks.size()) << "a mark of another library has none that we know";
  for (const wchar_t* part : {L"0.500 s", L"A4 +4 cents", L"441.00 Hz"}) {
    for (const std::wstring& text : texts) EXPECT_NE(text.find(part), text.npos) << part;
  }
}

}  // namespace
