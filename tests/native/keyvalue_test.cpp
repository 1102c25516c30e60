// The text files of voicebanks and of the host, as the tools of many systems leave them.
#include "voicebank/keyvalue.h"

#include <gtest/gtest.h>

namespace {

TEST(KeyValue, LinesEndHoweverTheFileWasWritten) {
  const std::pair<std::string_view, std::vector<std::string_view>> tests[] = {
      {"", {}},
      {"a", {"a"}},
      {"a\r\nb\nc\rd\n", {"a", "b", "c", "d"}},
      {"\n\na\n\r\nb\r\r", {"", "", "a", "", "b", ""}},
  };
  for (const auto& [text, lines] : tests) EXPECT_EQ(SplitLines(text), lines) << text;
}

TEST(KeyValue, OnlyTheWholeMarkMakesAFileUtf8) {
  EXPECT_TRUE(HasUtf8Mark("\xEF\xBB\xBFname=x"));
  for (const char* text : {"", "\xEF\xBB", "x\xEF\xBB\xBF", "\xFF\xFE"}) EXPECT_FALSE(HasUtf8Mark(text)) << text;
}

TEST(KeyValue, AValueIsEverythingBehindTheFirstSign) {
  std::map<std::wstring, std::wstring> found;
  for (const wchar_t* line : {L"name=old", L"no sign", L"", L" a = b=c ", L"=", L"name=か"}) AddKeyValue(line, found);
  EXPECT_EQ(found, (std::map<std::wstring, std::wstring>{{L"name", L"か"}, {L" a ", L" b=c "}, {L"", L""}}));
}

}  // namespace
