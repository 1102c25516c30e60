// expected.json says what the program must make of the files beside it, family by family: waves, maps, names and so on.
//
// The tests named "vectors" go over every entry of every family that the program serves, the floor's natively and the
// others on Windows, and print how much they compared. They read the folder that MARLIT_VECTORS names, or tests/data.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <sstream>

#include "frqmap/dio.h"
#include "frqmap/freq0003.h"
#include "frqmap/mrqstore.h"
#include "frqmap/pmk.h"
#include "native/testdata.h"

struct Family {
  using Json = testdata::Json;

  static std::string Folder() {
    const char* const other = std::getenv("MARLIT_VECTORS");
    return other ? other : MARLIT_TEST_DATA;
  }
  static const Json& Everything() {
    static const Json all = Json::parse(File("expected.json"));
    return all;
  }
  static Bytes File(const std::string& name) { return testdata::BytesAt(Folder() + "/" + name); }

  explicit Family(const std::string& name) : name_(name), entries_(Everything().at(name)) {}
  ~Family() {
    std::printf("%s: %zu entries, %d values compared\n", name_.c_str(), entries_.size(), compared_);
    EXPECT_GT(compared_, 0) << name_ << " has nothing to compare";
  }
  Family(const Family&) = delete;
  Family& operator=(const Family&) = delete;

  const Json& Entries() const { return entries_; }
  // Compares the entries of a family one by one.
  static void Each(const std::string& name, const std::function<void(Family&, const Json&)>& compare) {
    Family family(name);
    for (const Json& test : family.Entries()) {
      SCOPED_TRACE(test.dump().substr(0, 60));
      compare(family, test);
    }
  }

  // Every value that is expected must be there. Numbers may differ by `relative`, which is 0 but for what went through
  // logarithms, powers or roots.
  void Expect(const Json& actual, const Json& expected, double relative = 0.0) {
    EXPECT_TRUE(Same(actual, expected, relative)) << difference_;
  }
  void ExpectFile(Bytes actual, const Json& expected) {
    EXPECT_EQ(Json(actual.size()), expected["size"]);
    if (!expected.contains("file")) return;
    Bytes file = File(expected["file"]);
    for (const Json& at : expected.value("approximate", Json::array())) {
      const std::size_t offset = at["offset"];
      Expect(TakeNumber(actual, offset), TakeNumber(file, offset), at["rel"]);
    }
    ++compared_;
    EXPECT_TRUE(actual == file) << expected;
  }

 private:
  bool Same(const Json& actual, const Json& expected, double relative) {
    if (expected.is_structured() && actual.is_structured()) {
      const auto fits = [&](const auto& item) {
        const Json& value = item.value();
        if (expected.is_object()) return actual.contains(item.key()) && Same(actual[item.key()], value, relative);
        return Same(actual[std::stoul(item.key())], value, relative);
      };
      const auto items = expected.items();
      if (actual.size() >= expected.size() && (expected.is_object() || actual.size() == expected.size())) {
        return std::all_of(items.begin(), items.end(), fits);
      }
    }
    ++compared_;
    const bool same = actual.is_number() && (expected.is_number() || expected.is_string())
                          ? IsNear(testdata::Number(actual), testdata::Number(expected), relative)
                          : actual == expected;
    if (!same) difference_ = actual.dump().substr(0, 999) + " instead of " + expected.dump().substr(0, 999);
    return same;
  }
  static bool IsNear(double a, double b, double relative) {
    return a == b || (std::isnan(a) && std::isnan(b)) || std::fabs(a - b) <= std::fabs(b) * relative;
  }
  static double TakeNumber(Bytes& file, std::size_t offset) {
    double number = 0.0;
    std::memcpy(&number, file.data() + offset, sizeof(number));
    std::memset(file.data() + offset, 0, sizeof(number));
    return number;
  }

  const std::string name_;
  const Json& entries_;
  int compared_ = 0;
  std::string difference_;
};

inline std::optional<FrqMap> Decode(const std::string& name, ByteSpan file) {
  if (name.ends_with(".dio")) return DecodeDio(file);
  return name.ends_with(".pmk") ? DecodePmk(file, 0) : DecodeFreq0003(file);
}

