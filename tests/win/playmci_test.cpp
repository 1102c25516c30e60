// The sound of a preview.
#include "resampler/playmci.h"

#include <windows.h>
#include <mmsystem.h>

#include <future>

#include "win/scratch.h"

namespace {

TEST(Sound, EndsByItselfAndBegins) {
  const ScratchFolder folder;
  EXPECT_NE(PlayMci(folder.Path(L"gone.wav"), 0, 0), 0u);
  CloseMci();
  folder.Write(L"a.wav", SecondOfSilence());
  ASSERT_NE(waveOutGetNumDevs(), 0u) << "the tests' prefix brings a device that swallows all sound";
  EXPECT_EQ(PlayMci(folder.Path(L"a.wav"), 0, 0), 0u);
  // A device that only swallows the sound may do so in no time.
  for (const ULONGLONG end = GetTickCount64() + 5000; IsMciPlaying() && GetTickCount64() < end;) Sleep(20);
  EXPECT_FALSE(IsMciPlaying());
  EXPECT_EQ(CloseMci(), 0u);
  EXPECT_EQ(PlayMci(folder.Path(L"a.wav"), -1, 100), 0u) << "the alias is free again";
  const auto playMore = [&] {
    const DWORD error = PlayMci(folder.Path(L"a.wav"), 0, 0, L"another");
    CloseMci(L"another");
    return error;
  };
  EXPECT_EQ(std::async(std::launch::async, playMore).get(), 0u) << "two may overlap";
  EXPECT_EQ(CloseMci(), 0u);
  EXPECT_FALSE(IsMciPlaying());
}

}  // namespace
