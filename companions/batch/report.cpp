#include "batch/report.h"

#include <algorithm>
#include <cmath>

#include "base/utf8.h"
#include "batch/curvesvg.h"
#include "batch/html.h"

namespace {

constexpr std::size_t kFindingsInView = 3;  // any further ones are folded away

// Problems gather at one end of the rows that are sorted by findings.
constexpr double kUnreadableRank = 2e9;
constexpr double kWithoutMapRank = 1e9;

bool IsPitch(double hz) {
  return hz > FrqNoPitch && std::isfinite(hz);
}

// Makes the cells of one row.
class RowWriter {
 public:
  RowWriter(const ReportedSyllable& syllable, ReportLanguage language)
      : syllable_(syllable), language_(language), name_(Utf8Of(syllable.Name)) {
    const auto& maps = syllable.Facts.Maps;
    const auto map = std::ranges::find(maps, syllable.Kind, &MapFacts::Kind);
    if (map != maps.end()) facts_ = &*map;
  }

  ReportRow Take() {
    row_.State = !facts_                               ? ReportRow::WithoutMap
                 : facts_->Fault.Why == MapFault::None ? ReportRow::WithMap
                                                       : ReportRow::Unreadable;
    for (const Finding& finding : syllable_.Findings) ++row_.Findings[ReasonOf(finding.Mark)];
    AddBegin();
    AddCurve();
    AddNumbers();
    AddKinds();
    AddFindings();
    row_.Html += "</tr>\n";
    return std::move(row_);
  }

 private:
  bool IsRead() const { return row_.State == ReportRow::WithMap; }
  std::string Text(std::string_view name) const { return Escaped(PageText(name, language_)); }

  // The pitch, with the cents smaller than the note.
  std::string Pitch(double hz) const {
    const std::string text = Escaped(TextOfPitch(hz, language_));
    if (!text.ends_with(PageText("cents", language_))) return text;
    const std::size_t note = text.find(' ');
    return text.substr(0, note) + " <small>" + text.substr(note + 1) + "</small>";
  }

  void AddBegin() {
    constexpr std::string_view kStates[] = {"ok", "none", "bad"};
    row_.Html.append("<tr data-s=\"").append(kStates[row_.State]).append("\" data-m=\"");
    for (std::size_t reason = 0; reason < ReasonCount; ++reason) {
      if (row_.Findings[reason] > 0) row_.Html.append("m").append(std::to_string(reason)).append(" ");
    }
    row_.Html.append("\"><th scope=\"row\"><a href=\"").append(Escaped(syllable_.Link)).append("\"><bdi>");
    row_.Html.append(Escaped(name_)).append("</bdi></a></th>");
  }

  void AddCell(std::string_view classes, double value, std::string_view html) {
    row_.Html += "<td";
    if (!classes.empty()) row_.Html.append(" class=\"").append(classes).append("\"");
    if (std::isfinite(value)) row_.Html.append(" data-v=\"").append(Fixed(value, 4)).append("\"");
    row_.Html.append(">").append(html).append("</td>");
  }
  void AddEmptyCell(std::string_view classes) { AddCell(classes, NAN, "<span class=\"none\">–</span>"); }

  void AddCurve() {
    if (!IsRead() || !syllable_.Map) return AddEmptyCell("c");
    const std::string label = std::string(PageText("curve-of", language_)) + name_;
    const std::string svg = CurveSvg(*syllable_.Map, facts_->Key, syllable_.Findings, label, language_);
    const bool hasRange = IsPitch(facts_->Low) && IsPitch(facts_->High);
    AddCell("c", hasRange ? std::log2(facts_->High / facts_->Low) : NAN, svg);
  }

