// Names of maps and waves, and what the kinds can hold.
#include "frqmap/frqtype.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "base/note.h"
#include "native/vectors.h"

namespace {

using vectors::Json;
using vectors::Wide;

// Whether a name is the same bytes in every encoding, so that the narrow form can be tested with it.
bool IsAscii(const std::string& name) {
  return std::ranges::all_of(name, [](char c) { return c > 0; });
}

TEST(FrqType, MapsAreNamedAfterTheirWaves) {
  for (const Json& test : vectors::Expected("names")["map_path_from_wave"]) {
    const std::string wave = test["wave"];
    for (const std::string name : {"frq", "vs4ufrq", "frc", "pmk", "dio", "mrq"}) {
      const FrqType kind = FrqTypeFromPathA("x." + name);
      EXPECT_EQ(MapPathFromWaveW(Wide(wave), kind), Wide(test[name]));
      EXPECT_TRUE(!IsAscii(wave) || MapPathFromWaveA(wave, kind) == test[name]) << test[name];
    }
  }
  EXPECT_EQ(LlsmPathFromWave(L"a.2.wav"), L"a.2.wav.llsm");
}

TEST(FrqType, WavesAndKindsAreFoundFromMaps) {
  for (const Json& test : vectors::Expected("names")["wave_path_from_map_a"]) {
    const std::string map = test["map"];
    EXPECT_EQ(WavePathFromMapW(Wide(map)), Wide(test["wave"]));
    EXPECT_TRUE(!IsAscii(map) || WavePathFromMapA(map) == test["wave"]) << test;
  }
  for (const Json& test : vectors::Expected("names")["frq_type_from_path_a"]) {
    const std::string path = test["path"];
    EXPECT_EQ(FrqTypeFromPathW(Wide(path)), test["type"]) << test;
    EXPECT_TRUE(!IsAscii(path) || FrqTypeFromPathA(path) == test["type"]) << test;
  }
}

TEST(FrqType, JapaneseNamesAreNotCutInsideACharacter) {
  const struct {
    std::string map, wave;
    FrqType kind;
  } tests[] = {
      {"\x83\x5F.frq", "\x83\x5F.frq", FrqTypeFrq},                          // ダ, whose second byte is "_"
      {"\x83\x5F_wav.frq", "\x83\x5F.wav", FrqTypeFrq},                      // ダ
      {"ka_\x83\x5F\x83\x5F.frc", "ka.wav", FrqTypeFrc},                     // ka_ダダ
      {"\x95\x5C\\\x83\x5C_wav.pmk", "\x95\x5C\\\x83\x5C.wav", FrqTypePmk},  // 表\ソ, whose second bytes are "\"
      {"\x83\x5C.dio", "\x83\x5C.wav", FrqTypeDio},                          // ソ
      {"\xB1_wav.frq", "\xB1.wav", FrqTypeFrq},                              // half-width ア, a single byte
  };
  for (const auto& test : tests) {
    EXPECT_EQ(WavePathFromMapA(test.map), test.wave);
    EXPECT_EQ(FrqTypeFromPathA(test.map), test.kind);
  }
}

TEST(FrqType, EachKindHasItsFrameCountsAndItsHighestFrequency) {
  const Json& names = vectors::Expected("names");
  for (const Json& test : names["frame_count_from_file_size"]) {
    for (std::size_t i = 0; i < test["counts"].size(); ++i) {
      const auto kind = names["frame_count_kinds"][i].get<FrqType>();
      EXPECT_EQ(FrameCountFromFileSize(test["size"], kind), test["counts"][i]) << test["size"] << " of " << kind;
    }
  }
  for (const FrqType kind : {FrqTypeFrq, FrqTypeVs4ufrq, FrqTypeFrc, FrqTypePmk, FrqTypeDio, FrqTypeMrq}) {
    EXPECT_EQ(MaxFrequencyOfKind(kind), names["max_frequency_of_kind"][kind]) << kind;
  }
  EXPECT_DOUBLE_EQ(NoteToHz(119.0), MaxFrequencyOfKind(FrqTypeFrq));
  EXPECT_DOUBLE_EQ(HzToNote(MaxFrequencyOfKind(FrqTypeFrq)), 119.0);
}

}  // namespace
