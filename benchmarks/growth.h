// The growth of a work's time with the size of what it is done to: the rows of ./bench growth. Two programs measure
// them one after the other, a native one and one for Windows.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// Set up by its constructor for one size, ahead of all measuring.
class GrowingWork {
 public:
  GrowingWork() = default;
  GrowingWork(const GrowingWork&) = delete;
  GrowingWork& operator=(const GrowingWork&) = delete;
  virtual ~GrowingWork() = default;

  virtual double Milliseconds() = 0;
};

struct GrowthRow {
  std::string name;
  std::string of;          // what the sizes count
  std::vector<int> sizes;  // at least three, in ascending order
  std::function<std::unique_ptr<GrowingWork>(int size)> setUp;
};

// The banks that are opened, and the seconds of the waves.
inline const std::vector<int> kGrowingSyllables = {100, 1000, 10000, 50000};
inline const std::vector<int> kGrowingSeconds = {1, 10, 60, 600};

// Measures the rows whose name begins with `beginning`, prints them, and adds them to the list in `jsonFile`; the table
// gets its head where the list is new. The result is for main to return.
int MeasureGrowth(const std::vector<GrowthRow>& rows, std::string_view beginning,
                  const std::filesystem::path& jsonFile);
