// The check library as the program meets it: loaded by its file, called by the name of its entry.
#include <windows.h>

#include <gtest/gtest.h>

#include "check/checkrules.h"
#include "frqmap/frqmap.h"

namespace {

TEST(CheckFrq, TheLibraryChecksAMapByItsEntryAndRefusesWhatIsNone) {
  const HMODULE library = LoadLibraryA(MARLIT_CHECKFRQ);
  ASSERT_TRUE(library);
  const auto entry =
      reinterpret_cast<CheckFrequencyMapEntry>(reinterpret_cast<void*>(GetProcAddress(library, "CheckFrequencyMap")));
  ASSERT_TRUE(entry) << "under this very name, without the decoration of a compiler";
  FrqMap map;
  map.Create(150, FrqTypeFrq);
  for (int i = 20; i < 130; ++i) {
    map.Frames[static_cast<std::size_t>(i)] = {.Frequency = i < 60 || i > 71 ? 220.0 : 440.0, .Amplitude = 5000.0};
  }
  const CheckFrqSettings settings{.LowNote = 57, .HighNote = 57};
  const auto frames = MakeCheckFrames(map, L"a_wav.frq");
  EXPECT_EQ(entry(&settings, frames.get(), MakeCheckRegions(map).get()), 12);
  EXPECT_EQ(TakeCheckResults(*frames, map), 12);
  map.ApplyMarks(-1, true);
  for (std::size_t i = 20; i < 130; ++i) EXPECT_NEAR(map.Frames[i].Frequency, 220.0, 1.0) << i;
  EXPECT_LT(entry(nullptr, nullptr, nullptr), 0);
  EXPECT_TRUE(FreeLibrary(library));
}

}  // namespace
