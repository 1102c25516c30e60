#include "app/framelist.h"

#include <algorithm>
#include <iterator>

#include "frqmap/edits.h"
#include "window/directcalls.h"
#include "window/redrawonce.h"

namespace {

// To replace a row moves all behind it, so that from some share of the rows on it is quicker to make all of them anew.
constexpr int kRefillShare = 16;

constexpr LPARAM kTextBytes = 32;  // of a row

std::vector<int> UnionOf(std::span<const int> a, std::span<const int> b) {
  std::vector<int> both;
  both.reserve(a.size() + b.size());
  std::ranges::set_union(a, b, std::back_inserter(both));
  return both;
}

}  // namespace

LRESULT FrameList::Send(UINT message, WPARAM wParam, LPARAM lParam) const {
  return SendMessageW(list_, message, wParam, lParam);
}

int FrameList::RowCount() const {
  return static_cast<int>(Send(LB_GETCOUNT));
}

// LB_GETCURSEL means the same for a list of many selections. Wine's answer to that one moves when a row is replaced.
int FrameList::Caret() const {
  return static_cast<int>(Send(LB_GETCARETINDEX));
}

int FrameList::SelectedCount() const {
  return static_cast<int>(Send(LB_GETSELCOUNT));
}

std::vector<int> FrameList::SelectedRows() const {
  const int count = SelectedCount();
  if (count <= 0) return {};
  std::vector<int> rows(static_cast<std::size_t>(count));
  Send(LB_GETSELITEMS, rows.size(), reinterpret_cast<LPARAM>(rows.data()));
  return rows;
}

void FrameList::SelectAll() const {
  Send(LB_SETSEL, TRUE, -1);
}

void FrameList::DeselectAll() const {
  Send(LB_SETSEL, FALSE, -1);
}

void FrameList::SelectOnly(std::span<const int> rows) const {
  DeselectAll();
  SelectRows(rows);
}

// The rows are told a run at a time. A message for each row would take seconds.
void FrameList::SelectRows(std::span<const int> rows) const {
  for (std::size_t i = 0; i < rows.size();) {
    const std::size_t first = i;
    while (i < rows.size() && rows[i] - rows[first] == static_cast<int>(i - first)) ++i;
    const int count = static_cast<int>(i - first);
    // A range of one row would be taken for one to be deselected.
    if (count == 1) Send(LB_SETSEL, TRUE, rows[first]);
    if (count > 1) Send(LB_SELITEMRANGEEX, static_cast<WPARAM>(rows[first]), rows[i - 1]);
  }
  ShowLast(rows);
}

// The list ends up as if the rows had been selected one by one, each coming into view.
void FrameList::ShowLast(std::span<const int> rows) const {
  if (rows.empty()) return;
  Send(LB_SETCARETINDEX, static_cast<WPARAM>(rows.front()), FALSE);
  Send(LB_SETSEL, TRUE, rows.back());
}

void FrameList::AddRows(const std::vector<double>& frequencies) const {
  const auto count = static_cast<LPARAM>(frequencies.size());
  Send(LB_INITSTORAGE, frequencies.size(), count * kTextBytes);
  const DirectCalls list(list_);
  FrameRowBuffer buffer;
  for (const double frequency : frequencies) {
    const wchar_t* const text = WriteFrameRowText(frequency, buffer);
    list.Send(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
  }
}

void FrameList::Fill(const ShownMap& map) const {
  const RedrawOnce redraw(list_);
  Send(LB_RESETCONTENT);
  if (!map) return;
  AddRows(map.Frequencies());
  SelectRows(map.SelectedFrames());
}

void FrameList::Rewrite(const ShownMap& map) const {
  const RedrawOnce redraw(list_);
  const int caret = Caret();
  const LRESULT top = Send(LB_GETTOPINDEX);
  Send(LB_RESETCONTENT);
  AddRows(map.Frequencies());
  Send(LB_SETCARETINDEX, static_cast<WPARAM>(std::max(caret, 0)), TRUE);
  Send(LB_SETTOPINDEX, static_cast<WPARAM>(top));
}

void FrameList::Update(const ShownMap& map, std::span<const int> rows) const {
  if (rows.empty()) return;
  const LRESULT top = Send(LB_GETTOPINDEX);
  const RedrawOnce redraw(list_);
  if (static_cast<int>(rows.size()) > RowCount() / kRefillShare) {
    const std::vector<int> selected = UnionOf(SelectedRows(), rows);
    Send(LB_RESETCONTENT);
    AddRows(map.Frequencies());
    SelectRows(selected);
  } else {
    const std::vector<double> frequencies = map.FrequenciesOf(rows);
    for (std::size_t i = 0; i < rows.size(); ++i) ReplaceRow(rows[i], frequencies[i]);
  }
  // To take a row away may have scrolled the list.
  Send(LB_SETTOPINDEX, static_cast<WPARAM>(top));
  ShowLast(rows);
}

void FrameList::ReplaceRow(int row, double frequency) const {
  const auto index = static_cast<WPARAM>(row);
  const std::wstring text = FrameRowText(frequency);
  // Behind the last row there is nothing to take away, and nothing is added.
  if (Send(LB_DELETESTRING, index) == LB_ERR) return;
  Send(LB_INSERTSTRING, index, reinterpret_cast<LPARAM>(text.c_str()));
  Send(LB_SETSEL, TRUE, row);
}
