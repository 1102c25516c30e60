// Names found by a part of them, as users of either script type it.
#include "voicebank/namesearch.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

bool Fits(const std::wstring& name, std::wstring_view part) {
  return !NameSearch(std::vector{name}).Find(part).empty();
}

// Each name with what finds it and what does not, parts between bars.
TEST(NameSearch, FindsANameInEitherScriptAsItIsTyped) {
  const std::tuple<const wchar_t*, const wchar_t*, const wchar_t*> tests[] = {
      {L"か", L"か|カ|ｶ|ka|KA|ｋａ|a", L"が|きゃ|kya|ga"}, {L"カ", L"か|ka", L"ke"}, {L"ﾊﾞ", L"ば|バ|ba", L"ha|pa"},
      {L"か\x3099" L"ぱは\x309A", L"が|gapapa", L"ka"}, {L"し", L"shi|si|s|sh|SHI", L"sha|chi"},
      {L"ち", L"chi|ti|t|ch|c", L"cha|tu"}, {L"つ", L"tsu|tu|ts|t", L"ti"}, {L"ふ", L"fu|hu|h", L"fa"},
      {L"じ", L"ji|zi|j|z", L"ja"}, {L"ぢ", L"ji|di", L"da"}, {L"しゃ", L"sha|sya|sh|s|しゃ|シャ", L"shi|sa"},
      {L"じょ", L"jo|zyo|jyo|j", L"ji"}, {L"ちぇ", L"che|tye|ch", L"chi|te"},
      {L"きゃ", L"kya|ky|k|ya|ゃ", L"ki|ka"}, {L"ふぁ", L"fa", L"fu|hu"}, {L"うぃ", L"wi", L"ui"},
      {L"くぁ", L"kwa", L"ku"}, {L"つぁ", L"tsa|ts|t", L"tsu"}, {L"ヴァ", L"va|v", L"vu"}, {L"いぇ", L"ye", L"ie"},
      {L"とぅ", L"tu", L"to"}, {L"きって", L"kitte|kitt|kit|って", L"kite"},
      {L"まっちゃ", L"maccha|matcha|mattya", L"macha"}, {L"いっしょ", L"issho|issyo|issh", L"isho"},
      {L"あっ", L"axtu|altsu|あっ", L"att"}, {L"しん", L"shin|shinn|sinn", L"shina"},
      {L"こんな", L"konna|konnna|konn|kon", L"kona"}, {L"きんえん", L"kin'en|kinen", L"kinnen"},
      {L"カー", L"ka|kaa|ka-|カー|かー|ー", L"kā"}, {L"あ か", L"a ka|あ か|か", L"aka|a-ka"},
      {L"a ka", L"A KA", L"か"}, {L"shiroi", L"siroi|shiroi", L"しろい"}, {L"Sch\x00D6N", L"sch\x00F6n", L"schon"},
      {L"中", L"中", L"naka"}, {L"\xC0\xDE\x391\x3A9\x410\x42F\xD7", L"\xE0\xFE\x3B1\x3C9\x430\x44F\xD7", L"\xF7"}};
  for (const auto& [name, fits, doesNot] : tests) {
    for (const auto& [parts, isWanted] : {std::pair(fits, true), std::pair(doesNot, false)}) {
      std::wistringstream stream(parts);
      for (std::wstring part; std::getline(stream, part, L'|');) {
        EXPECT_EQ(Fits(name, part), isWanted) << testing::PrintToString(std::wstring(name)) << " "
                                              << testing::PrintToString(part);
      }
    }
  }
}

TEST(NameSearch, GivesTheClosestNameFirst) {
  const std::vector<std::wstring> names = {L"さか", L"かさ", L"aka", L"か", L"ka", L"", L"かか"};
  const NameSearch search(names);
  EXPECT_EQ(search.Find(L"ka"), (std::vector{4, 3, 1, 6, 2, 0}));
  EXPECT_EQ(search.Find(L"カ"), (std::vector{3, 1, 6, 0}));
  EXPECT_EQ(search.Find(L""), (std::vector{0, 1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(search.Find(L"x\ny"), std::vector<int>());
  EXPECT_EQ(NameSearch().Find(L"ka"), std::vector<int>());
}

}  // namespace
