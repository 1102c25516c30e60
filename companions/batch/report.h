// A row of the report page: the facts of one syllable as HTML. Rows are made apart from the page, so that several
// threads can make them.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "batch/facts.h"
#include "batch/reporttexts.h"

struct ReportedSyllable {
  std::wstring_view Name;  // of its wave as the page shows it, with the folders that tell it from others
  std::string_view Link;   // to its wave (LinkTo)
  const SyllableFacts& Facts;
  FrqType Kind;                       // of the map that is shown
  const FrqMap* Map;                  // null where there is none, or none that can be read
  std::span<const Finding> Findings;  // in that map
};

struct ReportRow {
  enum MapState { WithMap, WithoutMap, Unreadable };

  std::string Html;
  MapState State = WithoutMap;
  CountsOfReasons Findings{};
};

ReportRow MakeReportRow(const ReportedSyllable& syllable, ReportLanguage language);
