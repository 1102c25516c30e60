#include "batch/reporttexts.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "base/notename.h"
#include "base/utf8.h"
#include "frqctrl/tablereading.h"
#include "frqmap/checkmark.h"

namespace {

// The words of each language, in the order of ReportLanguage.
using Words = std::array<std::string_view, 2>;

struct NamedText {
  std::string_view Name;
  Words Text;
};

constexpr std::array kTexts = std::to_array<NamedText>({
    {"report", {"Frequency maps", "周波数表レポート"}},
    {"kind-label", {"Kind of maps", "周波数表の形式"}},
    {"totals-label", {"Totals", "集計"}},
    {"syllables-label", {"Syllables", "原音"}},
    {"with-label", {"With a map", "周波数表あり"}},
    {"without-label", {"Without a map", "周波数表なし"}},
    {"unreadable-label", {"Unreadable", "読み込めない周波数表"}},
    {"findings-label", {"Findings", "印の箇所"}},
    {"marked-label", {"Syllables with findings", "印のある原音"}},
    {"reasons-label", {"Findings by reason", "印の理由"}},
    {"show-label", {"Show", "表示"}},
    {"search-label", {"Search names", "名前で検索"}},
    {"choice-all", {"All syllables", "すべての原音"}},
    {"choice-marked", {"With findings", "印のある原音"}},
    {"choice-reasons", {"With a finding of one reason", "理由ごと"}},
    {"choice-without", {"Without a map", "周波数表のない原音"}},
    {"choice-unreadable", {"With an unreadable map", "周波数表を読み込めない原音"}},
    {"clear", {"Show all", "すべて表示"}},
    {"shown", {"Shown: {0} of {1}", "{1} 件中 {0} 件を表示"}},
    {"table-label", {"Syllables and what is known of their frequency maps", "原音と周波数表の一覧"}},
    {"syllable", {"Syllable", "原音"}},
    {"curve", {"Curve", "曲線"}},
    {"curve-sort", {"Sorts by how far the pitch goes", "音高の変化の幅で並べ替えます"}},
    {"key", {"Key", "キー"}},
    {"range", {"Range", "音域"}},
    {"range-sort", {"Sorts by the lowest pitch", "最も低い音高で並べ替えます"}},
    {"seconds", {"Seconds", "秒数"}},
    {"seconds-unit", {" s", " 秒"}},
    {"frames", {"Frames", "フレーム"}},
    {"voiced", {"Voiced", "有声"}},
    {"voiced-about", {"Share of the frames that have a pitch", "音高のあるフレームの割合"}},
    {"kinds", {"Maps", "周波数表"}},
    {"kinds-about", {"Kinds of maps that are there", "作成済みの周波数表の形式"}},
    {"no-map", {"No map", "周波数表なし"}},
    {"no-pitch", {"no pitch", "音高なし"}},
    {"no-sound", {"The wave cannot be read", "音声を読み込めません"}},
    {"cents", {"cents", "セント"}},
    {"curve-of", {"Curve of ", "曲線: "}},
    {"more", {"{0} more", "ほか {0} か所"}},
    {"frame-range", {"frames {0} to {1}", "フレーム {0} ～ {1}"}},
});

constexpr std::array<Words, ReasonCount> kReasons = {{
    {"Marked by the check", "チェックで印が付いています"},
    {"A fifth or another simple interval off", "5 度など、音程がずれています"},
    {"Noise or silence taken for pitch", "雑音や無音が音高とされています"},
    {"No pitch within a steady tone", "音の途中で音高が抜けています"},
    {"Too far from the pitch of the syllable", "原音の高さから離れすぎています"},
    {"An octave too high", "1 オクターブ高すぎます"},
    {"An octave too low", "1 オクターブ低すぎます"},
    {"A twelfth off (three times, or a third)", "1 オクターブと 5 度ずれています(3 倍または 1/3)"},
}};
static_assert(CheckMarkLast - CheckMarkFactor + 2 == ReasonCount);

constexpr std::array<Words, 6> kFaults = {{
    {"", ""},
    {"Cannot be opened", "開けません"},
    {"Its file ends too early", "ファイルが途中で切れています"},
    {"What is in its file is no map of this kind", "ファイルの内容がこの種類の周波数表ではありません"},
    {"Cannot be read without vslib.dll", "読み込むには vslib.dll が必要です"},
    {"vslib.dll does not take a path with such characters", "vslib.dll はこの文字を含むパスを扱えません"},
}};
static_assert(MapFault::NoNarrowPath + 1 == kFaults.size());

constexpr Words kErrorNumber = {" (error ", "(エラー "};

std::string_view In(const Words& words, ReportLanguage language) {
  return words[static_cast<std::size_t>(language)];
}

}  // namespace

std::string_view CodeOf(ReportLanguage language) {
  return language == ReportLanguage::Japanese ? "ja" : "en";
}

std::string_view PageText(std::string_view name, ReportLanguage language) {
  const auto* const text = std::ranges::find(kTexts, name, &NamedText::Name);
  return text == kTexts.end() ? std::string_view() : In(text->Text, language);
}

std::size_t ReasonOf(std::int32_t mark) {
  const bool isOurs = mark >= CheckMarkFactor && mark <= CheckMarkLast;
  return isOurs ? static_cast<std::size_t>(mark - CheckMarkFactor) + 1 : 0;
}

std::string_view TextOfReason(std::size_t reason, ReportLanguage language) {
  return In(kReasons[reason < ReasonCount ? reason : 0], language);
}

std::string TextOfFault(const MapFault& fault, ReportLanguage language) {
  std::string text(In(kFaults[fault.Why], language));
  if (fault.Why == MapFault::Refused && fault.Error != 0) {
    text.append(In(kErrorNumber, language)).append(std::to_string(fault.Error)).append(")");
  }
  return text;
}

std::string TextOfPitch(double hz, ReportLanguage language) {
  const std::optional<PitchReading> pitch = ReadPitch(hz);
  if (!pitch) return std::string(PageText("no-pitch", language));
  const std::wstring name = NoteNameFromNumber(pitch->Note);
  if (name.empty()) return Fixed(hz, 2) + " Hz";
  const std::string cents = std::to_string(pitch->Cents);
  return Utf8Of(name) + (pitch->Cents < 0 ? " " : " +") + cents + " " + std::string(PageText("cents", language));
}

std::string NameOfKind(FrqType kind) {
  const std::wstring_view extension = FrqExtensionW(kind);
  return Utf8Of(extension.substr(extension.empty() ? 0 : 1));
}

std::string TextOfCount(std::int64_t count) {
  std::string text = std::to_string(count);
  for (std::size_t end = text.size(); end > 3 && text[end - 4] != '-'; end -= 3) text.insert(end - 3, 1, ',');
  return text;
}

std::string Fixed(double value, int decimals) {
  std::array<char, 400> digits;
  const auto result =
      std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, decimals);
  return std::string(digits.data(), result.ptr);
}
