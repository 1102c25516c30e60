#include "app/framepane.h"

#include <algorithm>
#include <array>
#include <mutex>
#include <optional>

#include "base/flagscope.h"
#include "base/text.h"
#include "frqmap/edits.h"
#include "resources/ids.h"
#include "window/balloon.h"

namespace {

// The boxes take one character more than is read.
constexpr std::size_t kNumberLength = 15;

constexpr SampleCount kColumnsBefore = 5;

double ReadNumber(HWND box) {
  return ParseFrequency(WindowText(box).substr(0, kNumberLength));
}

}  // namespace

void FramePane::Attach(HWND dialog) {
  dialog_ = dialog;
}

FrqCtrlSender FramePane::Table() const {
  return FrqCtrlSender(Item(IDC_EDITOR_TABLE));
}

FrameList FramePane::Frames() const {
  return FrameList(Item(IDC_EDITOR_FRAMES));
}

// The table may be edited, whatever the map is.
void FramePane::SetKind(FrqType kind) {
  kind_ = kind;
  Table().SetLimits(MaxFrequencyOfKind(kind_), MinFrequencyOfKind(kind_));
  Table().SetReadOnly(false);
}

void FramePane::ShowFrames() {
  ShowKey();
  SetDlgItemTextW(dialog_, IDC_EDITOR_FREQUENCY, L"");
  Frames().Fill(map_);
  SetKind(kind_);
  EnableBoxes();
}

void FramePane::EnableBoxes() const {
  EnableWindow(Item(IDC_EDITOR_FREQUENCY), TRUE);
  EnableWindow(Item(IDC_EDITOR_SET), TRUE);
}

// A kind of file that holds no average has a computed one, which cannot be typed.
void FramePane::ShowKey() {
  const FlagScope showing(showingKey_);
  const bool derived = map_.IsDerived();
  SetDlgItemTextW(dialog_, IDC_EDITOR_KEY, FrequencyText(map_.Key()).c_str());
  EnableWindow(Item(IDC_EDITOR_KEY), !derived);
  EnableWindow(Item(IDC_EDITOR_UPDATE), map_ && !derived);
}

// A derived key is computed over the whole map, so once for all columns that one move of the mouse has set.
void FramePane::ShowKeySoon() {
  if (!keyIsLate_) keyIsLate_ = PostMessageW(dialog_, kShowKeyMessage, 0, 0) != 0;
}

void FramePane::OnShowKey() {
  keyIsLate_ = false;
  ShowKey();
}

// The table tells of its own strokes by itself, column by column (OnTableNotification).
void FramePane::Show(const EntryChange& change) {
  if (change.InStroke) return;
  if (change.Facts & EntryChange::Replaced) return ShowReplaced();
  if (change.Facts & (EntryChange::Saved | EntryChange::Key)) Table().SetMaps(map_.Saved(), map_.Map());
  if (change.Facts & EntryChange::Frames) Frames().Update(map_, change.Rows);
  if (change.Facts & (EntryChange::Key | EntryChange::Marks)) Table().DropLayer();
  if (change.Facts & (EntryChange::Frames | EntryChange::Key | EntryChange::Marks)) Table().RepaintNow();
  // A derived key has followed the stroke that is undone.
  if (((change.Facts & EntryChange::Key) && !typingKey_) || change.FromHistory) ShowKey();
  if (change.FromHistory) ShowPlace(change.Rows);
}

void FramePane::ShowReplaced() {
  if (keepsRows_ && Frames().RowCount() == map_.FrameCount()) {
    Table().DropLayer();
    Table().RepaintNow();
    return;
  }
  Table().SetMaps(map_.Saved(), map_.Map());
  Table().SetSelection({});
  Table().DropLayer();
  Table().RepaintNow();
  ShowFrames();
}

void FramePane::ShowAnew() {
  Table().SetMaps(nullptr, nullptr);
  ShowReplaced();
}

void FramePane::ShowMarks(SampleCount first, SampleCount last) {
  if (!map_) return;
  map_.SelectRange(first, last);
  Table().SetScrollColumn(std::max(0, map_.FrameAt(first) - kColumnsBefore));
  Table().DropLayer();
  Table().RepaintNow();
  Frames().SelectOnly(map_.SelectedFrames());
}

