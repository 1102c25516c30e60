// The frame list and the two boxes beside it: one row for each frame of the map, row i being frame i.
//
// The rows are a view: every operation reads frequencies from the map and only the selection from the list box.
#include <windows.h>

#include <vector>

#include "app/editordlg.h"
#include "base/text.h"
#include "frqmap/edits.h"
#include "resources/ids.h"
#include "window/redrawonce.h"

namespace {

// What is read of a box that takes one character more.
constexpr std::size_t kNumberLength = 15;

double ReadNumber(HWND box) {
  return ParseFrequency(WindowText(box).substr(0, kNumberLength));
}

// The row with the focus rectangle, which is what LB_GETCURSEL means for a list of many selections. Wine's answer to
// that one moves when a row is replaced, so the caret is asked for.
int CaretRow(HWND list) {
  return static_cast<int>(SendMessageW(list, LB_GETCARETINDEX, 0, 0));
}

// Rows are replaced, never edited. In the end of the scope the list box stands where it stood: the same first row, the
// same caret.
class FrameListChange {
 public:
  explicit FrameListChange(HWND list)
      : redraw_(list), list_(list), top_(SendMessageW(list, LB_GETTOPINDEX, 0, 0)), caret_(CaretRow(list)) {}
  ~FrameListChange() {
    if (caret_ >= 0) SendMessageW(list_, LB_SETCARETINDEX, static_cast<WPARAM>(caret_), TRUE);
    SendMessageW(list_, LB_SETTOPINDEX, static_cast<WPARAM>(top_), 0);
  }
  FrameListChange(const FrameListChange&) = delete;
  FrameListChange& operator=(const FrameListChange&) = delete;

