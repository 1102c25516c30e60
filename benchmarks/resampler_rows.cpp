// The bundled resampler: the errors of its pitch analysis on voices whose pitch is known, its time for a map, as a
// process, and the pencil's wait for what the analysis offers to it.
#include <windows.h>

#include <array>
#include <filesystem>

#include "base/files.h"
#include "base/handle.h"
#include "knownvoices.h"
#include "measuring.h"
#include "pitch/pitchanalysis.h"
#include "pitch/soundpitches.h"
#include "rows.h"
#include "scratchfolder.h"
#include "voicebank/sound.h"

namespace {

using Percent = double (voices::Errors::*)() const;

// The aims are percents themselves.
template <Percent kind, int aimPercent>
class PitchErrors : public Work {
 public:
  double Measured() override {
    voices::Errors errors;
    for (const auto& [voice, samples] : sounds_) {
      const auto known = [&voice = voice](double t) { return voices::PitchAt(voice, t); };
      voices::Count(AnalysePitch(samples, voice.sampleRate, voices::kHop), known, voice.sampleRate, errors);
    }
    return (errors.*kind)();
  }
  double Yardstick() override { return aimPercent; }

 private:
  std::vector<std::pair<voices::KnownVoice, std::vector<float>>> sounds_ = [] {
    std::vector<std::pair<voices::KnownVoice, std::vector<float>>> sounds;
    for (const voices::KnownVoice& voice : voices::All()) sounds.emplace_back(voice, voices::Sound(voice));
    return sounds;
  }();
};

std::wstring ResamplerPath() {
  std::array<wchar_t, MAX_PATH> path{};
  GetModuleFileNameW(nullptr, path.data(), MAX_PATH);
  return std::filesystem::path(path.data()).parent_path() / L"basic-resampler.exe";
}

void RunResampler(const std::wstring& arguments) {
  const std::wstring program = ResamplerPath();
  std::wstring line = L"\"" + program + L"\" " + arguments;
  STARTUPINFOW start = {};
  start.cb = sizeof start;
  PROCESS_INFORMATION process = {};
  Require(CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr, nullptr,
                         &start, &process),
          "basic-resampler.exe is not there");
  const UniqueHandle<KernelTraits> thread(process.hThread), handle(process.hProcess);
  DWORD code = 1;
  WaitForSingleObject(handle.get(), INFINITE);
  GetExitCodeProcess(handle.get(), &code);
  Require(code == 0, "basic-resampler.exe failed");
}

constexpr double kMinute = 60.0;  // [s]

// A minute of voices one after the other, some of them silent or noise.
class MapOfAMinute : public Work {
 public:
  MapOfAMinute() {
    const std::vector<voices::KnownVoice> known = voices::All();
    std::vector<float> samples;
    for (std::size_t i = 0; samples.size() < static_cast<std::size_t>(kMinute * 44100.0); ++i) {
      const std::vector<float> voice = voices::Sound(known[i % known.size()]);
      samples.insert(samples.end(), voice.begin(), voice.end());
    }
    samples.resize(static_cast<std::size_t>(kMinute * 44100.0));
    Require(WriteWholeFile(wave_, EncodeWaveFile(To16Bits(samples), 44100)), "a wave cannot be written");
  }
  double Measured() override {
    DeleteFileW(folder_.PathOf(L"minute_wav.frq").c_str());
    return MillisecondsOf([&] { RunResampler(L"\"" + wave_ + L"\" nul 100 100 GN 0 50"); }) / 1000.0;
  }
  double Yardstick() override { return kMinute; }

 protected:
  const std::wstring& Wave() const { return wave_; }

 private:
  ScratchFolder folder_;
  std::wstring wave_ = folder_.PathOf(L"minute.wav");
};

// The whole minute rendered, with the map that is there.
class NoteOfAMinute : public MapOfAMinute {
 public:
  NoteOfAMinute() { MapOfAMinute::Measured(); }
  double Measured() override {
    return MillisecondsOf([&] {
             RunResampler(L"\"" + Wave() + L"\" \"" + Wave() + L".out.wav\" A4 100 \"\" 0 60000 0 0 100 0 !120 AA#1#");
           }) /
           1000.0;
  }
};

// All candidates of two seconds, from the samples on, against a frame of the screen and a little.
class CandidatesOfTwoSeconds : public Work {
 public:
  CandidatesOfTwoSeconds() {
    const std::vector<voices::KnownVoice> known = voices::All();
    for (const std::size_t i : {9, 20}) {
      const std::vector<float> voice = voices::Sound(known[i]);
      samples_.insert(samples_.end(), voice.begin(), voice.end());
    }
  }
  double Measured() override {
    Sound sound{samples_, 44100};
    return MillisecondsOf([&] {
      SoundPitches pitches(std::move(sound), voices::kHop);
      Require(pitches.Prepare(0, 2 * 44100 / voices::kHop), "nothing was sought");
    });
  }
  double Yardstick() override { return 20.0; }

 private:
  std::vector<float> samples_;
};

}  // namespace

std::vector<Row> ResamplerRows() {
  return {
      RowOf<PitchErrors<&voices::Errors::GrossPercent, 1>>("pitch_gross", "%", 1.0),
      RowOf<PitchErrors<&voices::Errors::VoicingPercent, 5>>("pitch_voicing", "%", 1.0),
      RowOf<MapOfAMinute>("resampler_map", "s", 0.05),
      RowOf<CandidatesOfTwoSeconds>("candidates_2s", "ms", 1.0),
      RowOf<NoteOfAMinute>("resampler_note", "s", 0.05),
  };
}
