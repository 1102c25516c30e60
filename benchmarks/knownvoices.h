// Voices whose pitch is known because they are made from it, and how far an analysis is from it.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <numbers>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "frqmap/frqtype.h"

namespace voices {

constexpr double kSeconds = 1.0;
constexpr SampleCount kHop = 256;

struct KnownVoice {
  std::string name;
  std::function<double(double)> hz;     // at a time [s]; 0 = no voice
  std::function<double(double)> level;  // of the voice, 0 to 1
  double noise = 0.0;                   // level of the noise in it
  std::array<double, 3> formants = {750.0, 1250.0, 2700.0};
  int sampleRate = 44100;
};

// 0 where there is no voice.
inline double PitchAt(const KnownVoice& voice, double t) {
  constexpr double kInaudible = 0.03;
  return voice.level(t) > kInaudible ? voice.hz(t) : 0.0;
}

inline double MouthGain(const KnownVoice& voice, double hz) {
  constexpr double kBandwidth = 90.0;
  double gain = 0.02;
  for (std::size_t i = 0; i < voice.formants.size(); ++i) {
    const double off = (hz - voice.formants[i]) / kBandwidth;
    gain += std::pow(0.5, static_cast<double>(i)) / (1.0 + off * off);
  }
  return gain;
}

// A sum of harmonics, each as loud as the mouth lets it through; 16-bit units, at most about half the range.
inline std::vector<float> Sound(const KnownVoice& voice) {
  constexpr double kHighest = 5000.0;
  constexpr int kGainSamples = 64;  // the mouth is asked anew after so many
  std::mt19937 chance(1);
  std::vector<float> samples(static_cast<std::size_t>(kSeconds * voice.sampleRate));
  std::vector<double> gains;
  double phase = 0.0;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const double t = static_cast<double>(i) / voice.sampleRate;
    const double hz = voice.hz(t);
    phase += 2.0 * std::numbers::pi * hz / voice.sampleRate;
    if (i % kGainSamples == 0) {
      gains.clear();
      const double top = std::min(kHighest, voice.sampleRate / 2.0);
      for (double k = 1.0; hz > 0.0 && k * hz < top; ++k) gains.push_back(MouthGain(voice, k * hz) / std::sqrt(k));
    }
    // sin(k x) by sin((k + 1) x) = 2 cos(x) sin(k x) - sin((k - 1) x).
    double sum = 0.0, last = 0.0, current = std::sin(phase);
    const double twice = 2.0 * std::cos(phase);
    for (const double gain : gains) {
      sum += gain * current;
      last = std::exchange(current, twice * current - last);
    }
    const double noise = static_cast<double>(chance()) / 2147483648.0 - 1.0;
    samples[i] = static_cast<float>(std::round(4000.0 * (voice.level(t) * sum + voice.noise * noise)));
  }
  return samples;
}

struct Errors {
  int frames = 0;
  int voiced = 0;
  int gross = 0;    // over 20 percent off
  int voicing = 0;  // a voice missed, or one found where there is none
  double GrossPercent() const { return 100.0 * gross / std::max(voiced, 1); }
  double VoicingPercent() const { return 100.0 * voicing / std::max(frames, 1); }
};

inline void Count(const std::vector<double>& found, const std::function<double(double)>& hz, int sampleRate,
                  Errors& errors) {
  for (std::size_t i = 0; i < found.size(); ++i) {
    const double known = hz(static_cast<double>(i) * kHop / sampleRate);
    const bool isFound = found[i] > FrqNoPitch;
    ++errors.frames;
    errors.voiced += known > 0.0;
    errors.voicing += isFound != (known > 0.0);
    errors.gross += isFound && known > 0.0 && std::abs(found[i] / known - 1.0) > 0.2;
  }
}

inline std::vector<KnownVoice> All() {
  const auto steady = [](double hz) { return [hz](double) { return hz; }; };
  const auto held = [](double t) { return t > 0.1 && t < 0.9 ? 1.0 : 0.0; };
  const auto always = [](double) { return 1.0; };
  const auto glide = [](double from, double to) { return [=](double t) { return from * std::pow(to / from, t); }; };
  const auto vibrato = [](double hz, double cents) {
    return [=](double t) { return hz * std::exp2(cents / 1200.0 * std::sin(2.0 * std::numbers::pi * 6.0 * t)); };
  };
  const auto soft = [](double t) { return std::clamp(std::min(t - 0.1, 0.95 - t) / 0.3, 0.0, 1.0); };
  const std::array<double, 3> i = {300.0, 2300.0, 3000.0}, u = {320.0, 800.0, 2400.0}, o = {480.0, 850.0, 2600.0};
  return {
      {"steady 80", steady(80.0), held},
      {"steady 110, i", steady(110.0), held, 0.0, i},
      {"steady 160, u: the second harmonic on a formant", steady(160.0), held, 0.0, u},
      {"steady 220", steady(220.0), always},
      {"steady 240, o: the second harmonic on a formant", steady(240.0), held, 0.0, o},
      {"steady 440, i", steady(440.0), held, 0.0, i},
      {"steady 620", steady(620.0), held},
      {"steady 900", steady(900.0), always},
      {"steady 900, i", steady(900.0), held, 0.0, i},
      {"glide 80 to 320", glide(80.0, 320.0), held},
      {"glide 900 to 225, o", glide(900.0, 225.0), held, 0.0, o},
      {"vibrato at 150", vibrato(150.0, 100.0), held, 0.0, u},
      {"vibrato at 500", vibrato(500.0, 150.0), held},
      {"vibrato at 850, i", vibrato(850.0, 80.0), held, 0.0, i},
      {"soft 100", steady(100.0), soft},
      {"soft 300, u", steady(300.0), soft, 0.0, u},
      {"soft 800", steady(800.0), soft},
      {"breathy 120", steady(120.0), held, 0.05},
      {"breathy 350, o", steady(350.0), held, 0.1, o},
      {"breathy 700", steady(700.0), held, 0.1},
      {"noise", steady(0.0), always, 0.5},
      {"silence", steady(0.0), always},
      {"at 48 kHz", glide(150.0, 300.0), held, 0.0, o, 48000},
      {"at 22 kHz", glide(400.0, 200.0), held, 0.0, i, 22050},
      {"at 8 kHz", steady(200.0), held, 0.0, u, 8000},
  };
}

}  // namespace voices