 private:
  RedrawOnce redraw_;
  HWND list_;
  LRESULT top_;
  int caret_;
};

// Adds a row at the end, past the procedure that subclasses the list box: it has no interest in this message, and the
// way through it would be half the time of a long list.
LRESULT AppendRow(HWND list, WNDPROC procedure, const wchar_t* text) {
  return CallWindowProcW(procedure, list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
}

// A frame that no sample position leads to cannot be edited and is not shown: with a hop of 0 or less that is every
// frame, with a huge one all but the first.
void FillFrameList(HWND list, const FrqMap& map) {
  SendMessageW(list, LB_INITSTORAGE, static_cast<WPARAM>(map.FrameCount), map.FrameCount * LPARAM{32});
  const auto procedure = reinterpret_cast<WNDPROC>(GetClassLongPtrW(list, GCLP_WNDPROC));
  for (SampleCount i = 0; i < map.FrameCount && map.PositionOf(i) >= 0; ++i) {
    const FrqFrame& frame = map.Frames[static_cast<std::size_t>(i)];
    const LRESULT row = AppendRow(list, procedure, FrameRowText(frame.Frequency).c_str());
    if (frame.Selected && row >= 0) SendMessageW(list, LB_SETSEL, TRUE, row);
  }
}

}  // namespace

void CEditorDlg::ShowFrames() {
  ShowKey();
  SetDlgItemTextW(Hwnd, IDC_EDITOR_FREQUENCY, L"");
  const HWND list = Item(IDC_EDITOR_FRAMES);
  {
    const RedrawOnce redraw(list);  // tens of thousands of rows
    SendMessageW(list, LB_RESETCONTENT, 0, 0);
    if (CurrentMap) FillFrameList(list, *CurrentMap);
  }
  SendLimits();
  EnableWindow(Item(IDC_EDITOR_FREQUENCY), TRUE);
  EnableWindow(Item(IDC_EDITOR_SET), TRUE);
}

// The control may be edited, whatever the map is.
void CEditorDlg::SendLimits() {
  Table().SetLimits(MaxFrequencyOfKind(FrqType), MinFrequencyOfKind(FrqType));
  Table().SetReadOnly(false);
}

// A kind of file that holds no average has a computed one, which cannot be typed.
void CEditorDlg::ShowKey() {
  ShowingKey = true;
  const bool derived = CurrentMap && CurrentMap->DerivedAverage;
  const std::wstring text = CurrentMap ? FrequencyText(CurrentMap->ShownAverage()) : std::wstring();
  SetDlgItemTextW(Hwnd, IDC_EDITOR_KEY, text.c_str());
  EnableWindow(Item(IDC_EDITOR_KEY), !derived);
  EnableWindow(Item(IDC_EDITOR_UPDATE), CurrentMap && !derived);
  ShowingKey = false;
}

double CEditorDlg::Clamp(double hz) const {
  return ClampFrequency(hz, FrqType, CurrentMap && CurrentMap->SinglePrecision);
}

// Rows and frames are the same as long as no row failed to be added; a row without a frame has no pitch.
double CEditorDlg::FrequencyOfRow(int row) const {
  return CurrentMap && row >= 0 ? CurrentMap->FrequencyAt(CurrentMap->PositionOf(row)) : FrqNoPitch;
}

void CEditorDlg::UpdateFrameRow(int row, bool select, double frequency) {
  const HWND list = Item(IDC_EDITOR_FRAMES);
  const std::wstring text = FrameRowText(frequency);
  const auto position = static_cast<WPARAM>(row);
  SendMessageW(list, LB_DELETESTRING, position, 0);
  SendMessageW(list, LB_INSERTSTRING, position, reinterpret_cast<LPARAM>(text.c_str()));
  SendMessageW(list, LB_SETSEL, select, row);
}

// The frequency of the caret row, for Set to start from.
void CEditorDlg::RefreshFrequencyBox() {
  const int caret = CaretRow(Item(IDC_EDITOR_FRAMES));
  SetDlgItemTextW(Hwnd, IDC_EDITOR_FREQUENCY, FrequencyText(FrequencyOfRow(caret)).c_str());
}

void CEditorDlg::OnFrameListSelChange() {
  RefreshFrequencyBox();
  const LRESULT count = SendDlgItemMessageW(Hwnd, IDC_EDITOR_FRAMES, LB_GETSELCOUNT, 0, 0);
  if (count <= 0) return;
  std::vector<int> rows(static_cast<std::size_t>(count));
  SendDlgItemMessageW(Hwnd, IDC_EDITOR_FRAMES, LB_GETSELITEMS, rows.size(), reinterpret_cast<LPARAM>(rows.data()));
  Table().SetSelection(rows);
}

void CEditorDlg::OnSelectAllFrames(UINT) {
  SelectAllFrames();
}

void CEditorDlg::SelectAllFrames() {
  SendDlgItemMessageW(Hwnd, IDC_EDITOR_FRAMES, LB_SETSEL, TRUE, -1);
  OnFrameListSelChange();
}

// Only the caret row is set, however many are selected.
void CEditorDlg::OnSetFrequency() {
  if (!CurrentMap) return;
  const double frequency = Clamp(ReadNumber(Item(IDC_EDITOR_FREQUENCY)));
  const HWND list = Item(IDC_EDITOR_FRAMES);
  const int row = CaretRow(list);
  // Behind the last row, and so in a list that shows none, there is nothing to set.
  if (row < 0 || row >= SendMessageW(list, LB_GETCOUNT, 0, 0)) return;
  {
    const FrameListChange change(list);
    UpdateFrameRow(row, true, frequency);
  }
  CurrentMap->SetFrequency(CurrentMap->PositionOf(row), frequency);
  Table().RepaintNow();
  RefreshFrequencyBox();
  ToList().SetCurrentEdited(true, CurrentMap);
  UpdateState();
}

// A typed key takes effect when its box loses the focus. Nothing asks whether the text changed: to go through the box
// with the Tab key marks the syllable edited, and an empty box is a key of no pitch.
void CEditorDlg::OnKeyEdited() {
  if (!CurrentMap || !CurrentMap->Loaded || ShowingKey) return;
  const double typed = ReadNumber(Item(IDC_EDITOR_KEY));
  CurrentMap->Average = Clamp(typed);
  if (CurrentMap->Average != typed) ShowKey();
  Table().SetMaps(SavedMap, CurrentMap);
  Table().RepaintNow();
  ToList().SetCurrentEdited(true, CurrentMap);
  UpdateState();
}
