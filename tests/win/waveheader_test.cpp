// What is told of a wave by its head alone, where no vector goes.
#include "voicebank/waveheader.h"

#include <gtest/gtest.h>

#include "win/scratch.h"

namespace {

TEST(WaveHeader, TellsALengthOfAnyHead) {
  const ScratchFolder folder;
  WaveHeader wave;
  for (const auto& [channels, seconds] : {std::pair(3, 0.333), {0, 0.0}}) {
    Bytes head = kSecondOfSound;
    head[22] = static_cast<std::uint8_t>(channels);
    folder.Write(L"a.WAVE", head);
    EXPECT_EQ(wave.Load(folder.Path(L"a.WAVE"), true), 0);
    EXPECT_EQ(wave.LengthSeconds(), seconds) << channels;
    EXPECT_EQ(wave.Load(folder.Path(L"a.WAVE"), false), -1) << "the samples are not there";
    EXPECT_FALSE(wave.loaded) << "a failed read leaves nothing of the wave before";
  }
}

}  // namespace
