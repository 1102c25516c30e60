// Names of maps and waves in code page 932.
#include "frqmap/frqtype.h"

#include <gtest/gtest.h>

namespace {

TEST(FrqType, JapaneseNamesAreNotCutInsideACharacter) {
  const std::tuple<std::string, std::string, FrqType> tests[] = {
      {"\x83\x5F.frq", "\x83\x5F.frq", FrqTypeFrq},                          // ダ, whose second byte is "_"
      {"\x83\x5F_wav.frq", "\x83\x5F.wav", FrqTypeFrq},                      // ダ
      {"ka_\x83\x5F\x83\x5F.frc", "ka.wav", FrqTypeFrc},                     // ka_ダダ
      {"\x95\x5C\\\x83\x5C_wav.pmk", "\x95\x5C\\\x83\x5C.wav", FrqTypePmk},  // 表\ソ, whose second bytes are "\"
      {"\x83\x5C.dio", "\x83\x5C.wav", FrqTypeDio},                          // ソ
      {"\xB1_wav.frq", "\xB1.wav", FrqTypeFrq},                              // half-width ア, a single byte
  };
  for (const auto& [map, wave, kind] : tests) {
    EXPECT_EQ(WavePathFromMapA(map), wave);
    EXPECT_EQ(FrqTypeFromPathA(map), kind);
  }
}

}  // namespace
