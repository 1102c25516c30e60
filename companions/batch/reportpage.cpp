#include "batch/reportpage.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "base/utf8.h"
#include "batch/html.h"
#include "batch/pagetemplate.h"

namespace {

constexpr std::string_view kRows = "{{rows}}";

}  // namespace

ReportPage::ReportPage(std::ostream& out, ReportHead head) : out_(out), head_(std::move(head)) {
  const std::string_view page = PageTemplate();
  Write(page.substr(0, page.find(kRows)));
}

void ReportPage::Add(const ReportRow& row) {
  ++syllables_;
  withoutMap_ += row.State == ReportRow::WithoutMap;
  unreadable_ += row.State == ReportRow::Unreadable;
  marked_ += std::ranges::any_of(row.Findings, [](std::int64_t count) { return count > 0; });
  std::ranges::transform(findings_, row.Findings, findings_.begin(), std::plus());
  out_ << row.Html;
}

void ReportPage::Finish() {
  const std::string_view page = PageTemplate();
  Write(page.substr(page.find(kRows) + kRows.size()));
}

void ReportPage::Write(std::string_view part) {
  while (true) {
    const std::size_t begin = part.find("{{"), end = part.find("}}", begin);
    if (end == part.npos) break;
    out_ << part.substr(0, begin) << ValueOf(part.substr(begin + 2, end - begin - 2));
    part.remove_prefix(end + 2);
  }
  out_ << part;
}

std::string ReportPage::ValueOf(std::string_view name) const {
  if (name == "language") return std::string(CodeOf(head_.Language));
  if (name == "bank") return Escaped(Utf8Of(head_.Bank));
  if (name == "kind") return NameOfKind(head_.Kind);
  if (name == "date") return Escaped(head_.Date);
  if (name == "reason-options") return ReasonOptions();
  if (name == "sum-reasons") return SumsOfReasons();
  if (name.starts_with("sum-")) return SumOf(name);
  return Escaped(PageText(name, head_.Language));
}

std::string ReportPage::SumOf(std::string_view name) const {
  if (name == "sum-all") return TextOfCount(syllables_);
  if (name == "sum-with") return TextOfCount(syllables_ - withoutMap_ - unreadable_);
  if (name == "sum-none") return TextOfCount(withoutMap_);
  if (name == "sum-bad") return TextOfCount(unreadable_);
  if (name == "sum-marked") return TextOfCount(marked_);
  return TextOfCount(std::reduce(findings_.begin(), findings_.end()));
}

std::string ReportPage::ReasonOptions() const {
  std::string options;
  for (std::size_t reason = 0; reason < ReasonCount; ++reason) {
    options += "<option value=\"m" + std::to_string(reason) + "\">" + Escaped(TextOfReason(reason, head_.Language)) +
               "</option>";
  }
  return options;
}

std::string ReportPage::SumsOfReasons() const {
  std::string items;
  for (std::size_t reason = 0; reason < ReasonCount; ++reason) {
    if (findings_[reason] == 0) continue;
    items += "<li class=\"m" + std::to_string(reason) + "\">" + Escaped(TextOfReason(reason, head_.Language)) +
             ": <b>" + TextOfCount(findings_[reason]) + "</b></li>";
  }
  if (items.empty()) return {};
  const std::string label(PageText("reasons-label", head_.Language));
  return "<ul class=\"reasons\" aria-label=\"" + Escaped(label) + "\">" + items + "</ul>\n";
}
