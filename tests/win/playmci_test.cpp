// The sound of a preview, where there is a device, and drivers that raise exceptions.
#include "resampler/playmci.h"

#include <gtest/gtest.h>

#include "resampler/guardedcall.h"
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
  Bytes wave = kSecondOfSound;
  wave.resize(wave.size() + 88200);
  folder.Write(L"rubbish.wav", {1, 2, 3});
  EXPECT_NE(PlayMci(folder.Path(L"rubbish.wav"), 0, 0), 0u);
  CloseMci();
  EXPECT_NE(PlayMci(folder.Path(L"gone.wav"), 0, 0), 0u);
  CloseMci();
  folder.Write(L"a.wav", wave);
  const ULONGLONG start = GetTickCount64();
  if (const DWORD error = PlayMci(folder.Path(L"a.wav"), 0, 0)) {
    CloseMci();
    GTEST_SKIP() << "no sound device: error " << error;
  }
  while (IsMciPlaying() && GetTickCount64() - start < 5000) Sleep(20);
  EXPECT_GE(GetTickCount64() - start, 800u);
  EXPECT_LT(GetTickCount64() - start, 3000u);
  EXPECT_EQ(CloseMci(), 0u);
}

}  // namespace
