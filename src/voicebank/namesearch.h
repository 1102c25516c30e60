// NameSearch finds those of many names that hold a typed part, in whatever script either is written.
//
// Names are spelled once (namespelling.h) and stand one behind the other in one text for each spelling, so that a
// search is one pass over each and thousands of names answer between two key presses. Portable.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

class NameSearch {
 public:
  NameSearch() = default;
  explicit NameSearch(std::span<const std::wstring> names);

  // The indices of the names that hold the part: first those that are it, then those that begin with it, then the
  // others, each in the order of the names; what fits as it is written goes ahead of what fits as it is said. An empty
  // part gives all. A part with kana is not looked for among Roman letters.
  std::vector<int> Find(std::wstring_view part) const;

 private:
  // One spelling of all names, each with a line break before it and the last with one behind it.
  struct Spelled {
    std::wstring text = L"\n";
    std::vector<std::size_t> ends;  // of each name, its place behind the line break

    void Add(std::wstring_view name);
    void Rank(std::wstring_view part, std::uint8_t bonus, std::vector<std::uint8_t>& ranks) const;
  };

  Spelled plain_;
  Spelled romaji_;
};
