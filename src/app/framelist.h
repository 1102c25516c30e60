// The frame list of the editor: one row for each frame of a map, row i being frame i.
//
// The rows are a view: frequencies are read from the map that is shown and only the selection from the list box. Rows
// are replaced, never edited. A list may hold tens of thousands, so that many are replaced in one pass, which ends as
// replacing them one by one does: the rows selected, the last of them with the focus rectangle and in view.
#pragma once

#include <windows.h>

#include <span>
#include <string>
#include <vector>

#include "app/shownmap.h"

class FrameList {
 public:
  explicit FrameList(HWND list) : list_(list) {}

  int RowCount() const;
  // The row with the focus rectangle.
  int Caret() const;
  int SelectedCount() const;
  // The rows are in ascending order.
  std::vector<int> SelectedRows() const;

  void SelectAll() const;
  void DeselectAll() const;
  // Selects these rows, in ascending order, and no others; the last of them comes into view.
  void SelectOnly(std::span<const int> rows) const;

  // Makes all rows anew, selected as in the map.
  void Fill(const ShownMap& map) const;
  // Makes all rows anew, none selected; the caret and the first row in view stay.
  void Rewrite(const ShownMap& map) const;
  // Makes these rows anew and selects each.
  void Update(const ShownMap& map, std::span<const int> rows) const;

 private:
  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
  void AddRows(const std::vector<double>& frequencies) const;
  void ReplaceRow(int row, double frequency) const;
  void SelectRows(std::span<const int> rows) const;
  void ShowLast(std::span<const int> rows) const;

  HWND list_;
};
