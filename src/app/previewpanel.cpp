#include "app/previewpanel.h"

#include <commctrl.h>
#include <mmsystem.h>

#include <exception>
#include <utility>

#include "app/words.h"
#include "base/text.h"
#include "frqmap/mrqmap.h"
#include "frqmap/mrqstore.h"
#include "resources/ids.h"
#include "window/balloon.h"
#include "window/realnumberbox.h"

namespace {

// The place of the pitch's trackbar that changes nothing. A step is a semitone.
constexpr int kPitchMiddle = 12;

}  // namespace

void PreviewPanel::Prepare(HWND dialog) {
  dialog_ = dialog;
  SendMessageW(Item(IDC_EDITOR_PITCH), TBM_SETRANGE, TRUE, MAKELPARAM(0, 2 * kPitchMiddle));
  SendMessageW(Item(IDC_EDITOR_PITCH), TBM_SETPOS, TRUE, kPitchMiddle);
  SetDlgItemTextW(dialog_, IDC_EDITOR_MODULATION, L"0");
  TakeNoInputMethod(Item(IDC_EDITOR_MODULATION));
}

void PreviewPanel::Close() {
  preview_.StopAndWait();
  preview_.ClearFolder();
}

void PreviewPanel::Stop() {
  if (preview_.IsRunning()) preview_.Stop();
}

void PreviewPanel::OnPlayPressed(const PreviewSource& source) {
  if (preview_.IsRunning()) {
    preview_.Stop();
    return;
  }
  if (!source.Map) return;
  try {
    PreviewInput input = CollectInput(source);
    resampler_ = source.ResamplerPath;
    fault_ = source.Fault;
    SetDlgItemTextW(dialog_, IDC_EDITOR_PLAY, LoadResString(IDS_STOP).c_str());
    preview_.Start(std::move(input));
  } catch (const std::exception&) {
    OnDone(source.Kind);  // memory does not hold the map twice: it is not played
  }
}

int PreviewPanel::PitchShift() const {
  return static_cast<int>(SendMessageW(Item(IDC_EDITOR_PITCH), TBM_GETPOS, 0, 0)) - kPitchMiddle;
}

PreviewInput PreviewPanel::CollectInput(const PreviewSource& source) const {
  PreviewInput input;
  input.WavePath = source.WavePath;
  input.FrqType = source.Kind;
  source.Map.CopyTo(input.Map);
  if (source.Kind == FrqTypeMrq) {
    input.Entry = source.Store.Find(MrqKey(MapPathFromWaveW(source.WavePath, source.Kind)));
  }
  input.Settings.PitchShift = PitchShift();
  input.Settings.Modulation = ModulationFromText(WindowText(Item(IDC_EDITOR_MODULATION)));
  input.Settings.Flags = WithoutQuotes(WindowText(Item(IDC_EDITOR_FLAGS)));
  input.Settings.Direct = IsDlgButtonChecked(dialog_, IDC_EDITOR_DIRECT) == BST_CHECKED;
  input.ResamplerPath = source.ResamplerPath;
  input.Window = dialog_;
  return input;
}

void PreviewPanel::OnToldDone(FrqType kind) {
  if (!preview_.HasEnded()) return;
  const bool isNews = preview_.IsRunning();
  OnDone(kind);
  if (isNews) TellOfEnd();
}

// The word stands at the button, which has gone back to what it was.
void PreviewPanel::TellOfEnd() const {
  std::wstring text;
  switch (preview_.End()) {
    case PreviewEnd::Well:
      if (waveOutGetNumDevs() > 0) return;  // the system takes a sound that nobody hears
      [[fallthrough]];
    case PreviewEnd::NotPlayed: text = LoadResString(IDS_NOTPLAYED); break;
    case PreviewEnd::NotPrepared: text = fault_.empty() ? LoadResString(IDS_NOTPLAYED) : fault_; break;
    case PreviewEnd::NotStarted:
    case PreviewEnd::Silent: {
      const bool isThere = TextOfMissing(resampler_).empty();
      text = TextOf(ItemResult{isThere ? ItemEnd::NothingMade : ItemEnd::NotStarted}, resampler_);
      break;
    }
  }
  Balloon::Show(Item(IDC_EDITOR_PLAY), text);
}

// One family keeps more beside a wave than its map, and takes it for that of the next wave with the same name.
void PreviewPanel::OnDone(FrqType kind) {
  preview_.Finish();
  SetDlgItemTextW(dialog_, IDC_EDITOR_PLAY, LoadResString(IDS_PLAY).c_str());
  if (kind == FrqTypeMrq) preview_.ClearFolder();
}

// The wave itself is played as it is, so nothing that a resampler would take counts. Labels without an id, as the
// English form has them, stay as they are.
void PreviewPanel::OnDirectPressed() const {
  const bool rendered = IsDlgButtonChecked(dialog_, IDC_EDITOR_DIRECT) != BST_CHECKED;
  for (const int id : {IDC_EDITOR_PITCHLABEL, IDC_EDITOR_PITCH, IDC_EDITOR_PITCHTEXT, IDC_EDITOR_MODULATIONLABEL,
                       IDC_EDITOR_MODULATION, IDC_EDITOR_PERCENTLABEL, IDC_EDITOR_FLAGSLABEL, IDC_EDITOR_FLAGS}) {
    EnableWindow(Item(id), rendered);
  }
}

void PreviewPanel::OnScrolled(HWND scrollBar) const {
  if (!scrollBar || GetDlgCtrlID(scrollBar) != IDC_EDITOR_PITCH) return;
  SetDlgItemTextW(dialog_, IDC_EDITOR_PITCHTEXT, std::to_wstring(PitchShift()).c_str());
}