SampleCount FramePane::Position() const {
  const std::lock_guard reading(document_);
  const int frame = Frames().Caret();
  return map_.IsLoaded() && frame >= 0 && frame < map_.FrameCount() ? map_.Map()->PositionOf(frame) : -1;
}

void FramePane::ShowPlace(const std::vector<int>& frames) {
  if (frames.empty()) return;
  Table().SetSelection(frames);
  Table().ShowFrames(frames.front(), frames.back());
  Frames().SelectOnly(frames);
  RefreshFrequencyBox();
}

double FramePane::Clamp(double hz) const {
  return ClampFrequency(hz, kind_, map_.IsSinglePrecision());
}

// Shows the frequency of the caret row, for Set to start from.
void FramePane::RefreshFrequencyBox() const {
  SetDlgItemTextW(dialog_, IDC_EDITOR_FREQUENCY, FrequencyText(map_.FrequencyOf(Frames().Caret())).c_str());
}

// The syllable counts as edited even where no value changes.
void FramePane::Edit(Gesture gesture, const std::function<std::vector<int>(FrqMap&)>& change) {
  document_.Change(gesture, map_.Index(), change);
}

bool FramePane::OnControl(UINT id, UINT code, LPARAM detail) {
  if (id == IDC_EDITOR_TABLE) {
    OnTableNotification(code, static_cast<int>(detail));
  } else if (id == IDC_EDITOR_KEY) {
    if (code == EN_KILLFOCUS) OnKeyEdited();
  } else if (id == IDC_EDITOR_FRAMES) {
    if (code == LBN_SELCHANGE) OnFrameListSelChange();
  } else if (id == IDC_EDITOR_SET) {
    OnSetFrequency();
  } else if (id >= IDC_EDITOR_TRIPLE && id <= IDC_EDITOR_KEYFROMSELECTION && id != IDC_EDITOR_RELOAD) {
    OnFlatButton(id);
  } else {
    return false;
  }
  return true;
}

// The table copies the selection; it has no message for none.
void FramePane::OnFrameListSelChange() {
  RefreshFrequencyBox();
  const std::vector<int> rows = Frames().SelectedRows();
  if (!rows.empty()) Table().SetSelection(rows);
}

void FramePane::SelectAllFrames() {
  Frames().SelectAll();
  OnFrameListSelChange();
}

// A button that finds nothing to work on says what it wants. Without a syllable everything in the window is empty.
void FramePane::AskForFrames(UINT button) const {
  if (map_) Balloon::Show(Item(static_cast<int>(button)), LoadResString(IDS_SELECTFRAMES));
}

void FramePane::OnFlatButton(UINT id) {
  const std::size_t selected = Frames().SelectedRows().size();
  if (selected < (id == IDC_EDITOR_INTERPOLATE ? 2u : 1u)) AskForFrames(id);
  switch (id) {
    case IDC_EDITOR_TRIPLE: return ScaleSelection(Gesture::Triple, 3.0);
    case IDC_EDITOR_DOUBLE: return ScaleSelection(Gesture::Double, 2.0);
    case IDC_EDITOR_UNVOICE: return ScaleSelection(Gesture::Unvoice, 0.0);
    case IDC_EDITOR_HALVE: return ScaleSelection(Gesture::Halve, 0.5);
    case IDC_EDITOR_THIRD: return ScaleSelection(Gesture::Third, 1.0 / 3.0);
    case IDC_EDITOR_INTERPOLATE: return InterpolateSelection();
    default: return KeyFromSelection();
  }
}

// The key of a map that derives it lags behind until something shows it anew.
void FramePane::ScaleSelection(Gesture gesture, double factor) {
  const std::vector<int> rows = Frames().SelectedRows();
  if (!map_ || rows.empty()) return;
  Edit(gesture, [&](FrqMap& map) { return ScaleFrames(map, rows, factor, kind_); });
  RefreshFrequencyBox();
}

void FramePane::SetFrequencies(Gesture gesture, const std::vector<int>& rows, std::vector<double> hz) {
  for (double& one : hz) one = Clamp(one);
  if (!map_ || hz == map_.FrequenciesOf(rows)) return;
  Edit(gesture, [&](FrqMap& map) {
    for (std::size_t i = 0; i < rows.size(); ++i) map.SetFrequency(map.PositionOf(rows[i]), hz[i]);
    return rows;
  });
  RefreshFrequencyBox();
  if (map_.IsDerived()) ShowKey();
}