  void AddNumbers() {
    if (IsRead() && IsPitch(facts_->Key)) {
      AddCell("", facts_->Key, Pitch(facts_->Key));
    } else {
      AddEmptyCell("");
    }
    if (IsRead() && IsPitch(facts_->Low)) {
      AddCell("", facts_->Low, Pitch(facts_->Low) + "<br>" + Pitch(facts_->High));
    } else {
      AddEmptyCell("");
    }
    if (syllable_.Facts.HasSound) {
      AddCell("n", syllable_.Facts.Seconds, Fixed(syllable_.Facts.Seconds, 3));
    } else {
      AddEmptyCell("n");
    }
    AddFrames();
  }

  void AddFrames() {
    if (!IsRead()) {
      AddEmptyCell("n");
      return AddEmptyCell("n");
    }
    AddCell("n", facts_->Frames, TextOfCount(facts_->Frames));
    if (facts_->Frames <= 0) return AddEmptyCell("n");
    const double voiced = 100.0 * facts_->Voiced / facts_->Frames;
    AddCell("n", voiced, Fixed(voiced, 0) + "%");
  }

  void AddKinds() {
    std::string kinds;
    for (const MapFacts& map : syllable_.Facts.Maps) {
      if (!kinds.empty()) kinds += ", ";
      const std::string fault = Escaped(TextOfFault(map.Fault, language_));
      const std::string name = NameOfKind(map.Kind);
      kinds += fault.empty() ? name : "<abbr class=\"bad\" title=\"" + fault + "\">" + name + "</abbr>";
    }
    AddCell("", NAN, kinds);
  }

  std::string TextOf(const Finding& finding) const {
    const std::size_t reason = ReasonOf(finding.Mark);
    std::string text = "<li class=\"m" + std::to_string(reason) + "\">" + Escaped(TextOfReason(reason, language_));
    std::string frames(PageText("frame-range", language_));
    frames.replace(frames.find("{0}"), 3, std::to_string(finding.First));
    frames.replace(frames.find("{1}"), 3, std::to_string(finding.Last));
    text += "<br><small title=\"" + Escaped(frames) + "\">" + Fixed(finding.Begin, 3) + "–" + Fixed(finding.End, 3) +
            Text("seconds-unit") + "</small> ";
    const bool changes = finding.To != 0.0;
    if (changes || finding.From > 0.0) text += Pitch(finding.From);
    if (changes) text += " → " + Pitch(finding.To);
    return text + "</li>";
  }

  std::string ListOf(std::span<const Finding> findings) const {
    std::string list = "<ul>";
    for (const Finding& finding : findings) list += TextOf(finding);
    return list + "</ul>";
  }

  void AddFindings() {
    const auto findings = syllable_.Findings;
    std::string html;
    double rank = static_cast<double>(findings.size());
    if (row_.State == ReportRow::Unreadable) {
      html = "<span class=\"bad\">" + Escaped(TextOfFault(facts_->Fault, language_)) + "</span>";
      rank = kUnreadableRank;
    } else if (row_.State == ReportRow::WithoutMap) {
      html = "<span class=\"bad\">" + Text("no-map") + "</span>";
      rank = kWithoutMapRank;
    }
    if (!syllable_.Facts.HasSound) html.append(html.empty() ? "" : "<br>").append(Text("no-sound"));
    // A fold that hides one line alone takes as much room as the line.
    const std::size_t inView = findings.size() <= kFindingsInView + 1 ? findings.size() : kFindingsInView;
    if (inView > 0) html += ListOf(findings.first(inView));
    if (inView < findings.size()) html += FoldOf(findings.subspan(inView));
    AddCell("", rank, html);
  }

  std::string FoldOf(std::span<const Finding> findings) const {
    std::string more = Text("more");
    more.replace(more.find("{0}"), 3, TextOfCount(std::ssize(findings)));
    return "<details><summary>" + more + "</summary>" + ListOf(findings) + "</details>";
  }

  const ReportedSyllable& syllable_;
  ReportLanguage language_;
  std::string name_;
  const MapFacts* facts_ = nullptr;  // of the map that is shown; null without one
  ReportRow row_;
};

}  // namespace

ReportRow MakeReportRow(const ReportedSyllable& syllable, ReportLanguage language) {
  return RowWriter(syllable, language).Take();
}
