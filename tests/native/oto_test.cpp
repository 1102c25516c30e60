// The lines of an oto.ini by which the host's notes find their waves, also those that a hand has spoilt.
#include <gtest/gtest.h>

#include <sstream>

#include "voicebank/otoini.h"

namespace {

TEST(OtoIni, ALineThatIsNoneIsLeftOutAndANumberThatIsNoneIsZero) {
  std::wistringstream text(
      L"b.wav=a,1,2,3,4,5,6\na.wav=,0x10, -2.5x,1e2y,+.5,12abc\nfour.wav=ka,1,2,3,4\n#Charset:UTF8\n"
      L"inf.wav=inf,inf,nan,1e99,-infinity,x\n=,,,,,\n");
  UtauCommon::OTOINI oto;
  oto.Parse([&](std::wstring& line) { return !!std::getline(text, line); }, L"");
  std::wostringstream found;
  for (const auto& e : oto.entries) {
    found << e.wave << ',' << e.alias << ',' << e.offset << ',' << e.consonant << ',' << e.cutoff << ','
          << e.preutterance << ',' << e.overlap << '|';
  }
  EXPECT_EQ(found.str(), L"b.wav,a,1,2,3,4,5|a.wav,,0,-2.5,100,0.5,12|inf.wav,inf,0,0,0,0,0|,,0,0,0,0,0|");
}

TEST(OtoIni, AnAliasIsFoundBeforeANameAndANameOnlyWithItsFolder) {
  UtauCommon::OTOINI oto;
  oto.baseFolder = L"bank";
  for (const auto& [subfolder, wave, alias] : {std::tuple(L"", L"a.wav", L"b"),
                                               {L"", L"b.wav", L""},
                                               {L"x", L"y.wav", L""},
                                               {L"", L"c.d e.wav", L""},
                                               {L"", L".f g", L""}}) {
    oto.entries.push_back({.subfolder = subfolder, .wave = wave, .alias = alias});
  }
  for (const auto& [text, wave] : {std::pair(L"a", L"bank\\a.wav"),
                                   {L"b", L"bank\\a.wav"},
                                   {L"x\\y", L"bank\\x\\y.wav"},
                                   {L"c.d e", L"bank\\c.d e.wav"},
                                   {L".f g", L"bank\\.f g"},
                                   {L"y", L""},
                                   {L"", L""},
                                   {L"A", L""}}) {
    EXPECT_EQ(oto.ResolveWavePath(text), wave);
  }
}

}  // namespace
