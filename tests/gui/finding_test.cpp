// The window that finds a syllable, by the keys that lead into it, through it and out of it.
#include "base/path.h"
#include "gui/program.h"

namespace {

struct Finding : ProgramTest {
  HWND Dialog() const { return FindDialogWith(L"Edit", IDC_FIND_NAME); }
  HWND Open(HWND front) const {
    HWND dialog = nullptr;
    EXPECT_TRUE(PressUntil(front, {VK_CONTROL, 'F'}, [&] { return (dialog = Dialog()) != nullptr; }));
    return dialog;
  }
  // The rows behind a new text of the box, each with a "|" behind it.
  static std::wstring RowsFor(HWND dialog, const wchar_t* text, int column = 0) {
    SetDlgItemTextW(dialog, IDC_FIND_NAME, text);
    return ColumnOf(GetDlgItem(dialog, IDC_FIND_LIST), column);
  }
  static std::wstring RowsOfSort(HWND dialog, int sort) {
    Pick(dialog, IDC_FIND_SORT, sort);
    return RowsFor(dialog, L"");
  }
  static bool HasFocus(HWND dialog, int control) { return InputOf(dialog).hwndFocus == GetDlgItem(dialog, control); }
  static void Tap(WORD key) {
    PressKey(key, 0);
    PressKey(key, KEYEVENTF_KEYUP);
  }
  std::wstring Selected() const { return List().Path(List().Selection()); }
  // The window has gone, and the list shows this syllable.
  bool LeadsTo(HWND dialog, const std::wstring& name) const {
    return Eventually([&] {
      return !IsWindow(dialog) && IsWindowEnabled(editor_) && Selected() == folder_.Path(name);
    });
  }
};

TEST_F(Finding, LeadsToASyllableByItsNameInEitherScriptWithKeysAlone) {
  for (const wchar_t* const name : {L"あ", L"か", L"sub\\カー", L"きゃ", L"sub\\ki"}) AddSyllable(name, {220.0});
  Start(folder_.Path());
  HWND dialog = Open(list_);
  EXPECT_EQ(RowsFor(dialog, L"ki"), L"ki.wav|");
  EXPECT_EQ(RowsFor(dialog, L"か"), L"か.wav|カー.wav|");
  EXPECT_EQ(RowsFor(dialog, L"ka", 1), FileNameOf(folder_.Path()) + L"|sub|");
  EXPECT_EQ(RowsFor(dialog, L"x"), L"");
  EXPECT_EQ(WindowText(GetDlgItem(dialog, IDC_FIND_COUNT)), LoadResString(IDS_FIND_NONE));
  EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, IDOK)));
  SetDlgItemTextW(dialog, IDC_FIND_NAME, L"");
  EXPECT_TRUE(Eventually([&] { return HasFocus(dialog, IDC_FIND_NAME); }));
  for (const WORD letter : {'K', 'A'}) Tap(letter);
  EXPECT_TRUE(Eventually([&] { return WindowText(GetDlgItem(dialog, IDC_FIND_NAME)) == L"ka"; }));
  Tap(VK_DOWN);
  EXPECT_TRUE(Eventually([&] { return HasFocus(dialog, IDC_FIND_LIST); }));
  Tap(VK_DOWN);
  Tap(VK_RETURN);
  EXPECT_TRUE(LeadsTo(dialog, L"sub\\カー.wav"));
  dialog = Open(editor_);
  SetDlgItemTextW(dialog, IDC_FIND_NAME, L"あ");
  Tap(VK_ESCAPE);
  EXPECT_TRUE(LeadsTo(dialog, L"sub\\カー.wav"));
}

TEST_F(Finding, ListsWhatSomethingIsToBeDoneTo) {
  for (const wchar_t* const name : {L"edited", L"marked", L"plain"}) AddSyllable(name, {220.0});
  folder_.Write(L"broken.wav", kSecondOfSound);
  folder_.Write(L"broken_wav.frq", Bytes(60, 7));
  folder_.Write(L"bare.wav", kSecondOfSound);
  Start(folder_.Path());
  Select(3);
  Select(2);
  SetFirstFrame(L"100");
  List().Map(3)->HasMarks = true;
  const HWND dialog = Open(editor_);
  std::wstring rows;
  for (int sort = 1; sort < 5; ++sort) rows += RowsOfSort(dialog, sort) + L" ";
  EXPECT_EQ(rows, L"edited.wav| marked.wav| broken.wav| bare.wav| ");
  EXPECT_EQ(WindowText(GetDlgItem(dialog, IDC_FIND_COUNT)), L"1 of 5 syllables");
  Close(dialog, IDOK);
  EXPECT_TRUE(LeadsTo(dialog, L"bare.wav"));
}

}  // namespace
