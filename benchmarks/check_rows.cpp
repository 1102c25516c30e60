// How well the check finds errors: on contours whose errors are known, in percent against what is allowed. Its settings
// are those of a user who has told the note and left the boxes alone.
#include "check/checkrules.h"
#include "contours.h"
#include "figure.h"
#include "rows.h"

namespace {

using contours::Contour;
using contours::Error;
using contours::Large;

constexpr std::uint32_t kFiles = 500;
constexpr double kAllowedPercent = 5.0;
constexpr double kHalfSemitone = 0.5;

// Contours of the numbers that no rule was fitted to.
Contour MakeContour(std::uint32_t number, Error error, Large large) {
  return contours::Generator(5'000'000 + number).Make(error, large);
}

struct Tally {
  double frames = 0, wrong = 0, marked = 0, hits = 0;
  double byFactor = 0, suggested = 0;

  double Missed() const { return wrong > 0 ? 100.0 * (wrong - hits) / wrong : 0.0; }
  double False() const { return marked > 0 ? 100.0 * (marked - hits) / marked : 0.0; }
  double Unsuggested() const { return byFactor > 0 ? 100.0 * (byFactor - suggested) / byFactor : 0.0; }
};

void Check(Contour& contour, std::int32_t CheckFrqSettings::*box, Tally& tally) {
  CheckFrqSettings settings{.LowNote = contour.note, .HighNote = contour.note};
  if (box) settings.*box = 1;
  const auto frames = MakeCheckFrames(contour.map, L"");
  CheckMap(&settings, frames.get(), MakeCheckRegions(contour.map).get());
  for (std::size_t i = 0; i < contour.truth.size(); ++i) {
    const CheckFrame& frame = frames->Frames[i];
    const bool isMarked = frame.Mark != 0;
    ++tally.frames;
    tally.wrong += contour.wrong[i];
    tally.marked += isMarked;
    tally.hits += isMarked && contour.wrong[i];
    if (!contour.byFactor[i]) continue;
    ++tally.byFactor;
    tally.suggested += isMarked && frame.SuggestedFrequency > 0.0 &&
                       std::fabs(HzToNote(frame.SuggestedFrequency) - HzToNote(contour.truth[i])) <= kHalfSemitone;
  }
}

Tally CheckAll(std::vector<Error> errors, Large large = Large::None, std::int32_t CheckFrqSettings::*box = nullptr) {
  Tally tally;
  for (const Error error : errors) {
    for (std::uint32_t file = 0; file < kFiles; ++file) {
      Contour contour = MakeContour(static_cast<std::uint32_t>(error) * kFiles + file, error, large);
      Check(contour, box, tally);
    }
  }
  return tally;
}

// Share of the marks of a large transition that its box leaves.
double LeftByBox(Large large, std::int32_t CheckFrqSettings::*box) {
  return 100.0 * CheckAll({Error::None}, large, box).marked / CheckAll({Error::None}, large).marked;
}

}  // namespace

std::vector<Row> CheckRows() {
  const std::vector kAll = {Error::Run, Error::Half, Error::Whole, Error::Noise, Error::Gap};
  std::vector<Row> rows;
  const auto addPercent = [&](const char* name, std::function<double()> value) {
    rows.push_back(FigureRow(name, "%", kAllowedPercent, std::move(value)));
  };
  addPercent("check_missed", [=] { return CheckAll(kAll).Missed(); });
  addPercent("check_false", [=] { return CheckAll(kAll).False(); });
  addPercent("check_suggested", [=] { return CheckAll(kAll).Unsuggested(); });
  // The errors stand kind by kind: long ones outweigh short ones above.
  const std::pair<const char*, Error> kKinds[] = {{"check_run", Error::Run},
                                                  {"check_half", Error::Half},
                                                  {"check_whole", Error::Whole},
                                                  {"check_noise", Error::Noise},
                                                  {"check_gap", Error::Gap}};
  for (const auto& [name, error] : kKinds) {
    addPercent(name, [error = error] {
      const Tally tally = CheckAll({error});
      return std::max(tally.Missed(), tally.False());
    });
  }
  rows.push_back(FigureRow("check_clean", "marks", 1.0, [] { return CheckAll({Error::None}).marked * 20.0 / kFiles; }));
  addPercent("check_box_inside", [] { return LeftByBox(Large::Inside, &CheckFrqSettings::HasPitchTransition); });
  addPercent("check_box_begin",
             [] { return LeftByBox(Large::Beginning, &CheckFrqSettings::LargeTransitionAtBeginning); });
  addPercent("check_box_end", [] { return LeftByBox(Large::End, &CheckFrqSettings::LargeTransitionAtEnd); });
  return rows;
}
