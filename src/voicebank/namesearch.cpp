#include "voicebank/namesearch.h"

#include <algorithm>
#include <array>

#include "voicebank/namespelling.h"

namespace {

// Ranks of how well a name fits; one that fits as it is written has one more. 0 is not at all.
constexpr std::uint8_t kInside = 1, kAtStart = 3, kWhole = 5, kBest = kWhole + 1;

// The names that fit, the best ones first, in two passes.
std::vector<int> InOrder(const std::vector<std::uint8_t>& ranks) {
  std::array<std::size_t, kBest + 1> counts{}, places{};
  for (const std::uint8_t rank : ranks) {
    if (rank > 0) ++counts[rank];
  }
  for (std::size_t rank = kBest; rank > 0; --rank) places[rank - 1] = places[rank] + counts[rank];
  std::vector<int> found(places[0]);
  for (std::size_t i = 0; i < ranks.size(); ++i) {
    if (ranks[i] > 0) found[places[ranks[i]]++] = static_cast<int>(i);
  }
  return found;
}

}  // namespace

NameSearch::NameSearch(std::span<const std::wstring> names) {
  for (const std::wstring& name : names) {
    const std::wstring plain = PlainSpelling(name);
    plain_.Add(plain);
    romaji_.Add(RomajiSpelling(plain, false));
  }
}

void NameSearch::Spelled::Add(std::wstring_view name) {
  text.append(name) += L'\n';
  ends.push_back(text.size());
}

// A name that holds the part several times is ranked by the first place, which is the best.
void NameSearch::Spelled::Rank(std::wstring_view part, std::uint8_t bonus, std::vector<std::uint8_t>& ranks) const {
  std::size_t name = 0;
  for (std::size_t at = 0; (at = text.find(part, at)) != text.npos; at = ends[name]) {
    while (ends[name] <= at) ++name;
    const bool isStart = text[at - 1] == L'\n', isEnd = text[at + part.size()] == L'\n';
    const std::uint8_t rank = isStart && isEnd ? kWhole : isStart ? kAtStart : kInside;
    ranks[name] = std::max<std::uint8_t>(ranks[name], rank + bonus);
  }
}

std::vector<int> NameSearch::Find(std::wstring_view part) const {
  const std::wstring plain = PlainSpelling(part);
  std::vector<std::uint8_t> ranks(plain_.ends.size(), plain.empty() ? kInside : 0);
  if (!plain.empty()) plain_.Rank(plain, 1, ranks);
  const std::wstring romaji = HasKana(plain) ? std::wstring() : RomajiSpelling(plain, true);
  if (!romaji.empty()) romaji_.Rank(romaji, 0, ranks);
  return InOrder(ranks);
}
