#include "app/voicebankcheck.h"

#include <optional>

#include "frqmap/frqtype.h"
#include "window/paintwaiting.h"

namespace {

constexpr ULONGLONG kPaintMs = 100;

}  // namespace

VoicebankCheck::VoicebankCheck(Voicebank& bank, HWND editor)
    : bank_(bank), syllables_(bank.Maps), editor_(editor), progress_(editor, bank.Maps.State().Maps) {
  sum_.Maps = progress_.Count();
}

void VoicebankCheck::Run(const CheckLibrary& library, const CheckFrqSettings& settings) {
  for (int index = 0; index < syllables_.State().Entries; ++index) {
    const EntryFacts facts = syllables_.Facts(index);
    if (!facts.HasMap) continue;
    KeepPainted();
    if (!progress_.Begin(facts.Path)) {
      sum_.End = CheckSum::Aborted;
      return;
    }
    if (!Check(index, facts, library, settings)) return;
  }
}

// The library works on records of its own, so that the document is not held up by it.
bool VoicebankCheck::Check(int index, const EntryFacts& facts, const CheckLibrary& library,
                           const CheckFrqSettings& settings) {
  if (!syllables_.EnsureLoaded(index, Document::OnFailure::KeepSaved)) {
    sum_.Unread.push_back(facts.Path);
    return true;
  }
  std::optional<CheckQuery> query;
  syllables_.Mark(
      index, [&](FrqMap& map) { query.emplace(map, MapPathFromWaveW(facts.Path, bank_.Files.Kind)); }, false);
  if (!query || !query->Frames) return true;
  const CheckLibrary::Verdict verdict = library.Judge(settings, *query);
  if (verdict != CheckLibrary::Verdict::Judged) {
    if (verdict == CheckLibrary::Verdict::Failed) sum_.End = CheckSum::BrokeOff;
    return false;
  }
  ++sum_.Judged;
  syllables_.Mark(
      index,
      [&](FrqMap& map) {
        if (map.FrameCount == query->Frames->FrameCount) sum_.Marks += TakeCheckResults(*query->Frames, map);
      },
      true);
  return true;
}

void VoicebankCheck::KeepPainted() {
  const ULONGLONG now = GetTickCount64();
  if (!progress_.IsShown() || now - painted_ < kPaintMs) return;
  painted_ = now;
  PaintWaiting();
  EditorSender(editor_).Paint();
}
