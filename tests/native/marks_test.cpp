// The marks that the check leaves in a map: stepping between them, taking and dropping suggestions.
#include <gtest/gtest.h>

#include "frqmap/frqmap.h"
#include "native/vectors.h"

namespace {

using vectors::Json;

// "x" is a mark, "s" one with a suggestion of 100 Hz and one for each frame before it.
FrqMap MapOf(const std::string& pattern, SampleCount hop) {
  FrqMap map;
  map.Create(static_cast<SampleCount>(pattern.size()), FrqTypeFrq);
  map.Hop = hop;
  map.HasMarks = pattern.find_first_not_of('.') != pattern.npos;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    const double suggestion = pattern[i] == 's' ? 100.0 + static_cast<double>(i) : 0.0;
    map.Frames[i] = {.Frequency = 200.0, .Mark = pattern[i] != '.', .SuggestedFrequency = suggestion};
  }
  return map;
}

// Each expected step, with what the map makes of it in place of what is expected.
Json Find(const FrqMap& map, Json step) {
  step["forward"] = map.FindNextMark(step["position"], true);
  step["backward"] = map.FindNextMark(step["position"], false);
  return step;
}

Json Range(const FrqMap& map, Json step) {
  SampleCount first = -2, last = -2;  // stays where nothing is written
  step["result"] = map.GetMarkRange(step["position"], first, last);
  step["first"] = first;
  step["last"] = last;
  return step;
}

Json Apply(FrqMap map, Json step) {
  map.ApplyMarks(step["position"], step["apply"]);
  std::vector<double> frequencies;
  std::string marks;
  for (const FrqFrame& frame : map.Frames) {
    frequencies.push_back(frame.Frequency);
    marks += frame.Mark != 0 ? '1' : '0';
  }
  EXPECT_EQ(map.Modified, frequencies != std::vector<double>(map.Frames.size(), 200.0));
  step.update({{"frequency", frequencies}, {"marks", marks}, {"has_marks", map.HasMarks}});
  return step;
}

TEST(Marks, AreSteppedTakenAndDroppedRunByRun) {
  const Json marks = Json::parse(vectors::OpenData("marks.json"));
  for (const Json& test : marks["marks"]) {
    const FrqMap map = MapOf(test["pattern"], test["hop"]);
    for (const Json& step : test["find_next"]) EXPECT_EQ(Find(map, step), step) << test["pattern"];
    for (const Json& step : test["range"]) EXPECT_EQ(Range(map, step), step) << test["pattern"];
    for (const Json& step : test["apply"]) EXPECT_EQ(Apply(map, step), step) << test["pattern"];
  }
}

}  // namespace
