// What is told of a voicebank's folders and waves without reading any sample.
#include <gtest/gtest.h>

#include "voicebank/folderlisting.h"
#include "voicebank/waveheader.h"
#include "win/scratch.h"

namespace {

TEST(FolderListing, AFileIsFoundHoweverItsNameIsSpelled) {
  const ScratchFolder folder;
  folder.Write(L"Ａか_wav.FRQ", Bytes(3));
  ListedFolders listed;
  EXPECT_EQ(listed.SizeOf(folder.Path(L"ａか_WAV.frq")), 3u);
  for (const wchar_t* name : {L"missing", L"missing\\x", L"Ａか_wav.FRQ\\x"}) {
    EXPECT_FALSE(listed.SizeOf(folder.Path(name))) << name;
  }
  EXPECT_FALSE(listed.SizeOf(folder.Path())) << "a folder is no file";
}

TEST(WaveHeader, TellsTheFormatAndLengthOfAnyWave) {
  const ScratchFolder folder;
  const auto with = [](std::size_t position, std::uint8_t byte) {
    Bytes wave = kSecondOfSound;
    wave[position] = byte;
    return wave;
  };
  const auto cut = [](std::size_t size) { return Bytes(kSecondOfSound.begin(), kSecondOfSound.begin() + size); };
  Bytes oddChunk = kSecondOfSound, endlessChunk = kSecondOfSound;
  oddChunk.insert(oddChunk.begin() + 36, {'f', 'a', 'c', 't', 3, 0, 0, 0, 1, 2, 3, 0});
  endlessChunk.insert(endlessChunk.begin() + 36, {'f', 'a', 'c', 't', 0xFF, 0xFF, 0xFF, 0xFF});
  const struct {
    const wchar_t* name;
    Bytes bytes;
    int channels;  // -1: not a wave
    double seconds;
  } tests[] = {
      {L"mono.wav", kSecondOfSound, 1, 1.0}, {L"three.WAVE", with(22, 3), 3, 0.333},
      {L"none.wav", with(22, 0), 0, 0.0},    {L"beyond 512 MiB.wav", with(43, 0x20), 1, 1.0},
      {L"chunk.wav", oddChunk, 1, 1.0},      {L"endless.wav", endlessChunk, -1, 0.0},
      {L"cut.wav", cut(30), -1, 0.0},        {L"no data.wav", cut(36), -1, 0.0},
      {L"other.wav", with(8, 'X'), -1, 0.0}, {L"sound.mp3", kSecondOfSound, -1, 0.0},
  };
  for (const auto& test : tests) {
    folder.Write(test.name, test.bytes);
    WaveHeader wave;
    EXPECT_EQ(wave.Load(folder.Path(test.name), true) == 0 ? wave.format.channels : -1, test.channels) << test.name;
    EXPECT_EQ(wave.LengthSeconds(), test.seconds) << test.name;
    EXPECT_EQ(wave.Load(folder.Path(test.name), false), -1) << "the samples are not there";
  }
}

}  // namespace
