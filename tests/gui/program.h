// The real program in the test's own process: its two threads, its windows and its message boxes.
//
// A test looks at what a user sees and does what a user does. What it sends comes back when the program has dealt with
// it; only windows come and go in their own time, and for those a test polls, with a limit.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <functional>
#include <future>

#include "app/application.h"
#include "app/messages.h"
#include "base/registry.h"
#include "base/systempath.h"
#include "base/text.h"
#include "frqmap/freq0003.h"
#include "resources/ids.h"
#include "driver/programs.h"
#include "win/scratch.h"
#include "win/scratchvariable.h"

inline bool operator==(const RECT& a, const RECT& b) {
  return EqualRect(&a, &b);
}

// The list, with what it tells other programs alone.
struct AskedList : FileListSender {
  using FileListSender::FileListSender;

  FrqMap* Map(int index) const { return AskMap(FLM_GETMAP, index); }
  FrqMap* SavedMap(int index) const { return AskMap(FLM_GETSAVEDMAP, index); }
  int CountMaps() const { return messages_detail::Ask(Window(), FLM_COUNTMAPS, 0, 0); }
  void LoseMap(int index) const { SendMessageW(Window(), FLM_SETHASMAP, static_cast<WPARAM>(index), FALSE); }

 private:
  FrqMap* AskMap(UINT message, int index) const {
    return messages_detail::Ask<FrqMap*>(Window(), message, static_cast<WPARAM>(index), nullptr);
  }
};

struct ProgramTest : testing::Test {
  // Libraries are sought as they are by the program that is started, before a test and behind it.
  ProgramTest() { SearchLibrariesBesideTheProgram(); }
  ~ProgramTest() override {
    Leave();
    SearchLibrariesBesideTheProgram();
  }

  // Ends the program; its edits are given up. It may be started again.
  void Leave() {
    PostMessageW(editor_, WM_COMMAND, IDCANCEL, 0);
    Eventually([this] { return PostMessageW(FindBox(), WM_COMMAND, IDYES, 0) && HasEnded(); });
    editor_ = list_ = nullptr;
  }

  // A wave and its map. `name` is without extension.
  void AddSyllable(const std::wstring& name, const std::vector<double>& frequencies) const {
    FrqMap map;
    map.Create(static_cast<SampleCount>(frequencies.size()), FrqTypeFrq);
    for (std::size_t i = 0; i < frequencies.size(); ++i) map.Frames.Own()[i].Frequency = frequencies[i];
    map.Average = 261.5;
    folder_.Write(name + L".wav", kSecondOfSound);
    folder_.Write(name + L"_wav.frq", EncodeFreq0003(map, FrqTypeFrq));
  }

  // Comes back when both windows stand, or when the program has ended by itself.
  void Start(const std::wstring& argument) {
    exit_ = std::async(std::launch::async, RunApplication, argument);
    Eventually([this] {
      if (!editor_) editor_ = FindDialogWith(L"FrequencyTableControl");
      if (!list_) list_ = FindDialogWith(WC_LISTVIEWW);
      return (editor_ && list_) || HasEnded();
    });
  }
  // -1 if the program goes on.
  int ExitCode() const {
    return Eventually([this] { return HasEnded(); }) ? exit_.get() : -1;
  }

  AskedList List() const { return AskedList(list_); }
  HWND Item(int id) const { return GetDlgItem(editor_, id); }
  LRESULT SendItem(int id, UINT message, WPARAM wParam = 0, const void* lParam = nullptr) const {
    return SendMessageW(Item(id), message, wParam, reinterpret_cast<LPARAM>(lParam));
  }

