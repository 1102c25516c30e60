#include "batch/curvecsv.h"

#include <algorithm>
#include <array>
#include <vector>

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t kNoColumn = static_cast<std::size_t>(-1);

struct Columns {
  std::size_t Time = 0, Hertz = 1, Level = 2, Count = 3;
};

struct Field {
  std::string_view Text;  // without blanks around it, and without quotes
  bool IsQuoted = false;
};
using Fields = std::vector<Field>;

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string Lower(std::string_view text) {
  std::string lower(text);
  std::ranges::transform(lower, lower.begin(),
                         [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return lower;
}

// Lines with their numbers; CR, LF and both together end one.
class Lines {
 public:
  explicit Lines(std::string_view text) : rest_(text) {}

  // The next line that holds anything.
  std::optional<std::string_view> Take() {
    while (!rest_.empty()) {
      const std::size_t length = std::min(rest_.find_first_of("\r\n"), rest_.size());
      const std::string_view line = rest_.substr(0, length);
      rest_.remove_prefix(length);
      rest_.remove_prefix(rest_.starts_with("\r\n") ? 2 : std::min<std::size_t>(1, rest_.size()));
      ++Number;
      if (!Trimmed(line).empty()) return line;
    }
    return std::nullopt;
  }

  std::int64_t Number = 0;  // of the last one that was taken

 private:
  std::string_view rest_;
};

Field FieldOf(std::string_view text) {
  text = Trimmed(text);
  const bool isQuoted = text.size() >= 2 && text.starts_with('"') && text.ends_with('"');
  return {isQuoted ? Trimmed(text.substr(1, text.size() - 2)) : text, isQuoted};
}

// A field in quotes may hold the separator. `fields` are taken as room: a file has a million lines.
void Split(std::string_view line, char separator, Fields& fields) {
  fields.clear();
  std::size_t begin = 0;
  bool isInside = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '"') isInside = !isInside;
    if (line[i] != separator || isInside) continue;
    fields.push_back(FieldOf(line.substr(begin, i - begin)));
    begin = i + 1;
  }
  fields.push_back(FieldOf(line.substr(begin)));
}

// The character that parts the fields of a line, found outside of quotes.
char SeparatorOf(std::string_view line) {
  bool isInside = false;
  std::string outside;
  for (const char c : line) {
    if (c == '"') isInside = !isInside;
    if (!isInside) outside += c;
  }
  for (const char separator : {'\t', ';'}) {
    if (outside.find(separator) != outside.npos) return separator;
  }
  return ',';
}

// The columns by the heading; none where the first line is no heading: it begins with a number, or with nothing.
std::optional<Columns> HeadingOf(const Fields& fields) {
  if (fields[0].Text.empty() || NumberIn(fields[0].Text, true)) return std::nullopt;
  const std::string first = Lower(fields[0].Text);
  if (first == "nan" || first == "inf" || first == "-inf") return std::nullopt;
  const auto find = [&](std::initializer_list<std::string_view> names) {
    const auto field = std::ranges::find_if(
        fields, [&](const Field& f) { return std::ranges::find(names, Lower(f.Text)) != names.end(); });
    return field == fields.end() ? kNoColumn : static_cast<std::size_t>(field - fields.begin());
  };
  return Columns{find({"time", "seconds", "time (s)"}), find({"hertz", "hz", "frequency", "pitch", "f0", "pitch (hz)"}),
                 find({"level", "amplitude"}), fields.size()};
}

class RowReader {
 public:
  RowReader(const Columns& columns, char separator) : columns_(columns), separator_(separator) {}

  CurveFault::Reason Read(const Fields& fields, CurvePoint& point) const {
    if (fields.size() <= std::max(columns_.Time, columns_.Hertz)) return CurveFault::TooFewColumns;
    const auto isEmpty = [](const Field& field) { return field.Text.empty(); };
    const auto more = fields.begin() + static_cast<std::ptrdiff_t>(std::min(columns_.Count, fields.size()));
    if (!std::all_of(more, fields.end(), isEmpty)) return CurveFault::TooManyColumns;
    std::optional<double> time, hertz;
    if (const auto fault = Read(fields[columns_.Time], time)) return fault;
    if (const auto fault = Read(fields[columns_.Hertz], hertz)) return fault;
    if (columns_.Level < fields.size()) {
      if (const auto fault = Read(fields[columns_.Level], point.Level)) return fault;
    }
    if (!time) return CurveFault::NoNumber;
    point.Seconds = *time;
    point.Hz = hertz.value_or(0.0);
    return CurveFault::None;
  }

 private:
  // Reads the number of a field; an empty field leaves it as it is.
  CurveFault::Reason Read(const Field& field, std::optional<double>& number) const {
    if (field.Text.empty()) return CurveFault::None;
    number = NumberIn(field.Text, separator_ != ',' || field.IsQuoted);
    if (!number) return CurveFault::NoNumber;
    return *number < 0.0 ? CurveFault::Negative : CurveFault::None;
  }

  Columns columns_;
  char separator_;
};

CurveReading Fault(CurveFault::Reason why, std::int64_t line) {
  return {{}, {why, line}};
}

// Whether a line is the one that tells a spreadsheet the separator of the fields.
bool IsSeparatorLine(std::string_view line) {
  return line.size() == 5 && Lower(line).starts_with("sep=");
}

CurveReading ReadRows(Lines& lines, std::string_view line, char separator) {
  Columns columns;
  std::optional<std::string_view> next = line;
  Fields fields;
  Split(line, separator, fields);
  if (const std::optional<Columns> heading = HeadingOf(fields)) {
    if (heading->Time == kNoColumn) return Fault(CurveFault::NoTimeColumn, lines.Number);
    if (heading->Hertz == kNoColumn) return Fault(CurveFault::NoHertzColumn, lines.Number);
    columns = *heading;
    next = lines.Take();
  }
  const RowReader reader(columns, separator);
  CurveReading reading;
  for (; next; next = lines.Take()) {
    if (reading.Points.size() == MostCurvePoints) return Fault(CurveFault::TooLong, lines.Number);
    CurvePoint point;
    Split(*next, separator, fields);
    if (const auto why = reader.Read(fields, point)) return Fault(why, lines.Number);
    reading.Points.push_back(point);
  }
  if (reading.Points.empty()) return Fault(CurveFault::Empty, 0);
  std::ranges::stable_sort(reading.Points, {}, &CurvePoint::Seconds);
  return reading;
}

}  // namespace

std::string CurveCsv(std::span<const CurvePoint> points) {
  std::string text = "time,hertz,level\r\n";
  for (const CurvePoint& point : points) {
    AppendShortest(text, point.Seconds);
    text += ',';
    if (point.Hz > 0.0) AppendShortest(text, point.Hz);
    text += ',';
    if (point.Level) AppendShortest(text, *point.Level);
    text += "\r\n";
  }
  return text;
}

CurveReading ReadCurveCsv(std::string_view file) {
  if (file.find('\0') != file.npos || file.starts_with("\xFF\xFE") || file.starts_with("\xFE\xFF")) {
    return Fault(CurveFault::NotText, 0);
  }
  if (file.starts_with(kByteOrderMark)) file.remove_prefix(kByteOrderMark.size());
  Lines lines(file);
  std::optional<std::string_view> line = lines.Take();
  char separator = 0;
  if (line && IsSeparatorLine(*line)) {
    separator = line->back();
    line = lines.Take();
  }
  if (!line) return Fault(CurveFault::Empty, 0);
  return ReadRows(lines, *line, separator ? separator : SeparatorOf(*line));
}
