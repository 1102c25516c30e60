#include "resampler/noterange.h"

#include <algorithm>

#include "base/notename.h"

namespace {

constexpr int kFirstNote = 24;  // C1

}  // namespace

NoteRange NoteRangeBetween(const std::wstring& one, const std::wstring& other) {
  const auto [low, high] = std::minmax({NoteNumberFromName(one), NoteNumberFromName(other)});
  return {low, high - low + 1};
}

std::optional<NoteBoxes> BoxesOfNote(int note) {
  if (note < kFirstNote || note >= kFirstNote + kNoteBoxNames * kNoteBoxOctaves) return std::nullopt;
  return NoteBoxes{(note - kFirstNote) % kNoteBoxNames, (note - kFirstNote) / kNoteBoxNames};
}

std::wstring NoteBoxName(int position) {
  std::wstring name = NoteNameFromNumber(kFirstNote + position);
  name.pop_back();  // its octave
  return name;
}

std::wstring NoteBoxOctave(int position) {
  return std::to_wstring(position + 1);
}
