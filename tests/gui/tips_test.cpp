// Tips at the place where the mouse rests, and the list's columns, which are made for what stands in them.
#include "gui/program.h"

namespace {

struct Tips : ProgramTest {
  // The texts of all tool tips that are seen.
  static std::wstring Shown() {
    std::wstring texts;
    for (HWND tip = nullptr; (tip = FindWindowExW(nullptr, tip, TOOLTIPS_CLASSW, nullptr));) {
      if (IsWindowVisible(tip)) texts += WindowText(tip);
    }
    return texts;
  }
  // The mouse goes on by a pixel twice and rests, again and again: a busy program sees the moves of a while as one.
  static bool Tells(HWND control, int x, int y, const std::wstring& part) {
    POINT point{x, y};
    ClientToScreen(control, &point);
    const ULONGLONG start = GetTickCount64();
    return Eventually([&] {
      const ULONGLONG passed = GetTickCount64() - start;
      const auto step = static_cast<int>(std::min<ULONGLONG>(passed % 2000 / 150, 2));
      SetCursorPos(point.x + step, point.y);
      return Shown().find(part) != std::wstring::npos;
    });
  }
};

TEST_F(Tips, AreToldOfTheControlTheRowAndThePlaceUnderAMouseThatRests) {
  const std::wstring longName(60, L'a');
  AddSyllable(longName, {440.0, 220.0, 220.0, 220.0});
  AddSyllable(L"b", {330.0});
  Start(folder_.Path());
  const HWND view = GetDlgItem(list_, IDC_LIST_FILES);
  const HWND table = Item(IDC_EDITOR_TABLE);
  RECT row{};
  ListView_GetItemRect(view, 0, &row, LVIR_BOUNDS);
  POINT point{20, row.top + 3};
  ClientToScreen(view, &point);
  SetCursorPos(point.x, point.y);
  const ULONGLONG until = GetTickCount64() + 2 * GetDoubleClickTime();
  EXPECT_TRUE(Eventually([=] { return !Shown().empty() || GetTickCount64() > until; }) && Shown().empty())
      << "a mouse that a program has put there asks for nothing";
  EXPECT_TRUE(Tells(view, 20, row.top + 3, longName));
  EXPECT_TRUE(Tells(view, 20, row.bottom + 3, LoadResString(IDS_TIP_SYLLABLES)));
  EXPECT_TRUE(Tells(Item(IDC_EDITOR_TRIPLE), 5, 5, LoadResString(IDS_TIP_TRIPLE)));
  EXPECT_TRUE(Tells(GetDlgItem(table, IDC_TABLE_VIEW), 5, 5, LoadResString(IDS_TIP_TABLE_VIEW)));
  SIZE strip{};
  const HDC dc = GetDC(table);
  GetTextExtentPoint32W(dc, L"C0", 2, &strip);
  ReleaseDC(table, dc);
  EXPECT_TRUE(Tells(table, strip.cx + 3, 120, L"220.00 Hz")) << Shown();
  SendMessageW(table, WM_RBUTTONDOWN, 0, MAKELPARAM(5, 5));
  EXPECT_EQ(Shown(), L"") << "nothing stands in the way of a press";
  SendMessageW(table, WM_RBUTTONUP, 0, MAKELPARAM(5, 5));
}

TEST_F(Tips, AColumnShowsItsTitleAndKeepsTheWidthThatWasDrawn) {
  const auto width = [this](int column) { return ListView_GetColumnWidth(GetDlgItem(list_, IDC_LIST_FILES), column); };
  Start(L"");
  const std::wstring title = LoadResString(IDS_COLUMN_TOBECHECKED);
  EXPECT_GT(width(3), ListView_GetStringWidth(GetDlgItem(list_, IDC_LIST_FILES), title.c_str()));
  const int usual = width(1);
  ListView_SetColumnWidth(GetDlgItem(list_, IDC_LIST_FILES), 0, 211);
  Leave();
  Start(L"");
  EXPECT_EQ(std::pair(width(0), width(1)), std::pair(211, usual));
}

}  // namespace
