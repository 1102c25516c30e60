// Sung pitch contours with everything that a clean map may hold, and the errors that an analysis lays into them.
//
// The check is measured on them. Nothing here knows the rules of the check; the numbers are those of
// singing: vibrato of 5 to 7 Hz, scoops and falls of some semitones, onsets whose pitch trembles while the breath dies
// away.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <random>
#include <string>
#include <vector>

#include "base/note.h"
#include "check/checkrecords.h"
#include "frqmap/frqmap.h"

namespace contours {

enum class Error { None, Run, Half, Whole, Noise, Gap };
enum class Large { None, Inside, Beginning, End };  // a transition beyond what a held tone has

struct Contour {
  FrqMap map;
  std::vector<double> truth;   // [Hz] of every frame before an error, FrqNoPitch where there is none
  std::vector<bool> wrong;     // frames that an error changed
  std::vector<bool> byFactor;  // those of them that have a multiple or a part of their pitch
  int note = 60;               // what the settings say of the voicebank
};

class Generator {
 public:
  explicit Generator(std::uint32_t number, int hop = 256) : chance_(number * 7919 + 17), hop_(hop) {}

  Contour Make(Error error, Large large = Large::None) {
    Contour contour;
    contour.note = static_cast<int>(Even(48.0, 77.0));
    Silence(0.05, 0.3);
    const int parts = large == Large::None ? Pick({1, 1, 1, 2, 3}) : 1;
    for (int part = 0; part < parts; ++part) {
      if (part > 0) Closure();
      Voice(contour.note + Even(-2.0, 2.0), large);
    }
    Silence(0.05, 0.3);
    Store(contour);
    Spoil(contour, error);
    return contour;
  }

 private:
  // Scaled by hand, because the library's distributions differ from one compiler to the next.
  double Even(double low, double high) { return low + (high - low) * chance_() / 4294967296.0; }
  bool Maybe(double share) { return Even(0.0, 1.0) < share; }
  int Pick(std::initializer_list<int> of) {
    return of.begin()[static_cast<int>(Even(0.0, static_cast<double>(of.size())))];
  }
  int FramesIn(double seconds) const { return std::max(1, static_cast<int>(seconds * FrqSampleRate / hop_)); }

  void Add(double hz, double level) {
    hz_.push_back(hz);
    levels_.push_back(level * Even(0.85, 1.15));
  }
  void Silence(double shortest, double longest) {
    const int count = FramesIn(Even(shortest, longest));
    for (int i = 0; i < count; ++i) Add(FrqNoPitch, 8.0);
  }
  void Hiss(double seconds, double level) {
    const int count = FramesIn(seconds);
    for (int i = 0; i < count; ++i) Add(FrqNoPitch, level);
  }
  // Between two voiced parts: a stop, a hiss, or the short touch of the tongue.
  void Closure() {
    const int kind = Pick({0, 1, 2});
    if (kind == 0) Silence(0.05, 0.12);
    if (kind == 1) Hiss(Even(0.07, 0.16), Even(200.0, 2000.0));
    if (kind == 2) Hiss(Even(0.015, 0.035), Even(200.0, 700.0));
  }

  static double Rise(double t, double start, double length) {
    const double x = std::clamp((t - start) / length, 0.0, 1.0);
    return x * x * (3.0 - 2.0 * x);
  }

  void Voice(double note, Large large) {
    const bool isLarge = large != Large::None;
    const double length = Even(isLarge ? 0.7 : 0.35, isLarge ? 2.0 : 1.8);
    if (Maybe(0.4)) Hiss(Even(0.05, 0.15), Even(150.0, 2500.0));
    const bool breathy = Maybe(0.4);
    const double vibrato = Maybe(0.6) ? Even(0.5, 1.5) : 0.0, vibratoHz = Even(5.0, 7.0), vibratoStart = Even(0.1, 0.4);
    double scoop = Maybe(0.4) ? Even(-5.0, 1.5) : 0.0, fall = Maybe(0.4) ? Even(-7.0, 2.0) : 0.0;
    double glide = Maybe(0.3) ? Even(-4.0, 4.0) : 0.0;
    double scoopLength = Even(0.06, 0.2), fallLength = Even(0.1, 0.3), glideLength = Even(0.1, 0.4);
    const double glideStart = Even(0.25, 0.5) * length;
    const double much = Even(12.5, 18.0) * (Maybe(0.5) ? 1.0 : -1.0);
    if (isLarge) scoop = fall = glide = 0.0;
    if (large == Large::Inside) glide = much;
    if (large == Large::Beginning) scoop = much, scoopLength = Even(0.08, 0.18);
    if (large == Large::End) fall = much, fallLength = Even(0.08, 0.18);
    const double loud = Even(2500.0, 9000.0), attack = breathy ? Even(0.08, 0.2) : 0.03;
    const int count = FramesIn(length);
    for (int i = 0; i < count; ++i) {
      const double t = i * static_cast<double>(hop_) / FrqSampleRate;
      double at = note + scoop * (1.0 - Rise(t, 0.0, scoopLength)) + fall * Rise(t, length - fallLength, fallLength);
      at += glide * Rise(t, glideStart, glideLength) + 0.15 * std::sin(2.0 * t + note);
      at += vibrato * Rise(t, vibratoStart, 0.2) * std::sin(2.0 * std::numbers::pi * vibratoHz * t);
      at += (0.06 + (breathy ? 0.8 * std::exp(-t / 0.05) : 0.0)) * Even(-1.0, 1.0);
      const double level =
          loud * std::lerp(0.06, 1.0, Rise(t, 0.0, attack)) * (1.0 - 0.94 * Rise(t, length - 0.08, 0.08));
      Add(NoteToHz(at), level);
    }
  }

