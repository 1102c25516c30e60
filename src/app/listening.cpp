#include "app/listening.h"

#include <mmsystem.h>

#include <exception>
#include <utility>

#include "app/words.h"
#include "base/text.h"
#include "resources/ids.h"
#include "window/balloon.h"

namespace {

ListenTo WhatOf(UINT command) {
  switch (command) {
    case ID_LISTEN_RECORDING: return ListenTo::Recording;
    case ID_LISTEN_CURVE: return ListenTo::Curve;
    case ID_LISTEN_BOTH: return ListenTo::Both;
    default: return ListenTo::Compare;
  }
}

}  // namespace

void Listening::Close() {
  run_.StopAndWait();
  TempFolder::Empty(folder_.Path());
  folder_.Remove();
}

void Listening::Stop() {
  run_.Stop();
  isEndNews_ = false;
}

void Listening::OnCommand(UINT command, const std::wstring& wavePath) {
  Stop();
  preview_.Stop();
  command_ = command;
  if (command == ID_LISTEN_STOP) return;
  if (wavePath.empty()) return Tell(LoadResString(IDS_NOTHINGAPPLIES));
  try {
    Start(command, wavePath);
  } catch (const std::exception&) {
    Tell(LoadResString(IDS_NOTPLAYED));  // memory does not hold the map twice
  }
}

void Listening::Start(UINT command, const std::wstring& wavePath) {
  ListenInput input;
  input.What = WhatOf(command);
  input.Part = SelectedPart();
  resampler_ = settings_.ResamplerInUse();
  input.Syllable = preview_.CollectInput({wavePath, map_, settings_.FrqType, resampler_, bank_.Files.Store, {}});
  input.Syllable.Settings.Direct = false;
  if (input.What == ListenTo::Compare) {
    map_.CopySavedTo(input.Saved);
    const std::wstring fault = WhyNotComparable(input);
    if (!fault.empty()) return Tell(fault);
  }
  if (folder_.Path().empty()) folder_.Make();
  isEndNews_ = true;
  told_ = -1;
  run_.Start(editor_, folder_.Path(), std::move(input));
}

FrameRange Listening::SelectedPart() const {
  const std::vector<int> rows = frames_.SelectedRows();
  if (rows.size() < 2) return {};
  return {rows.front(), rows.back() - rows.front() + 1};
}

std::wstring Listening::WhyNotComparable(const ListenInput& input) const {
  if (input.Syllable.Map.Frames.empty()) return TextOfNoCurve();
  if (!input.Saved.Loaded) return LoadResString(IDS_LISTEN_NOSAVED);
  return input.Saved.Equals(input.Syllable.Map) ? LoadResString(IDS_LISTEN_SAME) : std::wstring();
}

bool Listening::TakeKey(const MSG& message) {
  if (message.message != WM_KEYDOWN || message.wParam != VK_SPACE) return false;
  const bool isRepeated = message.lParam & 0x40000000;
  if (isRepeated) return isSpaceHeld_;
  const bool isPlain = GetKeyState(VK_CONTROL) >= 0 && GetKeyState(VK_SHIFT) >= 0 && GetKeyState(VK_MENU) >= 0;
  isSpaceHeld_ = isPlain && IsSounding();
  if (isSpaceHeld_) Stop();
  return isSpaceHeld_;
}

void Listening::OnTold() {
  if (!isEndNews_) return;
  if (!run_.IsRunning()) {
    isEndNews_ = false;
    return Tell(TextOfEnd());
  }
  const int sounding = run_.Sounding();
  if (command_ != ID_LISTEN_COMPARE || sounding < 0 || sounding == told_) return;
  told_ = sounding;
  Tell(LoadResString(sounding == 0 ? IDS_LISTEN_SAVED : IDS_LISTEN_EDITED));
}

// Empty where all went well.
std::wstring Listening::TextOfEnd() const {
  switch (run_.End()) {
    case SoundEnd::Well:
      if (waveOutGetNumDevs() > 0) return {};  // the system takes a sound that nobody hears
      [[fallthrough]];
    case SoundEnd::NotPrepared:
    case SoundEnd::NotPlayed: return LoadResString(IDS_NOTPLAYED);
    case SoundEnd::NoWave: return LoadResString(IDS_LISTEN_NOWAVE);
    case SoundEnd::Behind: return LoadResString(IDS_LISTEN_BEHIND);
    case SoundEnd::NoCurve: return TextOfNoCurve();
    case SoundEnd::NotStarted:
    case SoundEnd::Silent: break;
  }
  const bool isThere = TextOfMissing(resampler_).empty();
  return TextOf(ItemResult{isThere ? ItemEnd::NothingMade : ItemEnd::NotStarted}, resampler_);
}

// A map that cannot be read has a reason of its own.
std::wstring Listening::TextOfNoCurve() const {
  const std::wstring fault = TextOfUnreadable(bank_, map_.Index());
  return fault.empty() ? LoadResString(IDS_LISTEN_NOCURVE) : fault;
}

// The word stands at the table, since the focus may be anywhere.
void Listening::Tell(const std::wstring& text) const {
  if (text.empty()) return;
  Balloon::Show(GetDlgItem(editor_, IDC_EDITOR_TABLE), text, CommandName(GetMenu(editor_), command_));
}
