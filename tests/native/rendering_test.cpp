// The bundled resampler's calls and notes: a wrong one is heard, or is not there to be heard. How well it finds the
// pitch of voices, ./bench measures.
#include "companions/resampler/render.h"

#include <algorithm>
#include <random>

#include "benchmarks/hearing.h"
#include "native/family.h"
#include "native/tone.h"
#include "pitch/pitchanalysis.h"

namespace {

TEST(PitchBend, IsDecodedAsHostsWriteIt) {
  const std::pair<const wchar_t*, std::vector<double>> cases[] = {{L"AA#1#", {0, 0}},
                                                                  {L"ABAC#2#AD", {1, 2, 2, 2, 3}},
                                                                  {L"//f/gA", {-1, 2047, -2048}},
                                                                  {L"AZBaB+", {25, 90, 126}},
                                                                  {L"", {}},
                                                                  {L"AB!!AC", {1}},
                                                                  {L"#3#AA", {}},
                                                                  {L"AC##AD#0#", {2, 3}}};
  for (const auto& [text, cents] : cases) EXPECT_EQ(DecodePitchBend(text), cents) << text;
  EXPECT_EQ(DecodePitchBend(L"AA#4000000000#AA#4000000000#").size(), 1'000'000u);
}

std::vector<std::wstring> Words(const std::wstring& line) {
  std::vector<std::wstring> words(1);
  for (const wchar_t c : line) c == L' ' ? words.emplace_back() : words.back() += c;
  for (std::wstring& word : words) word = word == L"_" ? L"" : word;
  return words;
}

TEST(ResamplerCalls, AreTakenAsHostsGiveThem) {
  const auto whole = ParseCall(Words(L"a.wav b.wav C#4 80 gB5 -10 1e+03 60 -300 90 50 !150.5 ABAC"));
  ASSERT_TRUE(whole && whole->note);
  EXPECT_EQ(whole->input + whole->output, L"a.wavb.wav");
  const NoteToRender& note = *whole->note;
  EXPECT_NEAR(note.hz, 277.183, 0.001);
  EXPECT_EQ((std::vector{note.velocity, note.offsetMs, note.lengthMs, note.consonantMs, note.cutoffMs, note.volume,
                         note.modulation, note.tempo}),
            (std::vector{80.0, -10.0, 1000.0, 60.0, -300.0, 90.0, 50.0, 150.5}));
  EXPECT_EQ(note.pitchBend, (std::vector{1.0, 2.0}));

  EXPECT_TRUE(ParseCall(Words(L"a.wav b.wav A4 100 _ 0 500"))) << "the rest may be left out";

  for (const wchar_t* const line : {L"a.wav nul 100 100 GN 0 50", L"a.wav NUL", L"a.wav C:\\x\\nul ? ?"}) {
    const auto call = ParseCall(Words(line));
    ASSERT_TRUE(call) << line;
    EXPECT_TRUE(call->output.empty() && !call->note) << line;
  }
}

TEST(ResamplerCalls, WithoutSenseAreRefused) {
  const wchar_t* const cases[] = {
      L"a.wav _",
      L"_ nul",
      L"a.wav b.wav A4 100 _ 0",                     // no length
      L"a.wav b.wav 100 _ 0 900 0 0 100 0 !120 AA",  // a host's blank note: all has moved by one
      L"a.wav b.wav A999 100 _ 0 50",
      L"a.wav b.wav A4 100 _ 0 1e9",  // would not fit into memory
      L"a.wav b.wav A4 100 _ nan 50",
      L"a.wav b.wav A4 100 _ 0 50ms",
      L"a.wav b.wav A4 100 _ 0 50 0 0 100 0 !0 AA",  // no beats
  };
  for (const wchar_t* const line : cases) EXPECT_FALSE(ParseCall(Words(line))) << line;
}

WaveFormat FormatOf(std::uint16_t tag, std::uint16_t channels, std::uint16_t bits, std::uint32_t rate = 44100) {
  return {.formatTag = tag, .channels = channels, .samplesPerSec = rate, .bitsPerSample = bits};
}

TEST(Recordings, OfAllUsualFormsAreReadAsTheirFirstChannel) {
  const std::tuple<WaveFormat, Bytes, std::vector<float>> cases[] = {
      {FormatOf(1, 1, 16), {0x00, 0x80, 0x02, 0x00, 0xFF}, {-32768, 2}},
      {FormatOf(1, 2, 16), {0x01, 0x00, 0x09, 0x09, 0xFF, 0xFF, 0x09, 0x09}, {1, -1}},
      {FormatOf(1, 1, 8), {0, 128, 255}, {-32768, 0, 32512}},
      {FormatOf(1, 1, 24), {0x80, 0x02, 0x00, 0x00, 0xFF, 0xFF}, {2.5, -1}},
      {FormatOf(0xFFFE, 1, 32), {0x00, 0x80, 0x02, 0x00}, {2.5}},
      {FormatOf(3, 1, 32), {0x00, 0x00, 0x00, 0xBF, 0x00, 0x00, 0xC0, 0x7F}, {-16384, 0}},  // -0.5 and no number
  };
  for (const auto& [format, bytes, samples] : cases) {
    EXPECT_EQ(SoundOfWave(format, bytes).value_or(Sound()).samples, samples) << format.bitsPerSample;
  }
  EXPECT_EQ(To16Bits(std::vector<float>{0.4f, -40000.0f, 40000.0f}), (std::vector<std::int16_t>{0, -32768, 32767}));
  for (const WaveFormat& format : {FormatOf(1, 0, 16), FormatOf(1, 1, 12), FormatOf(1, 1, 16, 0), FormatOf(3, 1, 64)}) {
    EXPECT_FALSE(SoundOfWave(format, Bytes(16, 1))) << format.channels << " " << format.bitsPerSample;
  }
}

// Voiced from a tenth of a second to the end but one, with a vibrato.
Sound Recording(int rate = 44100) {
  const auto hz = [](double t) { return 220.0 * std::exp2(std::sin(2.0 * std::numbers::pi * 5.0 * t) / 24.0); };
  return {SecondOfTone(hz, 0.1, 0.9, rate), rate};
}

TEST(RenderedNotes, HaveTheirLengthPitchAndVolume) {
  // The note, its pitch bend, and the cents above it that a second of it takes.
  const std::tuple<int, double, double, int, double> cases[] = {
      {44100, 130.0, 700.5, 0, 0.0},
      {22050, 330.0, 3000.0, 0, 0.0},
      {44100, 220.0, 1000.0, 2, 384.0},  // at 120 beats a minute 192 values of it a second
  };
  for (const auto& [rate, hz, lengthMs, bend, rise] : cases) {
    SCOPED_TRACE(testing::Message() << hz << " Hz, " << lengthMs << " ms from " << rate);
    const Sound recording = Recording(rate);
    NoteToRender note;
    note.hz = hz, note.lengthMs = lengthMs, note.modulation = 0.0, note.volume = 50.0;
    note.pitchBend.clear();
    for (int i = 0; i < 200; ++i) note.pitchBend.push_back(bend * i);
    const std::vector<float> rendered = RenderNote(recording, MakeMap(recording), note);
    EXPECT_EQ(std::ssize(rendered), std::lround(lengthMs * 44.1));
    EXPECT_NEAR(LevelOf(rendered) / LevelOf(recording.samples), 0.5, 0.17);
    const double t = lengthMs / 2000.0;
    const double middle = AnalysePitch(rendered, kRenderedRate, 256).at(static_cast<std::size_t>(t * 44100.0 / 256.0));
    EXPECT_NEAR(1200.0 * std::log2(middle / hz), rise * t, 20.0);
  }
}

// Silence of the recording stays so, which tells where each moment of it came to lie.
TEST(RenderedNotes, TakeTheirPartOfTheRecording) {
  // Offset, consonant, velocity, cutoff; where the voice begins and ends in a note of 1.2 s [s].
  const std::tuple<double, double, double, double, double, double> cases[] = {
      {0, 0, 100, 0, 0.12, 1.08},          // a second stretched
      {200, 0, 100, -400, 0.0, 1.2},       // from 0.2 to 0.6
      {0, 500, 100, 0, 0.1, 1.06},         // half a second kept, the other stretched by 1.4
      {0, 500, 0, 0, 0.2, 1.2},            // the consonant twice as long; the vowel is cut
      {0, 500, 200, 0, 0.05, 1.01},        // half as long, and more of the vowel
      {300, 0, 100, 900, 1.2, 0.0},        // nothing left
      {-500, 5000, 100, -5000, 0.1, 0.9},  // more than there is: no vowel to stretch
  };
  const Sound recording = Recording();
  for (const auto& [offset, consonant, velocity, cutoff, start, end] : cases) {
    NoteToRender note;
    note.hz = 220.0, note.lengthMs = 1200.0;
    note.offsetMs = offset, note.consonantMs = consonant, note.velocity = velocity, note.cutoffMs = cutoff;
    const std::vector<float> rendered = RenderNote(recording, MakeMap(recording), note);
    const auto isVoice = [](float x) { return std::abs(x) > 1000.0f; };
    const auto first = std::find_if(rendered.begin(), rendered.end(), isVoice);
    const auto last = std::find_if(rendered.rbegin(), rendered.rend(), isVoice).base();
    const double within = consonant > 0 ? 0.003 : 0.03;
    EXPECT_NEAR(static_cast<double>(first - rendered.begin()) / kRenderedRate, start, within) << offset << consonant;
    EXPECT_NEAR(static_cast<double>(last - rendered.begin()) / kRenderedRate, end, 0.03) << offset << consonant;
  }
}

// The map that is right for a pitch, and a voice of it throughout: what is cut out of a longer recording.
std::pair<Sound, FrqMap> Sung(const std::function<double(double)>& hz, double keyHz) {
  std::vector<double> curve;
  for (int i = 0; i <= FrqSampleRate / 256; ++i) curve.push_back(hz(256.0 * i / FrqSampleRate));
  FrqMap map = MapOf(curve);
  map.Average = keyHz;
  return {Sound{SecondOfTone(hz, -1.0, 2.0), FrqSampleRate}, map};
}

TEST(RenderedNotes, FollowTheirPitchToTheCent) {
  const auto vibrato = [](double t) { return std::exp2(std::sin(2.0 * std::numbers::pi * 6.0 * t) / 24.0); };
  for (const double hz : {110.0, 440.0}) {
    // A steady voice that is bent, and a bent one whose own pitch is kept.
    for (const bool isSung : {false, true}) {
      const auto [sound, map] = Sung([&](double t) { return isSung ? hz * vibrato(t) : hz; }, hz);
      NoteToRender note;
      note.hz = hz, note.lengthMs = 1000.0, note.modulation = isSung ? 100.0 : 0.0;
      for (int i = 0; !isSung && i < 200; ++i) note.pitchBend.push_back(1200.0 * std::log2(vibrato((i + 1) / 192.0)));
      std::vector<double> off =
          hearing::CentsOff(RenderNote(sound, map, note), kRenderedRate, [&](double t) { return hz * vibrato(t); });
      for (double& cents : off) cents = std::abs(cents);
      EXPECT_LT(hearing::MedianOf(off), 1.5) << hz << isSung;
    }
  }
}

TEST(RenderedNotes, BeginAndEndWithoutAClick) {
  const auto [sound, map] = Sung([](double) { return 160.0; }, 160.0);
  // Offset, consonant, cutoff, length: within the voice, from the first sample to the last, hardly longer than its
  // ramps, and a part that is used up before the note ends.
  const std::tuple<double, double, double, double> cases[] = {
      {200, 0, 200, 900}, {0, 0, 0, 1500}, {303, 0, -100, 20}, {100, 400, 500, 600}};
  for (const auto& [offset, consonant, cutoff, length] : cases) {
    for (const double hz : {120.0, 160.0, 300.0}) {
      NoteToRender note;
      note.hz = hz, note.lengthMs = length;
      note.offsetMs = offset, note.consonantMs = consonant, note.cutoffMs = cutoff;
      const std::vector<float> rendered = RenderNote(sound, map, note);
      EXPECT_LT(hearing::EdgeOf(rendered), 0.01) << offset << " " << hz;
      EXPECT_LT(hearing::LoneliestStep(rendered, kRenderedRate), 1.5) << offset << " " << hz;
    }
  }
}

TEST(RenderedNotes, LeaveStretchedNoiseNoise) {
  std::mt19937 chance(1);
  Sound noise{std::vector<float>(FrqSampleRate / 4), FrqSampleRate};
  for (float& x : noise.samples) x = static_cast<float>(chance() % 10001) - 5000.0f;
  FrqMap map;
  map.Create(FrqSampleRate / 1024, FrqTypeFrq);
  NoteToRender note;
  note.lengthMs = 1000.0;
  const std::vector<float> rendered = RenderNote(noise, map, note);
  EXPECT_LT(hearing::BuzzOf(rendered, kRenderedRate), 0.1);
  EXPECT_NEAR(LevelOf(rendered) / LevelOf(noise.samples), 1.0, 0.1);
  EXPECT_EQ(rendered, RenderNote(noise, map, note)) << "hosts keep what they have rendered";
}

TEST(PitchAnalysis, GivesAFrameForEachBegunHopOfAnything) {
  const std::tuple<std::size_t, double, std::size_t> cases[] = {
      {0, 44100, 0}, {256, 44100, 1}, {257, 8000, 2}, {900, 1e6, 4}};
  for (const auto& [samples, rate, frames] : cases) {
    // A constant repeats itself at every lag.
    const std::vector<double> found = AnalysePitch(std::vector<float>(samples, 9000.0f), rate, 256);
    EXPECT_EQ(found, std::vector<double>(frames, FrqNoPitch)) << samples;
  }
}

// A tone at 220 Hz repeats itself in twice its period as well, and in no other time.
TEST(PitchAnalysis, TellsWhatElseAFrameMayBe) {
  const Sound tone = Recording();
  const PitchSearch search(tone.samples, tone.rate);
  const auto pathIn = [&](const PitchConstraint& constraint) {
    return BestPitchPath(search.Candidates(256, 80, 5, constraint), 256.0 / tone.rate).at(2);
  };
  const std::vector<double> octaveBelow(5, 108.0), besideIt(5, 100.0), none(5, FrqNoPitch);
  EXPECT_NEAR(pathIn({}), 220.0, 6.0);
  EXPECT_NEAR(pathIn({.highestHz = 150.0}), 110.0, 3.0);
  EXPECT_NEAR(pathIn({.line = octaveBelow, .cents = 100.0}), 110.0, 3.0);
  EXPECT_EQ(pathIn({.line = besideIt, .cents = 50.0}), FrqNoPitch);
  EXPECT_EQ(pathIn({.line = none, .cents = 50.0}), FrqNoPitch);

  const PitchFrame frame = search.Candidates(256, 82, 1).at(0);
  ASSERT_GE(frame.pitches.size(), 2u);
  EXPECT_NEAR(std::exp2(frame.pitches[0].logHz), 220.0, 6.0);
  EXPECT_GT(frame.pitches[0].strength, frame.pitches[1].strength);
  EXPECT_GT(frame.pitches[1].strength, frame.voiceless);
  EXPECT_GT(search.SupportAt(82 * 256, 110.0, 50.0), 0.95);
  EXPECT_LT(search.SupportAt(82 * 256, 290.0, 50.0), 0.5);
  Sound hushed = tone;
  for (std::size_t i = 0; i < 60 * 256; ++i) hushed.samples[i] /= 1000.0f;
  EXPECT_TRUE(PitchSearch(hushed.samples, tone.rate).Candidates(256, 45, 1).at(0).pitches.empty()) << "no voice";
}

TEST(RenderedNotes, ComeOutOfAnyMap) {
  const Sound recording = Recording();
  const double none = std::numeric_limits<double>::quiet_NaN(), endless = std::numeric_limits<double>::infinity();
  for (const double hz : {none, endless, -100.0, 1e-300, 1e300, 56.0}) {
    for (const SampleCount hop : {1, 256, 1 << 30}) {
      FrqMap map = MapOf(std::vector<double>(300, hz), hop);
      map.Average = hz;
      NoteToRender note;
      note.lengthMs = 300.0, note.modulation = 1000.0;
      const std::vector<float> rendered = RenderNote(recording, map, note);
      EXPECT_EQ(rendered.size(), 13230u);
      EXPECT_TRUE(std::ranges::all_of(rendered, [](float x) { return std::isfinite(x); })) << hz;
    }
  }
}

}  // namespace
