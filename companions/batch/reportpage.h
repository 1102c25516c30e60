// The report page around its rows. It is written as the rows come: memory holds the sums alone, which end the page.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

#include "batch/report.h"

struct ReportHead {
  std::wstring Bank;  // its name
  FrqType Kind = FrqTypeFrq;
  std::string Date;  // as it is to be read, in UTF-8
  ReportLanguage Language = ReportLanguage::English;
};

class ReportPage {
 public:
  // Writes the page up to the rows. Whether all could be written is the stream's to tell.
  ReportPage(std::ostream& out, ReportHead head);

  void Add(const ReportRow& row);

  // Writes the page behind the rows.
  void Finish();

 private:
  void Write(std::string_view part);
  std::string ValueOf(std::string_view name) const;
  std::string SumOf(std::string_view name) const;
  std::string ReasonOptions() const;
  std::string SumsOfReasons() const;

  std::ostream& out_;
  ReportHead head_;
  std::int64_t syllables_ = 0, withoutMap_ = 0, unreadable_ = 0, marked_ = 0;
  CountsOfReasons findings_{};
};
