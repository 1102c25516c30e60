// The files of a voicebank in numbers: its maps converted, its oto.ini parsed, the levels of a wave.
#include <windows.h>

#include <cmath>
#include <cstring>
#include <cwchar>
#include <string>

#include "base/files.h"
#include "base/text.h"
#include "frqmap/convert.h"
#include "frqmap/freq0003.h"
#include "frqmap/levels.h"
#include "frqmap/mapfiles.h"
#include "measuring.h"
#include "rows.h"
#include "scratchfolder.h"
#include "voicebank/otoini.h"

namespace {

constexpr int kMaps = 1000;
constexpr SampleCount kFrames = 350;  // two seconds of voice

Bytes MapBytes() {
  FrqMap map;
  map.Create(kFrames, FrqTypeFrq);
  for (SampleCount i = 0; i < kFrames; ++i) map.SetFrequency(map.PositionOf(i), 220.0 + 5.0 * std::sin(i / 20.0));
  return EncodeFreq0003(map, FrqTypeFrq);
}

// The .frq of every wave converted, against the same bytes read and written. The waves are heads alone: no more is read
// for the kinds without levels.
class ConvertAll : public Work {
 public:
  explicit ConvertAll(FrqType target) : target_(target) {
    const Bytes map = MapBytes();
    for (int i = 0; i < kMaps; ++i) {
      waves_.push_back(folder_.PathOf(std::to_wstring(i) + L".wav"));
      Require(WriteWholeFile(waves_.back(), Bytes(44)), "a wave cannot be written");
      Require(WriteWholeFile(MapPathFromWaveW(waves_.back(), FrqTypeFrq), map), "a map cannot be written");
    }
  }

  double Measured() override {
    return MillisecondsOf([&] {
      for (const auto& wave : waves_) {
        Require(ConvertMap(wave, FrqTypeFrq, target_, nullptr) == 0, "a map cannot be converted");
      }
    });
  }

  double Yardstick() override {
    if (written_.empty()) written_ = ReadWholeFile(MapPathFromWaveW(waves_[0], target_)).value_or(Bytes());
    return MillisecondsOf([&] {
      for (const auto& wave : waves_) {
        const bool held = ReadWholeFile(MapPathFromWaveW(wave, FrqTypeFrq)).has_value() &&
                          WriteWholeFile(MapPathFromWaveW(wave, target_), written_);
        Require(held, "the bytes of a map cannot be copied");
      }
    });
  }

 private:
  FrqType target_;
  ScratchFolder folder_;
  std::vector<std::wstring> waves_;
  Bytes written_;  // one file of the target kind; they are all alike
};

// An oto.ini read and parsed, against its text read and widened at once and its numbers converted.
class ParseOtoIni : public Work {
 public:
  ParseOtoIni() {
    std::string text = "#Charset:UTF8\r\n";
    for (int i = 0; i < kLines; ++i) {
      const std::string number = std::to_string(i);
      text += "_ああいあう" + number + ".wav=a あ" + number + ",1234.5,120,-250.75,80,40\r\n";
    }
    Require(WriteWholeFile(path_, Bytes(text.begin(), text.end())), "an oto.ini cannot be written");
  }

  double Measured() override {
    UtauCommon::OTOINI otoIni;
    return MillisecondsOf([&] { Require(otoIni.Load(path_) == 0, "an oto.ini cannot be read"); });
  }

  double Yardstick() override {
    return MillisecondsOf([&] {
      const auto bytes = ReadWholeFile(path_);
      Require(bytes.has_value(), "an oto.ini cannot be read");
      const auto size = static_cast<int>(bytes->size());
      std::wstring wide(bytes->size(), L'\0');
      Require(
          MultiByteToWideChar(CP_UTF8, 0, reinterpret_cast<const char*>(bytes->data()), size, wide.data(), size) > 0,
          "an oto.ini cannot be widened");
      float sum = 0.0F;
      for (int i = 0; i < kLines * kNumbersPerLine; ++i) sum += std::wcstof(L"1234.5,", nullptr);
      Require(sum > 0.0F, "a number cannot be converted");
    });
  }

 private:
  static constexpr int kLines = 20000;
  static constexpr int kNumbersPerLine = 5;

  ScratchFolder folder_;
  std::wstring path_ = folder_.PathOf(L"oto.ini");
};

// The levels of a minute of voice, against one pass that adds up the squares of the same samples.
class LevelsOfMinute : public Work {
 public:
  LevelsOfMinute() {
    for (std::size_t i = 0; i < kSamples; ++i) {
      const auto sample = static_cast<std::int16_t>(8000.0 * std::sin(static_cast<double>(i) * 0.03));
      std::memcpy(bytes_.data() + 2 * i, &sample, 2);
    }
  }

  double Measured() override {
    return MillisecondsOf([&] { Require(!LevelsOfSamples(bytes_, 1, 256).empty(), "a wave has no levels"); });
  }

  double Yardstick() override {
    return MillisecondsOf([&] {
      double sum = 0.0;
      for (std::size_t i = 0; i < kSamples; ++i) {
        std::int16_t sample = 0;
        std::memcpy(&sample, bytes_.data() + 2 * i, 2);
        sum += static_cast<double>(sample) * sample;
      }
      Require(sum > 0.0, "a wave is silent");
    });
  }

 private:
  static constexpr std::size_t kSamples = 60 * 44100;

  Bytes bytes_ = Bytes(2 * kSamples);
};

Row ConvertRow(const char* name, FrqType target) {
  return {name, "ms", 1.5, [target] { return std::make_unique<ConvertAll>(target); }};
}

}  // namespace

std::vector<Row> VoicebankRows() {
  return {ConvertRow("convert_dio", FrqTypeDio), ConvertRow("convert_pmk", FrqTypePmk),
          RowOf<ParseOtoIni>("parse_oto", "ms", 1.5), RowOf<LevelsOfMinute>("levels", "ms", 1.5, Taken::Least)};
}
