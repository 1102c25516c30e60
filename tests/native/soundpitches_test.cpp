// Pitches that a recording offers to the pencil, and its readings.
#include "pitch/soundpitches.h"

#include <gtest/gtest.h>

#include <cmath>

#include "frqmap/frqtype.h"
#include "native/tone.h"
#include "pitch/readings.h"

namespace {

constexpr SampleCount kHop = 256;
constexpr SampleCount kFrames = 44100 / kHop + 1;

using Hz = double (*)(double);

double CentsBetween(double a, double b) {
  return 1200.0 * std::fabs(std::log2(a / b));
}

SoundPitches PitchesOf(Hz hz, int rate = 44100) {
  return SoundPitches({SecondOfTone(hz, 0.1, 0.9, rate), rate}, kHop);
}

// A pencil two semitones off, on either side, of which the one below is nearer to an octave and a third below.
TEST(SoundPitches, APencilTwoSemitonesOffSnapsToThePitchOfTheVoice) {
  const Hz voices[] = {[](double) { return 110.0; }, [](double t) { return 180.0 * std::exp2(t); },
                       [](double t) { return 330.0 + 8.0 * std::sin(35.0 * t); }, [](double) { return 830.0; }};
  for (const Hz voice : voices) {
    for (const double off : {-200.0, 200.0}) {
      SoundPitches sound = PitchesOf(voice);
      int asked = 0, near = 0;
      for (SampleCount frame = 25; frame * kHop < 0.85 * 44100; frame += 3, ++asked) {
        const double known = voice(frame * kHop / 44100.0);
        const auto snapped = sound.NearestAt(frame, known * std::exp2(off / 1200.0));
        near += snapped && CentsBetween(*snapped, known) <= 10.0;
      }
      EXPECT_GE(near, 0.95 * asked) << voice(0.0) << " " << off;
    }
  }
}

TEST(SoundPitches, OfTwoVoicesTheOneNearerToThePencilIsTaken) {
  std::vector<float> both = SecondOfTone([](double) { return 220.0; }, 0.1, 0.9);
  const std::vector<float> other = SecondOfTone([](double) { return 261.6; }, 0.1, 0.9);
  for (std::size_t i = 0; i < both.size(); ++i) both[i] += other[i];
  SoundPitches sound({both, 44100}, kHop);
  EXPECT_TRUE(sound.Prepare(40, 80));
  EXPECT_FALSE(sound.Prepare(41, 78)) << "it heard again what it knew";
  for (const auto& [pencil, hz] : {std::pair(226.0, 220.0), {254.0, 261.6}}) {
    int near = 0;
    for (SampleCount frame = 40; frame < 120; ++frame) {
      near += CentsBetween(sound.NearestAt(frame, pencil).value_or(1.0), hz) < 50.0;
    }
    EXPECT_GT(near, 70) << pencil;
  }
}

TEST(SoundPitches, WhereNothingIsBorneOutNearThePencilItStaysPlain) {
  SoundPitches sound = PitchesOf([](double) { return 220.0; });
  EXPECT_FALSE(sound.NearestAt(80, 220.0 * std::exp2(4.0 / 12.0))) << "too far";
  for (const SampleCount frame : {0, kFrames - 1, kFrames, 1 << 30, -1}) {
    EXPECT_FALSE(sound.NearestAt(frame, 220.0)) << "silence at " << frame;
  }
}

TEST(SoundPitches, ARecordingIsOfMapsOfItsLengthAlone) {
  const SoundPitches sound = PitchesOf([](double) { return 220.0; });
  EXPECT_TRUE(sound.CanBeOf(kHop, kFrames));
  EXPECT_FALSE(sound.CanBeOf(kHop, kFrames * 2) || sound.CanBeOf(kHop, 0) || sound.CanBeOf(kHop * 2, kFrames / 2));
}

// 70 s of one tone that rises by a note each ten seconds.
TEST(SoundPitches, ALongRecordingIsSoughtAroundWhatIsAskedAndGivesTheSame) {
  constexpr int kRate = 16000, kSeconds = 70;
  const auto noteAt = [](double t) { return 200.0 * std::exp2(std::floor(t / 10.0) / 12.0); };
  Sound sound{{}, kRate};
  double phase = 0.0;
  for (int i = 0; i < kSeconds * kRate; ++i) {
    phase += noteAt(static_cast<double>(i) / kRate) / kRate;
    sound.samples.push_back(static_cast<float>(9000.0 * (2.0 * std::fmod(phase, 1.0) - 1.0)));
  }
  SoundPitches pitches(sound, kHop);
  std::vector<int> frames;
  for (const double t : {65.0, 2.0, 38.0, 41.0, 69.0, 12.0}) {
    const auto frame = static_cast<SampleCount>(t * kRate / kHop);
    EXPECT_LT(CentsBetween(pitches.NearestAt(frame, noteAt(t) * 1.1).value_or(1.0), noteAt(t)), 30.0) << t;
    EXPECT_EQ(pitches.Known(frame + 60 * kRate / kHop), nullptr) << "nobody asked for that";
  }
  for (SampleCount i = 10; i < kSeconds * kRate / kHop - 10; ++i) frames.push_back(i);
  const OfferedReading reading = NextReading(pitches, frames, std::nullopt);
  int near = 0;
  for (const int frame : frames) {
    const double hz = reading.hz[static_cast<std::size_t>(frame - 10)];
    near += CentsBetween(hz, noteAt(frame * static_cast<double>(kHop) / kRate)) < 30.0;
  }
  EXPECT_GT(near, 0.97 * std::ssize(frames));
}

TEST(Readings, GoFromTheLikeliestThroughOctavesAndAnotherAndBackPassingOverWhatIsEmpty) {
  const std::vector<int> frames = {60, 61, 62, 70, 71, 100};
  const std::tuple<Hz, std::vector<std::pair<Reading, double>>> tests[] = {
      {[](double) { return 300.0; },
       {{Reading::Likeliest, 300.0}, {Reading::OctaveBelow, 150.0}, {Reading::OctaveAbove, 600.0}}},
      {[](double) { return 100.0; }, {{Reading::Likeliest, 100.0}, {Reading::OctaveAbove, 200.0}}},
      {[](double) { return 1000.0; }, {{Reading::Likeliest, 1000.0}, {Reading::OctaveBelow, 500.0}}}};
  for (const auto& [voice, expected] : tests) {
    SoundPitches sound = PitchesOf(voice);
    std::optional<Reading> last;
    for (const auto& [which, hz] : expected) {
      const OfferedReading reading = NextReading(sound, frames, last);
      EXPECT_EQ(reading.which, which) << hz;
      ASSERT_EQ(reading.hz.size(), frames.size());
      for (const double one : reading.hz) EXPECT_LT(CentsBetween(one, hz), 15.0) << hz;
      last = reading.which;
    }
    if (const OfferedReading reading = NextReading(sound, frames, last); reading.which == Reading::Another) {
      for (const double one : reading.hz) {
        EXPECT_TRUE(!(one > FrqNoPitch) || CentsBetween(one, voice(0.0)) >= 290.0) << one;
      }
      last = reading.which;
    } else {
      EXPECT_EQ(reading.which, Reading::Likeliest);
      continue;
    }
    EXPECT_EQ(NextReading(sound, frames, last).which, Reading::Likeliest);
  }
  SoundPitches sound = PitchesOf([](double) { return 300.0; });
  const OfferedReading silent = NextReading(sound, std::vector<int>{0, 5}, Reading::Likeliest);
  EXPECT_TRUE(silent.which == Reading::Likeliest && !silent.HasVoice()) << "there is no other";
}

}  // namespace
