// What is told of a wave by its head alone, where no vector goes.
#include "voicebank/waveheader.h"

#include <gtest/gtest.h>

#include "win/scratch.h"

namespace {

TEST(WaveHeader, TellsALengthOfAnyHead) {
  const struct {
    std::size_t position;
    std::uint8_t byte;
    double seconds;
  } tests[] = {{22, 3, 0.333}, {22, 0, 0.0}, {43, 0xFF, 5897.753}};
  const ScratchFolder folder;
  WaveHeader wave;
  for (const auto& test : tests) {
    Bytes head = kSecondOfSound;
    head[test.position] = test.byte;
    folder.Write(L"a.WAVE", head);
    EXPECT_EQ(wave.Load(folder.Path(L"a.WAVE"), true), 0);
    EXPECT_EQ(wave.LengthSeconds(), test.seconds) << test.position;
    EXPECT_EQ(wave.Load(folder.Path(L"a.WAVE"), false), -1) << "the samples are not there";
    EXPECT_FALSE(wave.loaded) << "a failed read leaves nothing of the wave before";
  }
}

}  // namespace
