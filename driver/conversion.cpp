// The journey through five kinds of map and back, with what of a pitch outlasts it.
#include <algorithm>
#include <cmath>

#include "driver/journeys.h"
#include "resources/ids.h"

namespace {

constexpr UINT kJobMs = 180'000;

// By their places in the boxes.
enum KindPlace { kFrq, kFrc, kVs4u, kPmk, kDio, kMrq };

struct Conversion : Journey {
  void Travel() override {
    const std::filesystem::path resampler = ProgramFolder() / L"basic-resampler.exe", ofPmk = folder_ / L"tips.exe";
    ChooseResampler(resampler);
    Open(bank_);
    GoTo(8);
    Shoot("before", "か before the conversions");
    Keep();
    Convert(kFrq, kFrc);
    Check("each map has an .frc beside it, and nothing else has changed", [this] { return HasEachOf(L".frc"); });
    Check("its frames are those of the .frq",
          [this] { return FrequenciesOf(Now(L"か_wav.frq")) == FrequenciesOf(Now(L"か_wav.frc")); });
    Convert(kFrc, kDio);
    Check("each map has a .dio", [this] { return HasEachOf(L".dio"); });
    Convert(kDio, kPmk);
    Check("each map has a .pmk", [this] { return HasEachOf(L".pmk"); });
    std::filesystem::copy_file(resampler, ofPmk);
    Choose(ofPmk);
    Shoot("other-family", "The .pmk of か, with a resampler of that family");
    Convert(kPmk, kMrq);
    Check("each folder with maps has a desc.mrq",
          [this] { return Now(L"desc.mrq").size() > 1000 && Now(L"強/desc.mrq").size() > 100; });
    Choose(resampler);
    Convert(kMrq, kFrq);
    Await("the last map", [this] { return Now(L"強/あ_wav.frq") != Before(L"強/あ_wav.frq"); }, kJobMs);
    Shoot("after", "か after the way through five kinds");
    Leave();
    for (const auto& [name, bytes] : before_) {
      if (!name.ends_with(L".frq")) continue;
      const std::u8string map = std::filesystem::path(name).u8string();
      Check("the pitch of " + std::string(map.begin(), map.end()) + " is the first one within what a .pmk can tell",
            [&] { return WentThrough(bytes, Now(name)); });
    }
  }

  void Choose(const std::filesystem::path& resampler) {
    TypeOptions(resampler);
    Shoot("option", "Tool, Option: typed the path of a resampler");
    Press(L"Return");
    AwaitEndOf(kOption);
  }

  void Convert(KindPlace from, KindPlace to) {
    Menu(L"e c");
    const HWND dialog = Dialog(kConvert);
    Press(L"Alt+a Alt+f Home" + Down(from) + L" Alt+t Home" + Down(to));
    const auto at = [=](int box) { return SendDlgItemMessageW(dialog, box, CB_GETCURSEL, 0, 0); };
    Await("the kinds", [=] { return at(IDC_CONVERT_FROM) == from && at(IDC_CONVERT_TO) == to; });
    Shoot("convert", "Edit, Convert frequency maps, all");
    Press(L"Return");
    AwaitEndOf(kConvert);
    Dialog(kCreating);
    AwaitEndOf(kCreating, kJobMs);
  }
  static std::wstring Down(int count) { return count == 0 ? L"" : L" Down*" + std::to_wstring(count); }

  // Each wave with an .frq, and no other one, has a map with that ending; the .frq are as they were.
  bool HasEachOf(const std::wstring& ending) const {
    const Files now = FilesIn(bank_);
    std::size_t expected = 0;
    for (const auto& [name, bytes] : before_) {
      if (!name.ends_with(L".frq")) continue;
      const std::size_t kept = name.size() - (ending == L".dio" ? 8 : 4);  // "_wav.frq", ".frq"
      const auto other = now.find(name.substr(0, kept) + ending);
      if (now.at(name) != bytes || other == now.end() || other->second.empty()) return false;
      ++expected;
    }
    return expected == static_cast<std::size_t>(std::count_if(
                           now.begin(), now.end(), [&](const auto& file) { return file.first.ends_with(ending); }));
  }

  // A period is a whole number of samples by now. Periods follow one another without regard to frames, at least one for
  // each, so that what they tell comes later by as far as they reach beyond their frame; where a period is longer than
  // a frame that adds up. The average is the mean in whole cents of the map's own frames.
  static bool WentThrough(const Bytes& before, const Bytes& after) {
    constexpr double kHop = 256.0;
    const std::vector<double> first = FrequenciesOf(before), now = FrequenciesOf(after);
    std::vector<double> ends;
    double end = 0.0;
    for (std::size_t i = 0; i < first.size(); ++i) {
      do end += PeriodOf(first[i]);
      while (end < static_cast<double>(i + 1) * kHop);
      ends.push_back(end);
    }
    double sum = 0.0, voiced = 0.0;
    for (std::size_t i = 0; i < now.size(); ++i) {
      const double reached = (static_cast<double>(i) - 1.0) * kHop;
      bool isNear = false;
      for (std::size_t k = std::min(i + 1, first.size()); k-- > 0 && ends[k] >= reached;) {
        isNear |= std::abs(PeriodOf(now[i]) - PeriodOf(first[k])) < 0.51;
      }
      if (!isNear) return false;
      if (now[i] > kLowest) sum += std::log(now[i]), voiced += 1.0;
    }
    const double cents = 1200.0 / std::log(2.0) * (std::log(AverageOf(after)) - sum / voiced);
    return !first.empty() && now.size() >= first.size() && static_cast<double>(now.size()) <= end / kHop + 2.0 &&
           std::abs(cents) <= 2.0;
  }
  static double PeriodOf(double hz) { return hz > kLowest ? 44100.0 / hz : 49.0; }
  static constexpr double kLowest = 55.0;
};

}  // namespace

std::unique_ptr<Journey> MakeConversion() {
  return std::make_unique<Conversion>();
}
