// Candidates for the pitch of a frame, from the correlation and from the regularity of the spectrum, each with the
// traits of its sound by which its weight is judged (candidatescore.h).
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "pitch/harmonicview.h"
#include "pitch/pitchsignals.h"
#include "pitch/repetition.h"

inline constexpr std::size_t kMostCandidates = 10;
inline constexpr std::size_t kTraits = 48;

// A level, as part of the loudest one, under which there is no voice: -33 dB.
inline constexpr double kSilentLevel = 0.0211;

// The traits of a candidate's sound, in numbers of the size of one.
using Traits = std::array<float, kTraits>;

struct FoundPitch {
  double logHz;  // octaves over 1 Hz
  double correlation;
  Traits traits;
};

// [octaves over 1 Hz]
struct LogRange {
  double lowest, highest;
  bool Holds(double logHz) const { return logHz >= lowest && logHz <= highest; }
};

// Candidates are sought in a coarse signal and weighed in the whole one: between two lags of the coarse one the true
// height of a peak cannot be told, and a period of 26.5 samples would lose against twice its length.
class CandidateSearch {
 public:
  explicit CandidateSearch(const PitchSignals& signals);  // which outlive it

  // The level at a moment, as part of the loudest one.
  double LevelAt(double seconds) const;
  // The candidates at a moment, kMostCandidates at most, without an order. Those outside the range are among them,
  // since they tell whether there is a voice, but leave room for those inside.
  const std::vector<FoundPitch>& At(double seconds, const LogRange& range);

 private:
  struct Place {
    double lag;  // [s]
    double height;
  };
  // The facts of a candidate that are needed more than once.
  struct Facts {
    double hz, clearness, regularity;
  };
  struct Surroundings {
    const HarmonicView& view;
    std::array<const HarmonicView*, 4> others;  // before and after
    double level;
    std::array<double, 4> changes;  // of the level, before and after
    double high;                    // how much of the sound lies above the coarse signal
    double clearness, regularity;   // the highest of all candidates
  };
  void Correlate(double seconds);
  void AddRepeats(const LogRange& range);
  void AddRegular(const HarmonicView& view);
  bool IsNew(double lag) const;
  void AddLines(const HarmonicView& view);
  void AddHighest(std::size_t most);
  void AddFound(double logHz, double correlation, const HarmonicView& view);
  double ClearnessNear(double logHz, double lag) const;
  Surroundings SurroundingsAt(double seconds);
  void Describe(std::size_t place, const Surroundings& around);

  const Repetition& coarse_;
  const Repetition& fine_;
  const double loudest_;
  const std::ptrdiff_t shortest_;    // lag
  std::vector<double> correlation_;  // of the coarse signal at the shortest lag and on
  HarmonicViews views_;
  std::vector<Place> places_, peaks_;
  std::vector<FoundPitch> found_;
  std::vector<Facts> facts_;  // of those found
};
