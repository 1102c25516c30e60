// Curves copied and pasted by their keys, and what reaches the clipboard, the map and its history.
#include <cmath>

#include "frqmap/edits.h"
#include "gui/program.h"

namespace {

constexpr WORD kCtrl = VK_CONTROL;

struct Curves : ProgramTest {
  static std::wstring Clipboard() {
    std::wstring text;
    if (!OpenClipboard(nullptr)) return L"held";
    if (const HANDLE memory = GetClipboardData(CF_UNICODETEXT)) {
      text = static_cast<const wchar_t*>(GlobalLock(memory));
      GlobalUnlock(memory);
    }
    CloseClipboard();
    return text;
  }
  static void SetClipboard(const std::wstring& text) {
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
    memcpy(GlobalLock(memory), text.c_str(), (text.size() + 1) * sizeof(wchar_t));
    GlobalUnlock(memory);
    EXPECT_TRUE(Eventually([] { return OpenClipboard(nullptr); }));  // a paste may be under way
    EXPECT_TRUE(EmptyClipboard() && SetClipboardData(CF_UNICODETEXT, memory));
    CloseClipboard();
  }
  // The clipboard is not looked at before something has come: that would be in the way of the one that copies.
  bool Copies(const std::wstring& text) const {
    const DWORD before = GetClipboardSequenceNumber();
    return PressUntil(editor_, {kCtrl, 'C'}, [&] { return GetClipboardSequenceNumber() != before; }) &&
           Eventually([&] { return Clipboard() == text; });
  }
  bool Shows(const std::vector<WORD>& keys, const std::wstring& frames) const {
    return PressUntil(editor_, keys, [&] { return Frames() == frames; });
  }
  Bytes BytesOfMap(int syllable) const { return EncodeFreq0003(*List().Map(syllable), FrqTypeFrq); }
};

TEST_F(Curves, GoFromOneSyllableToAnotherAsTextAndAreTakenBackWhole) {
  AddSyllable(L"a", {220.0, 55.0, 246.5, 440.0});
  AddSyllable(L"b", {300.0, 300.0, 300.0, 300.0, 300.0});
  Start(folder_.Path());
  Select(0);
  SelectFrames({1, 2, 3});
  List().Map(0)->Hop = 441;
  SetClipboard(L"");
  const std::wstring rows = L"0.000000\t\r\n0.010000\t246.5\r\n0.020000\t440\r\n";
  EXPECT_TRUE(Copies(rows));
  Select(1);
  List().Map(1)->Hop = 441;
  const Bytes asItWas = BytesOfMap(1);
  const std::wstring before = Frames();
  SelectFrames({1});
  const std::wstring after = L"300.00000000|----|246.50000000|440.00000000|300.00000000|";
  EXPECT_TRUE(Shows({kCtrl, 'V'}, after));
  EXPECT_EQ(SelectedFrames(), (std::vector{1, 2, 3}));
  EXPECT_EQ(SelectionOfMap(1), (std::vector{1, 2, 3}));
  EXPECT_EQ(Column(2) + MenuText(ID_EDIT_UNDO), L"|*|&Undo Paste of Curve\tCtrl+Z");
  EXPECT_TRUE(Shows({kCtrl, 'Z'}, before));
  EXPECT_EQ(BytesOfMap(1), asItWas);
  EXPECT_TRUE(Shows({kCtrl, 'Y'}, after));
  // The key is 261.5, the median between the two pitches is the root of their product.
  const double key = List().Map(1)->Average, median = std::sqrt(246.5 * 440.0);
  SelectFrames({0, 1, 2});
  std::wstring shape = L"----|" + FrameRowText(246.5 * key / median) + L"|" + FrameRowText(440.0 * key / median) + L"|";
  EXPECT_TRUE(Shows({kCtrl, VK_SHIFT, 'V'}, shape + L"440.00000000|300.00000000|"));
  EXPECT_EQ(MenuText(ID_EDIT_UNDO), L"&Undo Paste of Shape\tCtrl+Z");
}

TEST_F(Curves, AnythingElseOnTheClipboardIsToldAndTheKeysStayThoseOfABox) {
  AddSyllable(L"a", {220.0, 330.0});
  Start(folder_.Path());
  Select(0);
  const std::wstring expected = LoadResString(IDS_CURVE_EXPECTED);
  const Bytes asItWas = BytesOfMap(0);
  for (const std::wstring& text : {std::wstring(L"a letter"), std::wstring(), std::wstring(50'000'000, L'7')}) {
    SetClipboard(text);
    EXPECT_TRUE(PressUntil(editor_, {kCtrl, 'V'}, [&] { return Words().find(expected) != std::wstring::npos; }));
    EXPECT_EQ(BytesOfMap(0), asItWas);
    EXPECT_EQ(Column(2), L"|");
    SendMessageW(editor_, WM_COMMAND, ID_EDIT_SELECTALL, 0);
    PressKeys(editor_, {VK_SHIFT});
    EXPECT_TRUE(Eventually([] { return Words().empty(); }));
  }
  // A hundred million bytes of good rows: what the map has room for is taken.
  std::wstring many;
  while (many.size() < 50'000'000) many += L"0.000000\t441.5\r\n";
  SetClipboard(many);
  EXPECT_TRUE(Shows({kCtrl, 'V'}, L"441.50000000|330.00000000|"));
  SetClipboard(L"");
  Click(IDC_EDITOR_FREQUENCY);
  SetDlgItemTextW(editor_, IDC_EDITOR_FREQUENCY, L"123");
  SendItem(IDC_EDITOR_FREQUENCY, EM_SETSEL, 0, reinterpret_cast<void*>(-1));
  EXPECT_TRUE(Copies(L"123"));
  SendItem(IDC_EDITOR_FREQUENCY, EM_SETSEL, 3, reinterpret_cast<void*>(3));
  EXPECT_TRUE(PressUntil(editor_, {kCtrl, 'V'}, [&] { return WindowText(Item(IDC_EDITOR_FREQUENCY)) == L"123123"; }));
  EXPECT_EQ(Frames(), L"441.50000000|330.00000000|");
}

}  // namespace