  void Store(Contour& contour) {
    contour.map.Create(static_cast<SampleCount>(hz_.size()), FrqTypeFrq);
    contour.map.Loaded = true;
    contour.map.Hop = hop_;
    for (std::size_t i = 0; i < hz_.size(); ++i) {
      contour.map.Frames.Own()[i].Frequency = hz_[i];
      contour.map.Frames.Own()[i].Amplitude = levels_[i];
    }
    contour.truth = hz_;
    contour.wrong.assign(hz_.size(), false);
    contour.byFactor = contour.wrong;
  }

  // Frames with a pitch, or without one, in order.
  static std::vector<std::size_t> Places(const Contour& contour, bool pitched) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < contour.truth.size(); ++i) {
      if ((contour.truth[i] > FrqNoPitch) == pitched) places.push_back(i);
    }
    return places;
  }

  void Change(Contour& contour, std::size_t frame, double hz, bool byFactor) {
    if (contour.wrong[frame]) return;
    contour.map.Frames.Own()[frame].Frequency = hz;
    contour.wrong[frame] = true;
    contour.byFactor[frame] = byFactor;
  }

  void Multiply(Contour& contour, const std::vector<std::size_t>& places, std::size_t first, std::size_t count) {
    double factor = 0.0;
    do {  // an analysis has limits of its own
      const double factors[] = {2.0, 0.5, 3.0, 1.0 / 3.0};
      factor = factors[Pick({0, 1, 2, 3})];
    } while (contour.truth[places[first]] * factor < 65.0 || contour.truth[places[first]] * factor > 2000.0);
    for (std::size_t i = first; i < std::min(first + count, places.size()); ++i) {
      const double hz = contour.truth[places[i]] * factor;
      if (hz > FrqNoPitch) Change(contour, places[i], hz, true);
    }
  }

  void Spoil(Contour& contour, Error error) {
    const std::vector<std::size_t> voiced = Places(contour, true), unvoiced = Places(contour, false);
    const auto anywhere = [this](const auto& places) {
      return static_cast<std::size_t>(Even(0.0, static_cast<double>(places.size())));
    };
    const int times = 1 + Pick({0, 1, 2});
    switch (error) {
      case Error::None: break;
      case Error::Run:
        for (int i = 0; i < times; ++i)
          Multiply(contour, voiced, anywhere(voiced), static_cast<std::size_t>(Even(1.0, 21.0)));
        break;
      case Error::Half: Multiply(contour, voiced, Maybe(0.5) ? 0 : voiced.size() / 2, voiced.size() / 2); break;
      case Error::Whole: Multiply(contour, voiced, 0, voiced.size()); break;
      case Error::Noise:
        for (int i = 0; i < times; ++i) Scatter(contour, unvoiced, anywhere(unvoiced));
        break;
      case Error::Gap:
        for (int i = 0; i < times; ++i) Drop(contour, voiced, anywhere(voiced));
        break;
    }
  }

  // Pitch in silence or hiss: either every frame at random, or wandering as a smoothed analysis has it.
  void Scatter(Contour& contour, const std::vector<std::size_t>& places, std::size_t first) {
    const auto count = static_cast<std::size_t>(Even(1.0, 13.0));
    const bool wanders = Maybe(0.5);
    double note = Even(HzToNote(60.0), HzToNote(900.0));
    for (std::size_t i = first; i < std::min(first + count, places.size()) && places[i] - places[first] == i - first;
         ++i) {
      Change(contour, places[i], NoteToHz(note), false);
      note = wanders ? std::max(note + Even(-1.0, 1.0), 35.0) : Even(HzToNote(60.0), HzToNote(900.0));
    }
  }

  void Drop(Contour& contour, const std::vector<std::size_t>& places, std::size_t first) {
    const auto count = static_cast<std::size_t>(Even(1.0, 5.0));
    // The frames are within a tone: at its ends a frame without pitch is nothing to notice.
    if (first < 3 || first + count + 3 > places.size()) return;
    if (places[first + count + 2] - places[first - 3] != count + 5) return;
    for (std::size_t i = first; i < first + count; ++i) Change(contour, places[i], FrqNoPitch, false);
  }

  std::mt19937 chance_;
  int hop_;
  std::vector<double> hz_, levels_;
};

}  // namespace contours
