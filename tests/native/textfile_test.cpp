// The lines of voicebanks' and the host's text files, as the tools of many systems leave them, and what is asked of
// them.
#include <gtest/gtest.h>

#include <vector>

#include "voicebank/inifile.h"
#include "voicebank/textlines.h"

namespace {

TEST(TextFiles, LinesEndHoweverTheFileWasWritten) {
  const std::pair<std::string_view, std::vector<std::string_view>> tests[] = {
      {"", {}},
      {"a", {"a"}},
      {"a\r\nb\nc\rd\n", {"a", "b", "c", "d"}},
      {"\n\na\n\r\nb\r\r", {"", "", "a", "", "b", ""}},
      {std::string_view("a\0b\r\nc\0", 7), {"a", "c"}},
  };
  for (const auto& [text, lines] : tests) {
    std::string_view rest = text, line;
    std::vector<std::string_view> found;
    while (CutLine(rest, line)) found.push_back(line);
    EXPECT_EQ(found, lines) << text;
  }
}

TEST(TextFiles, OnlyTheWholeMarkMakesAFileUtf8) {
  for (const char* text : {"", "\xEF\xBB", "x\xEF\xBB\xBF", "\xFF\xFE", "#Charset:UTF", "Charset=UTF-8\n"}) {
    for (const CharsetRule rule : {CharsetRule::MoreConfig, CharsetRule::OtoIni, CharsetRule::PluginFile}) {
      EXPECT_EQ(DetectEncoding(text, rule), TextEncoding::ShiftJis) << text;
    }
  }
  EXPECT_EQ(DetectEncoding("\xEF\xBB\xBFx", CharsetRule::IniFile), TextEncoding::Utf8);
}

TEST(TextFiles, AValueIsEverythingBehindTheFirstSign) {
  std::vector<std::wstring> lines = {L"", L"name=か", L"=", L" a = b=c ", L"no sign", L"[name]", L"name=old"};
  UtauCommon::INIFILE file;
  file.Parse([&](std::wstring& line) {
    if (lines.empty()) return false;
    line = lines.back();
    lines.pop_back();
    return true;
  });
  EXPECT_EQ(file.GetValue(L"name", L"-") + file.GetValue(L" a ", L"-"), L"か b=c ");
  EXPECT_EQ(file.GetValue(L"", L"-") + file.GetValue(L"no sign", L"-"), L"-");
}

}  // namespace
