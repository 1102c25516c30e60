// shift and key: the same edit of every map.
#include <algorithm>
#include <cmath>
#include <numeric>

#include "batch/commands.h"
#include "batch/keeping.h"
#include "batch/mapchange.h"
#include "frqmap/edits.h"

namespace {

constexpr int kKeyWindow = 2;  // semitones; the scoop into a note, and its end, are not at the pitch that was sung

// Frames that a product takes under the lowest pitch lose theirs, as in the windows.
std::string Shift(FrqMap& map, FrqType kind, double cents) {
  std::vector<int> rows(static_cast<std::size_t>(map.FrameCount));
  std::iota(rows.begin(), rows.end(), 0);
  const std::vector<int> set = ScaleFrames(map, rows, std::exp2(cents / 1200.0), kind);
  if (set.empty() || cents == 0.0) return {};
  if (!map.DerivedAverage) map.Average = std::min(map.Average * std::exp2(cents / 1200.0), MaxFrequencyOfKind(kind));
  char text[48];
  std::snprintf(text, sizeof(text), "shifted by %g cents", cents);
  return text;
}

// A kind that holds no key has it computed whenever it is shown.
std::string TakeKey(FrqMap& map) {
  const double key = map.ComputeAverage(kKeyWindow);
  if (map.DerivedAverage || map.Average == key) return {};
  const std::string change = "key " + NoteText(map.Average) + " -> " + NoteText(key);
  map.Average = key;
  return change;
}

void ChangeAll(Context& context, Keeping& keeping, const std::string& done, const MapChange& change) {
  const auto banks = BanksOf(context);
  const KeptBecauseScope because(keeping.Safety(), KeptBecause::Saved);
  ForEachWave(context, banks, "editing", [&](const WaveTask& task) { return ChangeMaps(context, task, change); });
  SayChanges(context, done);
}

}  // namespace

void ShiftMaps(Context& context, Keeping& keeping) {
  ChangeAll(context, keeping, "shifted",
            [&](FrqMap& map, FrqType kind) { return Shift(map, kind, context.Call.Cents); });
}

void SetKeys(Context& context, Keeping& keeping) {
  ChangeAll(context, keeping, "given a key", [](FrqMap& map, FrqType) { return TakeKey(map); });
}
