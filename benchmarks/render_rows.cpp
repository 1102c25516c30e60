// How well the bundled resampler renders, natively: the pitch of bent notes, how sound begins and ends, its joints, the
// speed of consonants, and noise that is stretched. Each against what is allowed, and against the overlap-add of Praat
// on the same voices where that is installed.
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <random>
#include <string>

#include "base/note.h"
#include "companions/resampler/render.h"
#include "companions/samplebank/voice.h"
#include "figure.h"
#include "hearing.h"
#include "knownvoices.h"
#include "rows.h"

namespace {

constexpr double kStretch = 1.5;
constexpr double kNoiseStretch = 4.0;

// A voice with its true pitch, and a part in the middle of it.
struct Voice {
  Sound sound;
  FrqMap map;
  double from, to;  // [s]
  double hz;        // the voice's, about
};

// A note and the pitch that it is to have at each moment [s].
struct Order {
  const Voice* voice;
  NoteToRender note;
  std::function<double(double)> hz;
  double stretch;
};

FrqMap MapOf(const std::function<double(double)>& hz, double seconds) {
  FrqMap map;
  map.Create(0, FrqTypeFrq);
  const auto frames = static_cast<SampleCount>(std::ceil(seconds * FrqSampleRate / map.Hop));
  map.Create(frames, FrqTypeFrq);
  for (SampleCount i = 0; i < frames; ++i) {
    const double known = hz(static_cast<double>(map.PositionOf(i)) / FrqSampleRate);
    FrqFrame& frame = map.Frames.Own()[static_cast<std::size_t>(i)];
    frame.Voiced = known > FrqNoPitch;
    frame.Frequency = frame.Voiced ? known : FrqNoPitch;
  }
  map.Average = map.ComputeAverage(2);
  return map;
}

// A syllable as the sample bank has them; its part is all of the vowel that is held.
Voice Singer(const Syllable& syllable) {
  constexpr double kPeak = 20000.0;
  Noise noise(1);
  const SungSyllable sung = Sing(syllable, noise);
  double peak = 0.0;
  for (const double x : sung.samples) peak = std::max(peak, std::abs(x));
  Sound sound;
  for (const double x : sung.samples) sound.samples.push_back(static_cast<float>(x * kPeak / peak));
  const auto pitch = [&](double t) {
    const auto at = static_cast<std::size_t>(t * FrqSampleRate);
    return at < sung.pitch.size() ? sung.pitch[at] : 0.0;
  };
  const double from = static_cast<double>(sung.vowelStart) / FrqSampleRate + 0.06;
  return {sound, MapOf(pitch, syllable.seconds), from, static_cast<double>(sung.end) / FrqSampleRate - 0.12,
          NoteToHz(syllable.note)};
}

const std::vector<Voice>& Voices() {
  static const std::vector<Voice> all = [] {
    std::vector<Voice> voices;
    const Syllable syllables[] = {{Consonant::None, Vowel::A, Ornament::Vibrato, 60.0, 1.8},
                                  {Consonant::None, Vowel::I, Ornament::Plain, 62.0, 1.2},
                                  {Consonant::None, Vowel::U, Ornament::Fall, 64.0, 1.0},
                                  {Consonant::None, Vowel::E, Ornament::Vibrato, 65.0, 1.6},
                                  {Consonant::Burst, Vowel::O, Ornament::Plain, 57.0, 1.4},
                                  {Consonant::Nasal, Vowel::A, Ornament::Fall, 69.0, 1.3}};
    for (const Syllable& syllable : syllables) voices.push_back(Singer(syllable));
    for (const voices::KnownVoice& known : voices::All()) {
      // Only held voices count, at the rate that maps count in: the others have no part that is sung throughout.
      const double hz = known.hz(0.5);
      if (hz < 100.0 || known.level(0.12) < 1.0 || known.sampleRate != FrqSampleRate) continue;
      voices.push_back({{voices::Sound(known), known.sampleRate},
                        MapOf([&](double t) { return voices::PitchAt(known, t); }, voices::kSeconds),
                        0.2,
                        0.8,
                        hz});
    }
    return voices;
  }();
  return all;
}

// Slides up to its note by two semitones, and then a vibrato of 60 cents.
double BendAt(double seconds) {
  const double risen = std::clamp(seconds / 0.2, 0.0, 1.0);
  return -100.0 * (1.0 + std::cos(std::numbers::pi * risen)) + 60.0 * std::sin(2.0 * std::numbers::pi * 5.5 * seconds);
}

NoteToRender PartOf(const Voice& voice, double stretch) {
  NoteToRender note;
  note.offsetMs = 1000.0 * voice.from;
  note.cutoffMs = -1000.0 * (voice.to - voice.from);
  note.lengthMs = 1000.0 * stretch * (voice.to - voice.from);
  return note;
}

// Each voice bent, three semitones under its own pitch, at it, and four over it.
const std::vector<Order>& BentNotes() {
  static const std::vector<Order> all = [] {
    std::vector<Order> orders;
    for (const Voice& voice : Voices()) {
      for (const double semitones : {-3.0, 0.0, 4.0}) {
        NoteToRender note = PartOf(voice, kStretch);
        note.hz = voice.hz * std::exp2(semitones / 12.0);
        note.pitchBend.clear();
        for (int i = 0; i < 600; ++i) note.pitchBend.push_back(std::round(BendAt(i / 192.0)));
        const auto hz = [base = note.hz](double t) { return base * std::exp2(BendAt(t) / 1200.0); };
        orders.push_back({&voice, note, hz, kStretch});
      }
    }
    return orders;
  }();
  return all;
}

const Order& StretchedNoise() {
  static const Voice noise = [] {
    std::mt19937 chance(1);
    Voice voice{{}, MapOf([](double) { return 0.0; }, 1.0), 0.2, 0.7, 0.0};
    for (int i = 0; i < FrqSampleRate; ++i) {
      voice.sound.samples.push_back(static_cast<float>(5000.0 * (static_cast<double>(chance()) / 2147483648.0 - 1.0)));
    }
    return voice;
  }();
  static const Order order{&noise, PartOf(noise, kNoiseStretch), nullptr, kNoiseStretch};
  return order;
}

std::vector<float> Ours(const Order& order) {
  return RenderNote(order.voice->sound, order.voice->map, order.note);
}

class Scratch {
 public:
  Scratch() { std::filesystem::create_directory(path_); }
  ~Scratch() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  std::string PathOf(const char* name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_ = std::filesystem::temp_directory_path() / ("marlit_render_" + std::to_string(getpid()));
};

// Praat's rendering; nothing where it fails.
std::vector<float> Praats(const Order& order) {
  constexpr std::size_t kHeaderBytes = 44;
  const Scratch folder;
  const Sound& whole = order.voice->sound;
  const auto first = std::lround(order.voice->from * whole.rate), last = std::lround(order.voice->to * whole.rate);
  const std::vector<float> part(whole.samples.begin() + first, whole.samples.begin() + last);
  const Bytes bytes = EncodeWaveFile(To16Bits(part), whole.rate);
  std::ofstream(folder.PathOf("a.wav"), std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes.data()), std::ssize(bytes));
  std::ofstream pitch(folder.PathOf("pitch"));
  for (double t = 0.0; order.hz && t < order.note.lengthMs / 1000.0; t += 0.002) {
    pitch << t << " " << order.hz(t) << "\n";
  }
  pitch.close();
  const std::string command = "praat --run benchmarks/overlapadd.praat " + folder.PathOf("a.wav") + " " +
                              folder.PathOf("pitch") + " " + folder.PathOf("b.wav") + " " +
                              std::to_string(order.stretch) + " >" + folder.PathOf("log") + " 2>&1";
  if (std::system(command.c_str()) != 0) return {};
  std::ifstream result(folder.PathOf("b.wav"), std::ios::binary);
  const std::string content{std::istreambuf_iterator<char>(result), {}};
  std::vector<float> samples;
  for (std::size_t at = kHeaderBytes; at + 2 <= content.size(); at += 2) {
    std::int16_t value;
    std::memcpy(&value, &content[at], sizeof(value));
    samples.push_back(value);
  }
  return samples;
}

// Whole syllables with all that is between silence and vowel in them, and twice as slow a consonant.
const std::vector<Order>& WholeSyllables() {
  static const std::vector<Order> all = [] {
    static std::vector<Voice> voices;
    for (const Consonant consonant : {Consonant::Burst, Consonant::Hiss, Consonant::Nasal, Consonant::Tap}) {
      voices.push_back(Singer({consonant, Vowel::A, Ornament::Plain, 60.0, 1.2}));
      voices.back().from = 0.0, voices.back().to = 1.2;
    }
    std::vector<Order> orders;
    for (const Voice& voice : voices) {
      NoteToRender note = PartOf(voice, kStretch);
      note.hz = voice.hz, note.consonantMs = 300.0, note.velocity = 0.0;
      orders.push_back({&voice, note, [hz = voice.hz](double) { return hz; }, kStretch});
    }
    return orders;
  }();
  return all;
}

using Renderer = std::vector<float> (*)(const Order&);

const std::vector<std::vector<float>>& BentBy(Renderer renderer) {
  static std::map<Renderer, std::vector<std::vector<float>>> all;
  std::vector<std::vector<float>>& notes = all[renderer];
  if (notes.empty()) std::ranges::transform(BentNotes(), std::back_inserter(notes), renderer);
  return notes;
}

double BendError(Renderer renderer) {
  std::vector<double> off;
  for (std::size_t i = 0; i < BentNotes().size(); ++i) {
    for (const double cents : hearing::CentsOff(BentBy(renderer)[i], kRenderedRate, BentNotes()[i].hz)) {
      off.push_back(std::abs(cents));
    }
  }
  return hearing::MedianOf(off);
}

double WorstEdge(Renderer renderer) {
  double worst = 0.0;
  for (const auto& sound : BentBy(renderer)) worst = std::max(worst, 100.0 * hearing::EdgeOf(sound));
  return worst;
}

double WorstStep(Renderer renderer) {
  double worst = 0.0;
  for (const auto& sound : BentBy(renderer)) worst = std::max(worst, hearing::LoneliestStep(sound, kRenderedRate));
  for (const Order& order : WholeSyllables()) {
    worst = std::max(worst, hearing::LoneliestStep(renderer(order), kRenderedRate));
  }
  return worst;
}

double Buzz(Renderer renderer) {
  return hearing::BuzzOf(renderer(StretchedNoise()), kRenderedRate);
}

// The largest distance [ms] of voices that begin in the consonant from where its speed puts their begin.
double ConsonantError(Renderer renderer) {
  constexpr double kBegin = 0.1;
  double worst = 0.0;
  for (const voices::KnownVoice& known : voices::All()) {
    if (known.noise > 0.0 || !(voices::PitchAt(known, 0.5) > 0.0) || known.sampleRate != FrqSampleRate) continue;
    if (known.level(kBegin - 0.01) > 0.0 || known.level(kBegin + 0.01) < 1.0) continue;
    const Voice voice = {{voices::Sound(known), known.sampleRate},
                         MapOf([&](double t) { return voices::PitchAt(known, t); }, voices::kSeconds),
                         0.0,
                         voices::kSeconds,
                         known.hz(0.5)};
    for (const double velocity : {0.0, 50.0, 100.0, 150.0, 200.0}) {
      NoteToRender note = PartOf(voice, kNoiseStretch);
      note.hz = voice.hz, note.consonantMs = 300.0, note.velocity = velocity;
      const std::vector<float> sound = renderer({&voice, note, nullptr, kNoiseStretch});
      const float audible = 0.1f * std::abs(*std::ranges::max_element(sound, {}, [](float x) { return std::abs(x); }));
      const auto begin = std::ranges::find_if(sound, [&](float x) { return std::abs(x) > audible; }) - sound.begin();
      const double asked = kBegin * std::exp2(1.0 - velocity / 100.0);
      worst = std::max(worst, 1000.0 * std::abs(static_cast<double>(begin) / kRenderedRate - asked));
    }
  }
  return worst;
}

}  // namespace

std::vector<Row> RenderRows() {
  std::vector<Row> rows = {
      FigureRow("render_bend", "cents", 3.0, [] { return BendError(Ours); }),
      FigureRow("render_edge", "%", 1.0, [] { return WorstEdge(Ours); }),
      FigureRow("render_step", "", 1.5, [] { return WorstStep(Ours); }),
      FigureRow("render_buzz", "", 0.1, [] { return Buzz(Ours); }),
      FigureRow("render_delay", "ms", 2.0, [] { return ConsonantError(Ours); }),
  };
  if (std::system("praat --version >/dev/null 2>&1") != 0) {
    std::fputs("bench: without praat, which has a package of that name, render has no peer\n", stderr);
    return rows;
  }
  // At its ends Praat is silent, and consonants at a speed of their own are not its business.
  const std::pair<const char*, double (*)(Renderer)> peers[] = {
      {"render_bend_peer", BendError}, {"render_step_peer", WorstStep}, {"render_buzz_peer", Buzz}};
  for (const auto& [name, measure] : peers) {
    rows.push_back(
        {name, "", 1.0, [measure = measure] { return std::make_unique<Figure>(measure(Ours), measure(Praats)); }});
  }
  return rows;
}
