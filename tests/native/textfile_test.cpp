// The text files of voicebanks and of the host as broken tools, hands and hostile projects leave them.
#include <gtest/gtest.h>

#include <sstream>

#include "voicebank/notelist.h"
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

TEST(OtoIni, AWaveIsFoundByItsNameWithoutWhatIsAnExtension) {
  UtauCommon::OTOINI oto;
  const std::pair<const wchar_t*, const wchar_t*> tests[] = {
      {L"a.b.wav", L"a.b"}, {L"a. b", L"a. b"}, {L"c", L"c"}, {L"s.x\\d", L"s.x\\d"}};
  for (const auto& [wave, name] : tests) oto.Add({.subfolder = {}, .wave = wave, .alias = {}});
  for (const auto& [wave, name] : tests) EXPECT_EQ(oto.ResolveWavePath(name), std::wstring(L"\\") + wave) << wave;
}

TEST(NoteList, LengthsThatAreNoneOrFarTooLongDoNotUpsetTheNumbering) {
  std::wistringstream text(
      L"[#0001]\nLength=99999999999999999999\n[#0002]\nLength=-99999999999\n[#0003]\nLength=0x9\n"
      L"[#INSERT]\nLength=\n[#]\nLength=5\n[#SETTING\nVoiceDir=cut\n[\n[#NEXT]x\n");
  UtauCommon::NOTELIST list;
  list.Parse([&](std::wstring& line) { return !!std::getline(text, line); });
  std::wostringstream found;
  for (const UtauCommon::NOTE& note : list.notes) {
    found << note.GetType() << ' ' << note.index << ' ' << note.position << '|';
    EXPECT_TRUE(!note.next || note.next->prev == &note);
  }
  EXPECT_EQ(found.str(), L"4 0 0|4 1 2147483647|4 2 -1|7 3 -1|0 0 0|0 0 0|0 0 0|0 0 0|");
  EXPECT_EQ(list.GetVoiceDir(), L"") << "the last character of a section's line is never part of its name";
}

}  // namespace
