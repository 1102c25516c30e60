#include "growth.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <limits>
#include <nlohmann/json.hpp>

#include "measuring.h"

namespace {

// A tenth over linear is for caches that hold less of what is larger.
constexpr double kMostExponent = 1.1;

// The least of some goes counts for each size; where a go lasts long fewer must do.
constexpr double kEnoughMs = 1000.0;
constexpr double kLongMs = 10000.0;
constexpr int kFewestGoes = 3;
constexpr int kMostGoes = 100;

double LeastOf(GrowingWork& work) {
  double spentMs = work.Milliseconds();  // once for nothing: caches fill, and what is loaded late is loaded
  double least = std::numeric_limits<double>::infinity();
  const auto isEnough = [&](int goes) {
    return goes < kFewestGoes ? goes > 0 && spentMs > kLongMs : spentMs > kEnoughMs || goes >= kMostGoes;
  };
  for (int goes = 0; !isEnough(goes); ++goes) {
    const double ms = work.Milliseconds();
    least = std::min(least, ms);
    spentMs += ms;
  }
  return least;
}

// The slope of the line of least squares through the logarithms. The first size is left out, since most of its time
// does not grow.
double ExponentOf(const std::vector<int>& sizes, const std::vector<double>& times) {
  double n = 0.0, sumX = 0.0, sumY = 0.0, sumXx = 0.0, sumXy = 0.0;
  for (std::size_t i = 1; i < sizes.size(); ++i) {
    const double x = std::log(sizes[i]), y = std::log(times[i]);
    n += 1.0, sumX += x, sumY += y, sumXx += x * x, sumXy += x * y;
  }
  return (n * sumXy - sumX * sumY) / (n * sumXx - sumX * sumX);
}

// Each time is printed as it comes: a row takes a while.
nlohmann::ordered_json MeasureAndPrint(const GrowthRow& row) {
  std::printf("%-20s %-10s", row.name.c_str(), row.of.c_str());
  std::vector<double> times;
  for (const int size : row.sizes) {
    times.push_back(LeastOf(*row.setUp(size)));
    std::printf("%10.4g", times.back());
    std::fflush(stdout);
  }
  const double exponent = ExponentOf(row.sizes, times);
  const bool holds = exponent <= kMostExponent;
  std::printf("%9.2f %5.1f  %s\n", exponent, kMostExponent, holds ? "yes" : "NO");
  std::fflush(stdout);
  return {{"name", row.name},     {"of", row.of},        {"sizes", row.sizes}, {"ms", times},
          {"exponent", exponent}, {"aim", kMostExponent}, {"holds", holds}};
}

}  // namespace

int MeasureGrowth(const std::vector<GrowthRow>& rows, std::string_view beginning,
                  const std::filesystem::path& jsonFile) {
  auto list = nlohmann::ordered_json::array();
  if (std::ifstream before(jsonFile); before) list = nlohmann::ordered_json::parse(before);
  for (const GrowthRow& row : rows) {
    if (!row.name.starts_with(beginning)) continue;
    if (list.empty()) {
      std::printf("%-20s %-10s%40s%9s %5s  holds\n", "name", "of", "time of each size [ms]", "exponent", "aim");
    }
    list.push_back(MeasureAndPrint(row));
  }
  std::ofstream after(jsonFile, std::ios::binary);
  after << list.dump(2) << "\n";
  Require(static_cast<bool>(after.flush()), "the table cannot be written");
  return 0;
}
