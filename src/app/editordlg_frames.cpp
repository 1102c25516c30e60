// The frames of the map in the editor: the frame list, the two boxes beside it, the flat buttons below it, and what the
// frequency table tells of the mouse.
#include <windows.h>

#include <array>
#include <optional>
#include <vector>

#include "app/editordlg.h"
#include "base/text.h"
#include "frqmap/edits.h"
#include "resources/ids.h"

namespace {

// What is read of a box that takes one character more.
constexpr std::size_t kNumberLength = 15;

double ReadNumber(HWND box) {
  return ParseFrequency(WindowText(box).substr(0, kNumberLength));
}

double FactorOf(UINT button) {
  switch (button) {
    case IDC_EDITOR_TRIPLE: return 3.0;
    case IDC_EDITOR_DOUBLE: return 2.0;
    case IDC_EDITOR_HALVE: return 0.5;
    case IDC_EDITOR_THIRD: return 1.0 / 3.0;
    default: return 0.0;  // takes the pitch away
  }
}

}  // namespace

FrameList CEditorDlg::Frames() const {
  return FrameList(Item(IDC_EDITOR_FRAMES));
}

void CEditorDlg::ShowFrames() {
  ShowKey();
  SetDlgItemTextW(Hwnd, IDC_EDITOR_FREQUENCY, L"");
  Frames().Fill(CurrentMap);
  SendLimits();
  EnableWindow(Item(IDC_EDITOR_FREQUENCY), TRUE);
  EnableWindow(Item(IDC_EDITOR_SET), TRUE);
}

// The control may be edited, whatever the map is.
void CEditorDlg::SendLimits() {
  Table().SetLimits(MaxFrequencyOfKind(Settings.FrqType), MinFrequencyOfKind(Settings.FrqType));
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
  return ClampFrequency(hz, Settings.FrqType, CurrentMap && CurrentMap->SinglePrecision);
}

// Rows and frames are the same as long as no row failed to be added; a row without a frame has no pitch.
double CEditorDlg::FrequencyOfRow(int row) const {
  return CurrentMap && row >= 0 ? CurrentMap->FrequencyAt(CurrentMap->PositionOf(row)) : FrqNoPitch;
}

// The frequency of the caret row, for Set to start from.
void CEditorDlg::RefreshFrequencyBox() {
  SetDlgItemTextW(Hwnd, IDC_EDITOR_FREQUENCY, FrequencyText(FrequencyOfRow(Frames().Caret())).c_str());
}

// The control copies the selection; it has no message for none.
void CEditorDlg::OnFrameListSelChange() {
  RefreshFrequencyBox();
  const std::vector<int> rows = Frames().SelectedRows();
  if (!rows.empty()) Table().SetSelection(rows);
}

void CEditorDlg::SelectAllFrames() {
  Frames().SelectAll();
  OnFrameListSelChange();
}

// What follows each edit of the current map. To tell the list is the rule even where no value changed.
void CEditorDlg::MarkEdited() {
  ToList().SetCurrentEdited(true, CurrentMap);
  UpdateState();
}

// The key of a map that derives it lags behind until something shows it anew.
void CEditorDlg::ScaleSelection(double factor) {
  const std::vector<int> rows = Frames().SelectedRows();
  if (!CurrentMap || rows.empty()) return;
  Frames().Update(*CurrentMap, ScaleFrames(*CurrentMap, rows, factor, Settings.FrqType));
  RefreshFrequencyBox();
  Table().RepaintNow();
  MarkEdited();
}

// The box of the frequency stays as it was.
void CEditorDlg::InterpolateSelection() {
  const std::vector<int> rows = Frames().SelectedRows();
  if (!CurrentMap || rows.size() < 2) return;
  Frames().Update(*CurrentMap, InterpolateFrames(*CurrentMap, rows, Settings.FrqType));
  Table().RepaintNow();
  MarkEdited();
}

