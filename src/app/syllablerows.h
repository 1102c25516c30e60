// SyllableRows: the list view of the syllables, with a row for each and a column for each of their states.
//
// A syllable is named by its index, which is its place in what the list was filled with. A row leads back to it by its
// own number tag; the other way goes through what the insertion gave. A column is found by the id in its header item,
// since the llsm column comes and goes.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "frqmap/frqtype.h"

enum SyllableColumn { kNameColumn = 0, kMapColumn = 1, kLlsmColumn = 2, kEditedColumn = 3, kMarkedColumn = 4 };
inline constexpr int kColumnCount = 5;

// The content of a new row.
struct SyllableRow {
  std::wstring Name;
  bool HasMap = false;
  bool HasLlsm = false;
  bool Edited = false;
};

// Whether a resampler's analysis lies beside a wave. Only one kind of map has a column for it; false for the others.
bool HasLlsm(const std::wstring& wavePath, FrqType kind);

class SyllableRows {
 public:
  // The list view, once it is there, and the factor of its columns' widths.
  void Attach(HWND view, double dpiScaleX);
  // Null until `Attach`.
  HWND Window() const { return view_; }

  // To be called once, then `UpdateColumns` when the kind may have changed. The user has drawn the widths.
  void SetupColumns(FrqType kind);
  void UpdateColumns(FrqType kind);
  // Keeps the widths for the next time, if the user has drawn a column wider or narrower.
  void KeepWidths();

  // Makes all rows anew and draws them once.
  void Fill(const std::vector<SyllableRow>& rows);
  // The syllables are about to be replaced: no index has a row any more. The rows are seen until the next Fill.
  void Forget() { rowOfIndex_.clear(); }

  // A cell holds the mark or nothing. An index without a row, or a column that is not there, has no cells.
  void SetCell(int index, SyllableColumn column, bool marked) const;
  // Looks at the disk for what the llsm cell shows.
  void UpdateLlsm(int index, const std::wstring& wavePath, FrqType kind) const;

  // Answers the view while it draws: the rows of these syllables are in another colour, and no cell changes.
  static LRESULT Draw(NMLVCUSTOMDRAW& drawing, const std::function<bool(int)>& isMarkedOut);
  void Redraw(int index) const;

  int Count() const;
  // The row of a syllable, -1 if it has none; the syllable of a row, -1 if the row cannot be read.
  int RowOf(int index) const;
  int IndexOf(int row) const;

  // The name at a point of the screen, if its column does not show all of it; else empty.
  std::wstring CutNameAt(POINT screen) const;

  // The first selected row, -1 if there is none.
  int Selected() const;
  // The notification comes within the call: when it returns, the editor shows the syllable.
  void Select(int row) const;
  // With nothing selected, the next one is row 0 and there is none before it.
  void SelectNeighbour(bool previous) const;

 private:
  void InsertColumn(int position, SyllableColumn id, const std::wstring& title, int format);
  int WidthOf(SyllableColumn id, const std::wstring& title) const;
  int ColumnIndexOf(SyllableColumn id) const;
  void FillColumn(SyllableColumn id, const std::vector<SyllableRow>& rows, bool SyllableRow::*marked) const;

  HWND view_ = nullptr;
  double dpiScaleX_ = 1.0;
  std::array<int, kColumnCount> kept_{};   // widths that the user has drawn, at 96 dots per inch; 0 for none
  std::array<int, kColumnCount> given_{};  // widths in pixels that the columns were given
  std::vector<int> rowOfIndex_;            // -1 where no row could be inserted
};
