// The cost of finding syllables by a part of their name, key by key.
#include <array>

#include "measuring.h"
#include "rows.h"
#include "voicebank/namesearch.h"

namespace {

constexpr int kNames = 5000;

// Strings of four kana, as continuous recordings are named, each of which comes once.
std::vector<std::wstring> KanaNames() {
  constexpr std::wstring_view kKana =
      L"あいうえおかきくけこさしすせそたちつてとなにぬねのはひふへほまみむめもやゆよらりるれろわん";
  std::vector<std::wstring> names;
  for (std::size_t i = 0; i < kNames; ++i) {
    std::wstring name = L"_";
    for (std::size_t rest = i * 7919 + 1, k = 0; k < 4; ++k, rest = rest / kKana.size() + i) {
      name += kKana[rest % kKana.size()];
    }
    names.push_back(name);
  }
  return names;
}

// 5,000 names behind each of these texts, spelled in both ways, ranked and in order, against a bare search of the names
// for each, as they stand.
class FindNames : public Work {
 public:
  double Measured() override {
    std::size_t found = 0;
    const double ms = MillisecondsOf([&] {
      for (const std::wstring& typed : kTyped) found += search_.Find(typed).size();
    });
    Require(found > kNames / 2, "names are not found");
    return ms;
  }

  double Yardstick() override {
    std::size_t found = 0;
    const double ms = MillisecondsOf([&] {
      for (const std::wstring& typed : kTyped) {
        for (const std::wstring& name : names_) found += name.find(typed) != name.npos;
      }
    });
    Require(found > 0, "nothing is found");
    return ms;
  }

 private:
  const std::array<std::wstring, 8> kTyped = {L"s", L"sh", L"shi", L"shik", L"shika", L"し", L"しか", L"x"};
  const std::vector<std::wstring> names_ = KanaNames();
  const NameSearch search_{names_};
};

}  // namespace

std::vector<Row> NameRows() {
  return {RowOf<FindNames>("find_5000", "ms", 2.5, Taken::Least)};
}
