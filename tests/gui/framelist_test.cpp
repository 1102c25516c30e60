// The frame list in one pass: it must end as if every row had been replaced by itself.
#include "app/framelist.h"

#include <gtest/gtest.h>

#include <vector>

#include "base/text.h"
#include "frqmap/edits.h"

namespace {

constexpr int kRows = 400;

HWND MakeList() {
  return CreateWindowW(L"LISTBOX", L"", WS_POPUP | WS_VISIBLE | WS_VSCROLL | LBS_EXTENDEDSEL | LBS_NOINTEGRALHEIGHT, 0,
                       0, 100, 170, nullptr, nullptr, nullptr, nullptr);
}

LRESULT Send(HWND list, UINT message, WPARAM wParam, LPARAM lParam = 0) {
  return SendMessageW(list, message, wParam, lParam);
}

// The caret, the first row in view, and the selection and text of each row.
std::wstring Stand(HWND list) {
  std::wstring stand =
      FormatText(L"caret %d, top %d:", int(Send(list, LB_GETCARETINDEX, 0)), int(Send(list, LB_GETTOPINDEX, 0)));
  for (WPARAM row = 0; row < kRows; ++row) {
    wchar_t text[64] = L"none";
    Send(list, LB_GETTEXT, row, reinterpret_cast<LPARAM>(text));
    stand += (Send(list, LB_GETSEL, row) > 0 ? L"\n>" : L"\n ") + FormatText(L"%d ", int(row)) + text;
  }
  return stand;
}

void ReplaceRow(HWND list, int row, const FrqMap& map) {
  const std::wstring text = FrameRowText(map.Frames[static_cast<std::size_t>(row)].Frequency);
  const auto index = static_cast<WPARAM>(row);
  Send(list, LB_DELETESTRING, index);
  Send(list, LB_INSERTSTRING, index, reinterpret_cast<LPARAM>(text.c_str()));
  Send(list, LB_SETSEL, TRUE, row);
}

std::vector<int> Every(int step, int first, int last) {
  std::vector<int> rows;
  for (int row = first; row <= last; row += step) rows.push_back(row);
  return rows;
}

TEST(LongFrameList, EndsAsIfItsRowsWereReplacedOneByOne) {
  FrqMap map;
  map.Create(kRows, FrqTypeFrq);
  const std::tuple<int, std::vector<int>, std::vector<int>> tests[] = {
      {100, {3, 104, 105}, {104, 105}},
      {0, Every(1, 0, kRows - 1), Every(1, 0, kRows - 1)},
      {50, {51, 55, 399}, Every(1, 52, 398)},
      {200, Every(3, 9, 390), Every(6, 9, 390)},
      {100, {5, 390}, {}},
  };
  for (const auto& [top, selected, replaced] : tests) {
    SCOPED_TRACE(top);
    for (int i = 0; i < kRows; ++i) map.Frames[static_cast<std::size_t>(i)] = {.Frequency = 100.0 + i};
    for (const int row : selected) map.Frames[static_cast<std::size_t>(row)].Selected = true;
    const HWND lists[] = {MakeList(), MakeList()};
    for (const HWND list : lists) {
      FrameList(list).Fill(&map);
      EXPECT_EQ(FrameList(list).SelectedRows(), selected);
      Send(list, LB_SETTOPINDEX, static_cast<WPARAM>(top));
    }
    for (const int row : replaced) map.Frames[static_cast<std::size_t>(row)].Frequency = row % 2 ? 55.0 : 440.0;
    FrameList(lists[0]).Update(map, replaced);
    for (const int row : replaced) ReplaceRow(lists[1], row, map);
    EXPECT_EQ(Stand(lists[0]), Stand(lists[1]));
    for (const HWND list : lists) DestroyWindow(list);
  }
}

}  // namespace
