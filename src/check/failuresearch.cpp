#include "check/failuresearch.h"

#include "frqmap/frqmap.h"

std::optional<FailurePosition> FindFailure(std::span<const FrqMap* const> maps, FailurePosition from, bool forward) {
  const int count = static_cast<int>(maps.size());
  const int start = from.Index >= 0 ? from.Index : forward ? 0 : count - 1;
  if (count == 0 || start >= count) return std::nullopt;
  FailurePosition at{start, from.Sample};
  do {
    at.Sample = maps[static_cast<std::size_t>(at.Index)]->FindNextMark(at.Sample, forward);
    if (at.Sample >= 0) return at;
    at.Index = (at.Index + (forward ? 1 : count - 1)) % count;
  } while (at.Index != start);
  return std::nullopt;
}