// An object of values by their names, which stand in one text.
inline testdata::Json Named(const std::string& names, std::initializer_list<testdata::Json> values) {
  std::istringstream name(names);
  testdata::Json object;
  for (const testdata::Json& value : values) object[*std::istream_iterator<std::string>(name)] = value;
  return object;
}

inline std::string TextOfFlags(const std::vector<bool>& flags) {
  std::string text;
  for (const bool flag : flags) text += flag ? '1' : '0';
  return text;
}

inline std::string Flags(const FrqMap& map, auto FrqFrame::*flag) {
  std::string flags;
  for (const FrqFrame& frame : map.Frames) flags += frame.*flag ? '1' : '0';
  return flags;
}

// The voicebanks of the vectors, from their folder.
inline void LoadFolders(MrqStore& store) {
  for (const auto& folder : Family::Everything()["mrq_keys"]["folders"]) store.LoadFolder(testdata::Wide(folder));
}

inline testdata::Json Values(const FrqMap& map, auto FrqFrame::*value) {
  testdata::Json values = testdata::Json::array();
  for (const FrqFrame& frame : map.Frames) values.push_back(frame.*value);
  return values;
}

inline std::string Hex(std::string_view bytes) {
  std::string text;
  for (const char one : bytes) {
    for (const int shift : {4, 0}) text += "0123456789abcdef"[one >> shift & 15];
  }
  return text;
}

inline FrqMap MapOf(const testdata::Json& frequencies, SampleCount hop = 256, const testdata::Json& amplitudes = {}) {
  FrqMap map;
  map.Create(static_cast<SampleCount>(frequencies.size()), FrqTypeFrq);
  map.Hop = hop;
  map.Loaded = true;
  for (std::size_t i = 0; i < map.Frames.size(); ++i) {
    map.Frames.Own()[i].Frequency = testdata::Number(frequencies[i]);
    if (i < amplitudes.size()) map.Frames.Own()[i].Amplitude = testdata::Number(amplitudes[i]);
  }
  return map;
}

inline VsProject ProjectOf(std::int32_t rate, std::int32_t pointsPerSecond, const testdata::Json& points) {
  VsProject project;
  project.ProjectInfo.SampleRate = rate;
  project.Items.resize(1);
  project.Items[0].PointsPerSecond = pointsPerSecond;
  project.Items[0].PointCount = static_cast<std::int32_t>(points.size());
  project.ControlPoints.resize(1);
  for (const testdata::Json& values : points) {
    project.ControlPoints[0].push_back({.Dynamics = values[2], .Pitch = values[0], .HasPitch = values[1]});
  }
  return project;
}

// A map of the family "maps" against its entry. The levels of a wave went through a root.
inline void ExpectMap(Family& family, FrqMap& map, testdata::Json entry) {
  testdata::Json& expected = entry["map"];
  testdata::Json amplitudes;
  amplitudes.swap(expected["amplitude"]);
  expected.erase("amplitude");
  expected.erase("sample_position");  // follows from the hop, and is kept nowhere
  const std::string names =
      "kind magic tag average hop frame_count min_frequency max_frequency derived_average modified has_marks "
      "single_precision frequency voiced";
  family.Expect(Named(names, {map.Kind, Hex({map.Magic.data(), map.Magic.size()}),
                              Hex({map.Tag.data(), map.Tag.size()}), map.Average, map.Hop, map.FrameCount,
                              map.MinFrequency, map.MaxFrequency, map.DerivedAverage, map.Modified, map.HasMarks,
                              map.SinglePrecision, Values(map, &FrqFrame::Frequency), Flags(map, &FrqFrame::Voiced)}),
                expected);
  family.Expect(Values(map, &FrqFrame::Amplitude), amplitudes, 1e-12);
  if (!entry["averages"].contains("unspecified")) {
    family.Expect({{"minus1", map.ComputeAverage(-1)}, {"two", map.ComputeAverage(2)}, {"shown", map.ShownAverage()}},
                  entry["averages"], 1e-12);
  }
  if (!entry["sound"].contains("unspecified")) {
    family.Expect(TextOfFlags(map.ComputeSoundRegions()), entry["sound"]["sounding"]);
  }
}