// The box of the frequency stays as it was.
void FramePane::InterpolateSelection() {
  const std::vector<int> rows = Frames().SelectedRows();
  if (!map_ || rows.size() < 2) return;
  Edit(Gesture::Interpolate, [&](FrqMap& map) { return InterpolateFrames(map, rows, kind_); });
}

void FramePane::KeyFromSelection() {
  const std::vector<int> rows = Frames().SelectedRows();
  if (!map_) return;
  std::optional<double> mean;
  {
    const std::lock_guard reading(document_);
    mean = MeanFrequency(*map_.Map(), rows);
  }
  if (!mean) return AskForFrames(IDC_EDITOR_KEYFROMSELECTION);
  Edit(Gesture::KeyFromSelection, [&](FrqMap& map) {
    map.Average = *mean;
    return std::vector<int>{};
  });
  ShowKey();
}

// Only the caret row is set, however many are selected.
void FramePane::OnSetFrequency() {
  if (!map_) return;
  const double frequency = Clamp(ReadNumber(Item(IDC_EDITOR_FREQUENCY)));
  const int row = Frames().Caret();
  // Behind the last row, and so in a list that shows none, there is nothing to set.
  if (row < 0 || row >= Frames().RowCount()) return AskForFrames(IDC_EDITOR_SET);
  Edit(Gesture::SetFrequency, [&](FrqMap& map) {
    map.SetFrequency(map.PositionOf(row), frequency);
    return std::vector{row};
  });
  RefreshFrequencyBox();
}

// A typed key takes effect when its box loses the focus. Nothing asks whether the text changed: to go through the box
// with the Tab key marks the syllable edited, and an empty box is a key of no pitch. To take it back is the document's
// business from then on: the box alone would show another key than the map has.
void FramePane::OnKeyEdited() {
  if (showingKey_ || !map_.IsLoaded()) return;
  const double typed = ReadNumber(Item(IDC_EDITOR_KEY));
  const double key = Clamp(typed);
  const FlagScope typing(typingKey_);
  Edit(Gesture::TypeKey, [&](FrqMap& map) {
    map.Average = key;
    return std::vector<int>{};
  });
  if (key != typed) ShowKey();
  SendMessageW(Item(IDC_EDITOR_KEY), EM_EMPTYUNDOBUFFER, 0, 0);
}

// Only frequencies count: a changed key alone is not seen, and goes when the map is read again because no difference is
// left. The map itself says which syllable is meant, since a click on another row may be under way.
void FramePane::ReloadSelection() {
  const int index = map_.Index();
  if (!map_ || !document_.Facts(index).Edited) return;
  const std::vector<int> rows = Frames().SelectedRows();
  const int rowCount = Frames().RowCount();
  {
    const FlagScope keepsRows(keepsRows_);
    const Document::Scope gesture(document_, Gesture::ReloadSelection);
    int different = 0;
    Edit(Gesture::ReloadSelection, [&](FrqMap& map) {
      different = RestoreFrames(map, *map_.Saved(), rows, rowCount);
      return rows;
    });
    if (different == 0) document_.Reload(index, Document::OnFailure::EmptySaved, true);
  }
  RefreshFrequencyBox();
  ShowKey();
}

void FramePane::OnTableNotification(UINT code, int frame) {
  switch (code) {
    case FCN_FRAMECHANGED: return OnTableFrameChanged(frame);
    case FCN_AVERAGECHANGED: return map_.IsDerived() ? ShowKeySoon() : ShowKey();
    case FCN_SELECTIONCHANGED: return Frames().SelectOnly(map_.SelectedFrames());
    default: return;
  }
}

// A notification comes for each column of a stroke.
void FramePane::OnTableFrameChanged(int frame) {
  if (!map_) return;
  Frames().DeselectAll();
  if (frame < 0) {
    Frames().Rewrite(map_);
  } else {
    Frames().Update(map_, std::array{frame});
  }
  RefreshFrequencyBox();
}