void CEditorDlg::KeyFromSelection() {
  if (!CurrentMap) return;
  const std::optional<double> mean = MeanFrequency(*CurrentMap, Frames().SelectedRows());
  if (!mean) return;
  CurrentMap->Average = *mean;
  Table().SetMaps(SavedMap, CurrentMap);
  Table().RepaintNow();
  ShowKey();
  MarkEdited();
}

// Only the caret row is set, however many are selected.
void CEditorDlg::OnSetFrequency() {
  if (!CurrentMap) return;
  const double frequency = Clamp(ReadNumber(Item(IDC_EDITOR_FREQUENCY)));
  const int row = Frames().Caret();
  // Behind the last row, and so in a list that shows none, there is nothing to set.
  if (row < 0 || row >= Frames().RowCount()) return;
  CurrentMap->SetFrequency(CurrentMap->PositionOf(row), frequency);
  Frames().Update(*CurrentMap, std::array{row});
  Table().RepaintNow();
  RefreshFrequencyBox();
  MarkEdited();
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
  MarkEdited();
}

// Only frequencies count: a changed key alone is not seen, and goes when the list reads the map again because no
// difference is left. A click on another row may be under way, so that the map is told by itself and not by a row.
void CEditorDlg::OnReloadSelection(UINT) {
  if (!CurrentMap || !ToList().IsCurrentEdited()) return;
  const std::vector<int> rows = Frames().SelectedRows();
  const int different = RestoreFrames(*CurrentMap, *SavedMap, rows, Frames().RowCount());
  if (different == 0) {
    ReloadCurrentMap();
  } else {
    ToList().SetCurrentEdited(true, CurrentMap);
  }
  // What was read may have another length.
  if (different == 0 && Frames().RowCount() != CurrentMap->FrameCount) ShowFrames();
  Frames().Update(*CurrentMap, rows);
  Table().DropLayer();
  Table().RepaintNow();
  RefreshFrequencyBox();
  ShowKey();
  UpdateState();
}

// One comes for each column of a stroke: what did not change is not done again.
void CEditorDlg::OnControlFrameChanged(int frame) {
  if (!CurrentMap) return;
  Frames().DeselectAll();
  if (frame < 0) {
    Frames().Rewrite(*CurrentMap);
  } else {
    Frames().Update(*CurrentMap, std::array{frame});
  }
  RefreshFrequencyBox();
  MarkEditedByMouse();
}

void CEditorDlg::OnControlKeyChanged() {
  MarkEditedByMouse();
  if (CurrentMap && CurrentMap->DerivedAverage) {
    ShowKeySoon();
  } else {
    ShowKey();
  }
}

// An edit changes only these facts of the state, and after the first column of a stroke they stand.
void CEditorDlg::MarkEditedByMouse() {
  ToList().SetCurrentEdited(true, CurrentMap);
  const bool selected = Frames().SelectedCount() > 0;
  if (!Shown.currentEdited || !Shown.anyEdited || (Shown.selectedFrames > 0) != selected) UpdateState();
}

// A derived key is computed over the whole map: once for all columns that one move of the mouse has set.
void CEditorDlg::ShowKeySoon() {
  if (!KeyIsLate) KeyIsLate = PostMessageW(Hwnd, kShowKeyMessage, 0, 0) != 0;
}

void CEditorDlg::OnShowKey() {
  KeyIsLate = false;
  ShowKey();
}

void CEditorDlg::SyncSelectionFromMap() {
  if (CurrentMap) Frames().SelectAsIn(*CurrentMap);
}

void CEditorDlg::OnTableNotification(UINT code, int frame) {
  switch (code) {
    case FCN_FRAMECHANGED: return OnControlFrameChanged(frame);
    case FCN_AVERAGECHANGED: return OnControlKeyChanged();
    case FCN_SELECTIONCHANGED: return SyncSelectionFromMap();
    default: return;
  }
}

void CEditorDlg::OnFlatButton(UINT id) {
  switch (id) {
    case IDC_EDITOR_AVERAGE: return InterpolateSelection();
    case IDC_EDITOR_RELOAD: return ReloadIfEdited();
    case IDC_EDITOR_KEYFROMSELECTION: return KeyFromSelection();
    default: return ScaleSelection(FactorOf(id));
  }
}
