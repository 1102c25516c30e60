// The tour: what the program is for, in the order in which a newcomer meets it.
#include <algorithm>

#include "driver/journeys.h"
#include "driver/screen.h"
#include "resources/ids.h"

namespace {

class Tour : public Journey {
 public:
  explicit Tour(const std::filesystem::path& path) : path_(path) {}

 private:
  void Travel() override {
    const bool isOfOurs = path_.empty();
    ChooseResampler(ProgramFolder() / L"basic-resampler.exe");
    Open(isOfOurs ? bank_ : path_);
    Shoot("opened", isOfOurs ? "Opened a copy of the sample voicebank" : "Opened what was named");
    Enlarge(Pixels(300), Pixels(160));
    if (isOfOurs) CorrectAFrame();
    Click(MiddleOf(GetDlgItem(Table(), IDC_TABLE_VIEW)));
    Shoot("spectrum", "The button over the table");
    if (isOfOurs) VisitTheRest();
    Leave();
  }

  // The first of か whose frequency lies far above the map's average.
  void CorrectAFrame() {
    const std::wstring map = L"か_wav.frq";
    Keep();
    const std::vector<double> hz = FrequenciesOf(Before(map));
    const double high = 1.6 * AverageOf(Before(map));
    const auto frame = std::find_if(hz.begin(), hz.end(), [=](double one) { return one > high; }) - hz.begin();
    GoTo(8);
    SelectFrames(static_cast<int>(frame));
    Shoot("syllable-before", "か, and a frame that is an octave too high");
    SetFrame(static_cast<int>(frame), hz.at(static_cast<std::size_t>(frame)) / 2.0);
    Shoot("frame-corrected", "Half of it typed, and Set");
    Press(L"Ctrl+s");
    const auto saved = static_cast<std::size_t>(frame);
    CheckOnlyFrames("the map has this frame changed, and nothing else", map, saved, saved);
    Shoot("saved", "Ctrl+S");
  }

  void VisitTheRest() {
    CreateMissingMaps(bank_);
    Shoot("maps-created", "Edit, Create missing frequency maps");
    Menu(L"v t");
    Front(Dialog(kThumbnails));
    Shoot("thumbnails", "View, Thumbnail");
    Press(L"Escape");
    AwaitEndOf(kThumbnails);
    Menu(L"Right*3 Down Return");
    Dialog(kCheck);
    Shoot("check", "Tool, Check frequency maps");
    Press(L"Return");
    Front(Dialog(kModifyBar));
    Shoot("checked", "The bar shows the first place");
    Press(L"Escape");
    AwaitEndOf(kModifyBar);
  }

  const std::filesystem::path path_;
};

}  // namespace

std::unique_ptr<Journey> MakeTour(const std::filesystem::path& path) {
  return std::make_unique<Tour>(path);
}
