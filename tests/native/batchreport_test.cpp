// The report page as text: names that hold anything, words, and pictures of any map. A browser looks at the rest.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

#include "base/utf8.h"
#include "batch/curvesvg.h"
#include "batch/html.h"
#include "batch/reportpage.h"
#include "frqmap/checkmark.h"
#include "native/family.h"

namespace {

using testing::HasSubstr;
using testing::Not;

constexpr double kInfinite = std::numeric_limits<double>::infinity();

TEST(Utf8, KeepsEveryNameAndShowsWhatCanBeRead) {
  const std::wstring face = sizeof(wchar_t) > 2 ? std::wstring(1, static_cast<wchar_t>(0x1F600)) : L"\xD83D\xDE00";
  const std::pair<std::string, std::wstring> pairs[] = {
      {"", L""}, {"a\x7F", L"a\x7F"}, {"\xC3\xA9\xE3\x81\x82", L"éあ"}, {"\xF0\x9F\x98\x80", face}};
  for (const auto& [bytes, text] : pairs) {
    EXPECT_EQ(Utf8Of(text), bytes);
    EXPECT_EQ(WideOf(bytes), text);
  }
  // Bytes of another code page, a character cut short, one spelt too long, half a pair, and one beyond the last.
  for (const std::string name : {"\x82\xA0.wav", "a\xE3\x81", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF"}) {
    const std::wstring wide = WideOf(name);
    EXPECT_EQ(NameBytesOf(wide), name) << testing::PrintToString(name);
    EXPECT_THAT(Utf8Of(wide), HasSubstr("\xEF\xBF\xBD"));
    EXPECT_EQ(WideOf(Utf8Of(wide)).find(static_cast<wchar_t>(0xFFFD)), wide.find_first_not_of(L"a"));
  }
  const std::wstring lone = {L'a', static_cast<wchar_t>(0xD800), L'b'};
  EXPECT_EQ(Utf8Of(lone),
            "a\xEF\xBF\xBD"
            "b");
}

TEST(Report, LinksLeadToTheFileWhateverItsName) {
  const std::pair<std::wstring, std::string> links[] = {{L"ka.wav", "ka.wav"},
                                                        {L"..\\low notes/ka.wav", "../low%20notes/ka.wav"},
                                                        {L"a:b?c#d%41.wav", "a%3Ab%3Fc%23d%2541.wav"},
                                                        {L"か.wav", "%E3%81%8B.wav"},
                                                        {WideOf("\x82\xA9.wav"), "%82%A9.wav"},
                                                        {L"D:\\banks\\ka.wav", "file:///D:/banks/ka.wav"},
                                                        {L"\\\\nas\\b\\ka.wav", "file://nas/b/ka.wav"},
                                                        {L"/home/ka.wav", "file:///home/ka.wav"}};
  for (const auto& [path, link] : links) EXPECT_EQ(LinkTo(path), link);
}

TEST(Report, SaysWhatTheWindowsSay) {
  const std::pair<const char*, ReportLanguage> resources[] = {{"english.rc", ReportLanguage::English},
                                                              {"japanese.rc", ReportLanguage::Japanese}};
  for (const auto& [file, language] : resources) {
    const Bytes bytes = testdata::BytesAt(MARLIT_TEST_DATA "/../../src/resources/" + std::string(file));
    const std::string script(bytes.begin(), bytes.end());
    const auto lineOf = [&](const std::string& id, int row) {
      const std::string name = "  " + id + (row > 0 ? " + " + std::to_string(row) : "") + " \"";
      const std::size_t at = script.find(name);
      return at == script.npos ? std::string() : script.substr(at, script.find('\n', at) - at);
    };
    for (std::int32_t mark = CheckMarkFactor; mark <= CheckMarkLast; ++mark) {
      std::string words(TextOfReason(ReasonOf(mark), language));
      // Behind "Marked:" the sentence goes on.
      if (language == ReportLanguage::English) words[0] = static_cast<char>(words[0] | 32);
      EXPECT_THAT(lineOf("IDS_READ_MARK_FIRST", mark - CheckMarkFactor), HasSubstr(words));
    }
    for (int why = MapFault::CutShort; why <= MapFault::NoNarrowPath; ++why) {
      std::string words = TextOfFault({static_cast<MapFault::Reason>(why)}, language);
      if (language == ReportLanguage::English) words = words.substr(1);
      EXPECT_THAT(lineOf("IDS_FAULT_FIRST", why - MapFault::Refused), HasSubstr(words));
    }
  }
}

TEST(Report, EscapesNamesAndTellsNotes) {
  const SyllableFacts facts{L"x", 1.0, true, {{FrqTypeFrq, {}, 10, 256, 5, 261.6255653, 440.0, 8000.0}}};
  const std::wstring name = L"<b>&\"'\n\x1" + std::wstring(1, static_cast<wchar_t>(0xDC80));
  const ReportRow row = MakeReportRow({name, "x", facts, FrqTypeFrq, nullptr, {}}, ReportLanguage::English);
  EXPECT_THAT(row.Html, HasSubstr("<bdi>&lt;b&gt;&amp;&quot;&#39;\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD</bdi>"));
  EXPECT_THAT(row.Html, HasSubstr(">C4 <small>+0 cents</small><"));
  EXPECT_THAT(row.Html, HasSubstr(">A4 <small>+0 cents</small><br>B8 <small>+21 cents</small><"));
  EXPECT_THAT(row.Html, HasSubstr(">50%<"));
  EXPECT_EQ(row.State, ReportRow::WithMap);
  const ReportRow other = MakeReportRow({name, "x", facts, FrqTypeDio, nullptr, {}}, ReportLanguage::English);
  EXPECT_EQ(other.State, ReportRow::WithoutMap);
  EXPECT_THAT(other.Html, Not(HasSubstr("C4")));
  for (const ReportLanguage language : {ReportLanguage::English, ReportLanguage::Japanese}) {
    std::ostringstream page;
    ReportPage writer(page, {L"bank", FrqTypeFrq, "2024", language});
    writer.Finish();
    EXPECT_THAT(page.str(), Not(HasSubstr("{{"))) << "every place of the page has its text";
    EXPECT_THAT(page.str(), Not(HasSubstr("<th scope=\"col\" data-sort=\"number\"></th>")));
  }
}

// Of all numbers in the paths and bands: none is far out of the picture, and there are not more than it can show.
TEST(Report, CurvesOfAnyMapFitTheirPicture) {
  const double hard[] = {kInfinite, -kInfinite, std::nan(""), 1e308, 5e-324, 55.0, 55.0000001, 0.0, -1.0, 440.0};
  for (const SampleCount frames : {1, 2, 199, 200, 201, 100'000}) {
    FrqMap map;
    map.Create(frames, FrqTypeFrq);
    for (SampleCount i = 0; i < frames; ++i) {
      FrqFrame& frame = map.Frames.Own()[static_cast<std::size_t>(i)];
      frame.Frequency = hard[i % 10];
      frame.Amplitude = hard[i * 7 % 10];
    }
    const Finding finding{0, frames - 1, 0.0, 1.0, CheckMarkNoise, 0.0, 0.0};
    const std::string svg = CurveSvg(map, 220.0, std::vector{finding}, "label", ReportLanguage::English);
    EXPECT_LT(svg.size(), 6'000U) << frames;
    EXPECT_THAT(svg, Not(HasSubstr("nan")));
    EXPECT_THAT(svg, Not(HasSubstr("inf")));
    EXPECT_THAT(svg, HasSubstr("width=\"400\" height=\"88\"><title>Noise or silence taken for pitch</title>"));
  }
  const FrqMap gaps = MapOf({220.0, 440.0, FrqNoPitch, FrqNoPitch, 220.0, FrqNoPitch});
  EXPECT_THAT(CurveSvg(gaps, 0.0, {}, "", ReportLanguage::English), HasSubstr("d=\"M33 82l67-76M300 82h1\""));
  EXPECT_EQ(CurveSvg(FrqMap(), 220.0, {}, "", ReportLanguage::English), "");
}

}  // namespace
