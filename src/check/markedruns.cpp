#include "check/markedruns.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "frqmap/frqmap.h"

namespace {

class GeometricMean {
 public:
  void Add(double hz) {
    if (!(hz > FrqNoPitch) || !std::isfinite(hz)) return;
    sum_ += std::log(hz);
    ++count_;
  }
  double Or(double otherwise) const { return count_ > 0 ? std::exp(sum_ / count_) : otherwise; }

 private:
  double sum_ = 0.0;
  int count_ = 0;
};

MarkedRun RunOf(int index, SampleCount first, std::span<const FrqFrame> frames) {
  GeometricMean from, to;
  std::map<std::int32_t, int> marks;
  bool takesAway = false;
  for (const FrqFrame& frame : frames) {
    from.Add(frame.Frequency);
    to.Add(frame.SuggestedFrequency);
    takesAway = takesAway || frame.SuggestedFrequency != 0.0;
    ++marks[static_cast<std::int32_t>(frame.Mark)];
  }
  const auto most = std::ranges::max_element(marks, {}, [](const auto& mark) { return mark.second; });
  return {index,       first,        first + static_cast<SampleCount>(frames.size()) - 1,
          most->first, from.Or(0.0), to.Or(takesAway ? FrqNoPitch : 0.0)};
}

}  // namespace

std::vector<MarkedRun> MarkedRunsOf(std::span<const FrqMap* const> maps) {
  std::vector<MarkedRun> runs;
  for (std::size_t index = 0; index < maps.size(); ++index) {
    if (!maps[index] || !maps[index]->HasMarks) continue;
    const std::span<const FrqFrame> frames = maps[index]->Frames;
    const auto isMarked = [](const FrqFrame& frame) { return frame.Mark != 0; };
    for (auto first = std::ranges::find_if(frames, isMarked); first != frames.end();) {
      const auto end = std::find_if_not(first, frames.end(), isMarked);
      const auto at = static_cast<SampleCount>(first - frames.begin());
      runs.push_back(RunOf(static_cast<int>(index), at, {first, end}));
      first = std::find_if(end, frames.end(), isMarked);
    }
  }
  return runs;
}