  // On the screen; a minimised window is nowhere near it.
  static RECT Place(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return rect;
  }
  // The texts of a column of a list, of the list of syllables, and those of all frames, each with a "|" behind it.
  static std::wstring ColumnOf(HWND list, int column) {
    std::wstring texts;
    for (int row = 0; row < ListView_GetItemCount(list); ++row) {
      wchar_t text[MAX_PATH] = L"";
      ListView_GetItemText(list, row, column, text, MAX_PATH);
      texts.append(text) += L'|';
    }
    return texts;
  }
  std::wstring Column(int column) const { return ColumnOf(GetDlgItem(list_, IDC_LIST_FILES), column); }
  std::wstring Frames() const {
    std::wstring texts;
    wchar_t text[64];
    for (int row = 0; row < SendItem(IDC_EDITOR_FRAMES, LB_GETCOUNT); ++row) {
      SendItem(IDC_EDITOR_FRAMES, LB_GETTEXT, static_cast<WPARAM>(row), text);
      texts.append(text) += L'|';
    }
    return texts;
  }
  std::wstring MenuText(UINT command) const {
    wchar_t text[2 * MAX_PATH] = L"";
    GetMenuStringW(GetMenu(editor_), command, text, 2 * MAX_PATH, MF_BYCOMMAND);
    return text;
  }
  bool IsGrey(UINT command) const { return GetMenuState(GetMenu(editor_), command, MF_BYCOMMAND) & MF_GRAYED; }

  // Selects these frames of the list and no others, as the user does row by row.
  void SelectFrames(const std::vector<int>& rows) const {
    SendItem(IDC_EDITOR_FRAMES, LB_SETSEL, FALSE, reinterpret_cast<void*>(-1));
    for (const int row : rows) SendItem(IDC_EDITOR_FRAMES, LB_SETSEL, TRUE, reinterpret_cast<void*>(row));
    SendMessageW(editor_, WM_COMMAND, MAKEWPARAM(IDC_EDITOR_FRAMES, LBN_SELCHANGE), 0);
  }
  std::vector<int> SelectedFrames() const {
    std::vector<int> rows(static_cast<std::size_t>(SendItem(IDC_EDITOR_FRAMES, LB_GETSELCOUNT)));
    SendItem(IDC_EDITOR_FRAMES, LB_GETSELITEMS, rows.size(), rows.data());
    return rows;
  }

  // The selection as the map of a syllable has it.
  std::vector<int> SelectionOfMap(int syllable) const {
    std::vector<int> rows;
    const FrqMap& map = *List().Map(syllable);
    for (std::size_t i = 0; i < map.Frames.size(); ++i) {
      if (map.Frames[i].Selected) rows.push_back(static_cast<int>(i));
    }
    return rows;
  }

