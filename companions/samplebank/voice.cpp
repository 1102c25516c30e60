// Source and filter: glottal pulses and noise go through resonators that stand for the mouth.
#include "voice.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "base/note.h"
#include "frqmap/frqtype.h"

namespace {

constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr double kLeadSeconds = 0.10;
constexpr double kTailSeconds = 0.12;
constexpr double kFadeOutSeconds = 0.10;

using Formants = std::array<double, 4>;  // [Hz]

struct Articulation {
  double seconds;       // length of the consonant
  bool voiced;          // the pulses run through the consonant
  double closure;       // level of the voice while the mouth is closed, 1 = that of the vowel
  Formants locus;       // the formants from which those of the vowel are reached
  double noiseSeconds;  // the noise starts with the consonant
  double noiseLevel;    // 0 = no noise
  double noiseHz;       // middle of the noise band
  double noiseWidthHz;  //
};

// The articulations in the order of Consonant.
constexpr std::array<Articulation, 5> kArticulations = {{
    {0.000, false, 1.00, {500.0, 1500.0, 2800.0, 3900.0}, 0.01, 0.0, 2000.0, 600.0},
    {0.055, false, 1.00, {350.0, 2100.0, 2500.0, 3700.0}, 0.04, 0.7, 2000.0, 600.0},
    {0.130, false, 1.00, {350.0, 1800.0, 2800.0, 3900.0}, 0.13, 0.045, 7500.0, 1200.0},
    {0.090, true, 0.35, {270.0, 1250.0, 2300.0, 3600.0}, 0.01, 0.0, 2000.0, 600.0},
    {0.045, true, 0.20, {400.0, 1500.0, 2200.0, 3600.0}, 0.01, 0.0, 2000.0, 600.0},
}};

// The formants in the order of Vowel: rounded values of a high voice.
constexpr std::array<Formants, 5> kVowels = {{
    {850.0, 1350.0, 2850.0, 3900.0},
    {320.0, 2650.0, 3300.0, 4100.0},
    {370.0, 1500.0, 2700.0, 3800.0},
    {500.0, 2250.0, 2950.0, 4000.0},
    {480.0, 900.0, 2800.0, 3800.0},
}};

// A rise that is 0 before `from`, 1 after `from` + `length`, and a half cosine between.
double Rise(double t, double from, double length) {
  return 0.5 - 0.5 * std::cos(std::numbers::pi * std::clamp((t - from) / length, 0.0, 1.0));
}

// The singer's intentions at each moment; all times in seconds from the start of the wave.
class Score {
 public:
  explicit Score(const Syllable& syllable)
      : syllable_(syllable),
        articulation_(kArticulations[static_cast<std::size_t>(syllable.consonant)]),
        vowelStart_(kLeadSeconds + articulation_.seconds),
        voiceStart_(articulation_.voiced ? kLeadSeconds : vowelStart_),
        end_(syllable.seconds - kTailSeconds) {}

  const Articulation& GetArticulation() const { return articulation_; }
  double VowelStart() const { return vowelStart_; }
  double End() const { return end_; }

  // The pitch is made of a scoop into the note, its ornament, and the slow unsteadiness of a held tone: three sines
  // that do not come together again (Klatt and Klatt 1990), 5 cents at most.
  double PitchHz(double t) const {
    const double sung = t - voiceStart_;
    double cents = -110.0 * std::exp(-sung / 0.05);
    cents += 1.7 * (std::sin(kTwoPi * 12.7 * t) + std::sin(kTwoPi * 7.1 * t) + std::sin(kTwoPi * 4.7 * t));
    if (syllable_.ornament == Ornament::Vibrato) {
      cents += 30.0 * Rise(sung, 0.25, 0.35) * std::sin(kTwoPi * 5.5 * (sung - 0.25));
    }
    if (syllable_.ornament == Ornament::Fall) cents -= 350.0 * Rise(t, end_ - 0.3, 0.5);
    return NoteToHz(syllable_.note + cents / 100.0);
  }

  double VoiceLevel(double t) const {
    const double fades = Rise(t, voiceStart_, 0.04) * (1.0 - Rise(t, end_ - kFadeOutSeconds, kFadeOutSeconds));
    return fades * std::lerp(articulation_.closure, 1.0, Rise(t, vowelStart_ - 0.01, 0.05));
  }

  double NoiseLevel(double t) const {
    const double length = articulation_.noiseSeconds;
    const double attack = Rise(t, kLeadSeconds, 0.15 * length);
    return articulation_.noiseLevel * attack * (1.0 - Rise(t, kLeadSeconds + 0.7 * length, 0.3 * length));
  }

