// The sound of a preview, and drivers that raise exceptions.
#include "resampler/playmci.h"

#include <windows.h>
#include <mmsystem.h>

#include "base/guardedcall.h"
#include "win/scratch.h"

namespace {

TEST(GuardedCall, GivesTheResultOrTheExceptionAndGoesOn) {
  for (int round = 0; round < 3; ++round) {
    DWORD given = 7;
    EXPECT_EQ(CallGuarded([](void* value) { return *static_cast<DWORD*>(value); }, &given), 7u);
    EXPECT_EQ(CallGuarded([](void*) -> DWORD { return RaiseException(0xE0001234, 0, 0, nullptr), 0; }, nullptr),
              0xE0001234u);
    EXPECT_EQ(CallGuarded([](void* address) { return *static_cast<volatile DWORD*>(address); }, nullptr),
              DWORD{EXCEPTION_ACCESS_VIOLATION});
  }
  // The chain of handlers is whole: a C++ exception passes through as ever.
  EXPECT_THROW(throw 1, int);
}

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
  EXPECT_EQ(CloseMci(), 0u);
  EXPECT_FALSE(IsMciPlaying());
}

}  // namespace