  void Select(int row) const {
    ListView_SetItemState(GetDlgItem(list_, IDC_LIST_FILES), row, LVIS_SELECTED, LVIS_SELECTED);
  }
  // Gives up on a message box that nobody expected.
  void Press(UINT command) const {
    SendMessageTimeoutW(editor_, WM_COMMAND, command, 0, SMTO_NORMAL, 2 * limitMs, nullptr);
  }
  // Presses a button of a dialog. One that ends by it is hidden when this comes back, so that no one finds it any more
  // while it goes.
  static void Close(HWND dialog, WPARAM button) { SendMessageW(dialog, WM_COMMAND, button, 0); }
  // Does what asks or tells something, and answers each box as it comes. The texts of the boxes.
  std::wstring Answer(const std::function<void()>& work, std::initializer_list<WPARAM> answers, int id = 0xFFFF) const {
    const auto worked = std::async(std::launch::async, work);
    std::wstring texts;
    for (const WPARAM answer : answers) {
      HWND box = nullptr;
      std::wstring text;
      const auto hasCome = [&] {
        box = FindBox();
        text = WindowText(GetDlgItem(box, id));
        return !text.empty();
      };
      if (!Eventually(hasCome)) return L"no message box";
      texts += text;
      Close(box, answer);
    }
    return texts;
  }
  std::wstring PressAndAnswer(UINT command, WPARAM answer, int id = 0xFFFF) const {
    return Answer([=, this] { Press(command); }, {answer}, id);
  }
  // Opens a command's dialog, told by a control, does the work to it, and comes back when all that follows has ended.
  void InDialog(UINT command, int control, const std::function<void(HWND)>& work) const {
    const auto pressed = std::async(std::launch::async, [=, this] { Press(command); });
    HWND dialog = nullptr;
    ASSERT_TRUE(Eventually([&] { return (dialog = FindDialogWith(L"Static", control)) != nullptr; }));
    work(dialog);
  }
  void Click(int id) const {
    SendItem(id, WM_LBUTTONDOWN, MK_LBUTTON);
    SendItem(id, WM_LBUTTONUP);
  }
  // An item of a combo box.
  static void Pick(HWND dialog, int box, int position) {
    SendDlgItemMessageW(dialog, box, CB_SETCURSEL, static_cast<WPARAM>(position), 0);
    SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(box, CBN_SELCHANGE), 0);
  }
  // Replaces the text of a box, key by key.
  void Type(int id, const std::wstring& text) const {
    SetDlgItemTextW(editor_, id, L"");
    for (const wchar_t key : text) SendItem(id, WM_CHAR, key);
  }
  // On the keyboard, for the window that has the focus.
  static void PressKey(WORD key, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.dwFlags = flags;
    SendInput(1, &input, sizeof(input));
  }
  // On the keyboard, all down at a time, with this window in front.
  static void PressKeys(HWND front, const std::vector<WORD>& keys) {
    SetForegroundWindow(front);
    for (const WORD key : keys) PressKey(key, 0);
    for (const WORD key : keys) PressKey(key, KEYEVENTF_KEYUP);
  }
  // Once more where nothing comes of it, as the window may come to the front only now.
  static bool PressUntil(HWND front, const std::vector<WORD>& keys, const std::function<bool()>& done) {
    return Eventually([&] {
      PressKeys(front, keys);
      for (int i = 0; i < 100 && !done(); ++i) Sleep(5);
      return done();
    });
  }
  // The focus, menus and capture of a window's thread.
  static GUITHREADINFO InputOf(HWND window) {
    GUITHREADINFO info{};
    info.cbSize = sizeof(info);
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
    return info;
  }
  // In the table.
  void Mouse(UINT message, int x, int y) const {
    SendMessageW(Item(IDC_EDITOR_TABLE), message, MK_LBUTTON, MAKELPARAM(x, y));
  }
  // Clicks the first frame, types a frequency and presses Set.
  void SetFirstFrame(const std::wstring& frequency) const {
    Click(IDC_EDITOR_FRAMES);
    Type(IDC_EDITOR_FREQUENCY, frequency);
    Press(IDC_EDITOR_SET);
  }

  static std::wstring TextOfBalloon(HWND tip) {
    wchar_t text[1024] = L"";
    TTTOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V1_SIZE;
    tool.lpszText = text;
    SendMessageW(tip, TTM_ENUMTOOLSW, 0, reinterpret_cast<LPARAM>(&tool));
    tool.lpszText = text;
    SendMessageW(tip, TTM_GETTEXTW, std::size(text), reinterpret_cast<LPARAM>(&tool));
    return text;
  }
  // The words of all balloons of the program at this moment.
  static std::wstring Words() {
    std::wstring words;
    for (HWND tip = nullptr; (tip = FindWindowExW(nullptr, tip, TOOLTIPS_CLASSW, nullptr));) {
      DWORD process = 0;
      GetWindowThreadProcessId(tip, &process);
      const bool isBalloon = GetWindowLongW(tip, GWL_STYLE) & TTS_BALLOON;
      if (process == GetCurrentProcessId() && isBalloon && IsWindowVisible(tip)) words += TextOfBalloon(tip);
    }
    return words;
  }
  static bool HasSaid(const std::wstring& words) {
    return Eventually([&] { return Words().find(words) != std::wstring::npos; });
  }

  ScratchRegistry registry_;
  ScratchFolder folder_;
  const ScratchVariable localData_{L"LOCALAPPDATA", folder_.Path(L"local")};
  HWND editor_ = nullptr;
  HWND list_ = nullptr;

  HWND FindBox() const { return FindDialogWith(L"Static"); }
  // A visible dialog of this process but the editor, told by the class and the id of controls in it; null for none.
  HWND FindDialogWith(const wchar_t* controlClass, int id = 0) const {
    return FindDialogOf(GetCurrentProcessId(), controlClass, id, editor_);
  }

 private:
  bool HasEnded() const { return exit_.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }

  std::shared_future<int> exit_;
};