  Formants FormantsAt(double t) const {
    Formants formants = kVowels[static_cast<std::size_t>(syllable_.vowel)];
    if (articulation_.seconds == 0.0) return formants;
    const double glide = Rise(t, vowelStart_ - 0.01, 0.06);
    for (std::size_t i = 0; i < formants.size(); ++i) {
      formants[i] = std::lerp(articulation_.locus[i], formants[i], glide);
    }
    return formants;
  }

 private:
  const Syllable& syllable_;
  const Articulation& articulation_;
  double vowelStart_;
  double voiceStart_;
  double end_;
};

// Second-order digital resonator with unit gain at 0 Hz (Klatt 1980, "Software for a cascade/parallel formant
// synthesizer").
class Resonator {
 public:
  void Tune(double hz, double bandwidthHz) {
    const double radius = std::exp(-std::numbers::pi * bandwidthHz / FrqSampleRate);
    c_ = -radius * radius;
    b_ = 2.0 * radius * std::cos(kTwoPi * hz / FrqSampleRate);
  }

  double Step(double in) {
    const double out = (1.0 - b_ - c_) * in + b_ * last_ + c_ * beforeLast_;
    beforeLast_ = last_;
    last_ = out;
    return out;
  }

 private:
  double b_ = 0.0, c_ = 0.0;
  double last_ = 0.0, beforeLast_ = 0.0;
};

// The formants in a row. The upper ones hardly move; without them the voice would end at 4 kHz as through a telephone.
class Mouth {
 public:
  Mouth() {
    for (std::size_t i = 0; i < upper_.size(); ++i) upper_[i].Tune(5100.0 + 1150.0 * static_cast<double>(i), 400.0);
  }

  void Tune(const Formants& formants) {
    constexpr Formants kBandwidths = {80.0, 100.0, 150.0, 250.0};
    for (std::size_t i = 0; i < formants.size(); ++i) lower_[i].Tune(formants[i], kBandwidths[i]);
  }

  double Step(double flow) {
    for (Resonator& resonator : lower_) flow = resonator.Step(flow);
    for (Resonator& resonator : upper_) flow = resonator.Step(flow);
    return flow;
  }

 private:
  std::array<Resonator, 4> lower_;
  std::array<Resonator, 6> upper_;
};

// The glottis, stepped sample by sample: the polynomial pulse of Rosenberg 1971 ("Effect of glottal pulse shape on the
// quality of natural vowels"), with breath in the stream. No two periods are quite of one length.
class Glottis {
 public:
  double Step(double hz, Noise& noise) {
    constexpr double kJitter = 0.003;
    constexpr double kBreath = 0.004;
    phase_ += hz * stretch_ / FrqSampleRate;
    if (phase_ >= 1.0) {
      phase_ -= 1.0;
      stretch_ = 1.0 + kJitter * noise.Next();
    }
    const double flow = Flow();
    return flow + kBreath * (0.3 + flow) * noise.Next();
  }

 private:
  double Flow() const {
    constexpr double kOpening = 0.40;  // in periods
    constexpr double kClosing = 0.16;
    const double opened = phase_ / kOpening;
    if (opened < 1.0) return opened * opened * (3.0 - 2.0 * opened);
    const double closed = std::min((phase_ - kOpening) / kClosing, 1.0);
    return 1.0 - closed * closed;
  }

  double phase_ = 0.0;
  double stretch_ = 1.0;
};

SampleCount ToSamples(double seconds) {
  return static_cast<SampleCount>(std::lround(seconds * FrqSampleRate));
}

}  // namespace

SungSyllable Sing(const Syllable& syllable, Noise& noise) {
  constexpr double kAudibleLevel = 0.1;  // below it a fade has no pitch that could be heard or measured

  const Score score(syllable);
  SungSyllable sung{{}, {}, ToSamples(kLeadSeconds), ToSamples(score.VowelStart()), ToSamples(score.End())};
  Glottis glottis;
  Mouth mouth;
  Resonator consonant;
  consonant.Tune(score.GetArticulation().noiseHz, score.GetArticulation().noiseWidthHz);
  double lastFlow = 0.0;
  for (SampleCount i = 0; i < ToSamples(syllable.seconds); ++i) {
    const double t = static_cast<double>(i) / FrqSampleRate;
    mouth.Tune(score.FormantsAt(t));
    const double hz = score.PitchHz(t);
    const double level = score.VoiceLevel(t);
    // The flow is summed in two statements: both take from the noise, and the order must not be the compiler's choice.
    double flow = mouth.Step(level * glottis.Step(hz, noise));
    flow += consonant.Step(score.NoiseLevel(t) * noise.Next());
    sung.samples.push_back(flow - lastFlow);  // the lips radiate about the derivative of the flow
    sung.pitch.push_back(level > kAudibleLevel ? hz : FrqNoPitch);
    lastFlow = flow;
  }
  return sung;
}
