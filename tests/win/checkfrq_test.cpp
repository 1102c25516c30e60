// The check library as the program meets it: loaded by its file, called by the name of its entry.
#include <windows.h>

#include <gtest/gtest.h>

#include "check/checkrules.h"
#include "contours.h"

namespace {

TEST(CheckFrq, TheLibraryChecksAMapByItsEntryAndRefusesWhatIsNone) {
  const HMODULE library = LoadLibraryA(MARLIT_CHECKFRQ);
  ASSERT_TRUE(library);
  const auto entry =
      reinterpret_cast<CheckFrequencyMapEntry>(reinterpret_cast<void*>(GetProcAddress(library, "CheckFrequencyMap")));
  ASSERT_TRUE(entry) << "under this very name, without the decoration of a compiler";
  contours::Contour contour = contours::Generator(1).Make(contours::Error::Whole);
  const auto regions = MakeCheckRegions(contour.map);
  CheckFrqSettings settings{.LowNote = contour.note, .HighNote = contour.note};
  for (const CheckRegionRecord* given : {regions.get(), static_cast<CheckRegionRecord*>(nullptr)}) {
    const auto frames = MakeCheckFrames(contour.map, L"a_wav.frq");
    EXPECT_EQ(entry(&settings, frames.get(), given), std::ranges::count(contour.wrong, true));
    EXPECT_EQ(TakeCheckResults(*frames, contour.map), std::ranges::count(contour.wrong, true));
    contour.map.ApplyMarks(-1, true);
    for (std::size_t i = 0; i < contour.truth.size(); ++i) {
      EXPECT_NEAR(contour.map.Frames[i].Frequency, contour.truth[i], 1e-3 * contour.truth[i]) << i;
    }
    for (std::size_t i = 0; i < contour.truth.size(); ++i)
      contour.map.Frames[i].Frequency = frames->Frames[i].Frequency;
  }
  settings.Size = 0;
  EXPECT_LT(entry(&settings, MakeCheckFrames(contour.map, L"").get(), nullptr), 0);
  EXPECT_LT(entry(nullptr, nullptr, nullptr), 0);
  EXPECT_TRUE(FreeLibrary(library));
}

}  // namespace
