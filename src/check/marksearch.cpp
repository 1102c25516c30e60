#include "check/marksearch.h"

#include "frqmap/frqmap.h"

std::optional<MarkPosition> FindMarkedRun(std::span<const FrqMap* const> maps, MarkPosition from, bool forward) {
  const int count = static_cast<int>(maps.size());
  const int start = from.Index >= 0 ? from.Index : forward ? 0 : count - 1;
  if (count == 0 || start >= count) return std::nullopt;
  MarkPosition at{start, from.Sample};
  do {
    at.Sample = maps[static_cast<std::size_t>(at.Index)]->FindNextMark(at.Sample, forward);
    if (at.Sample >= 0) return at;
    at.Index = (at.Index + (forward ? 1 : count - 1)) % count;
  } while (at.Index != start);
  return std::nullopt;
}
