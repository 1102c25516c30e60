// What is told of a syllable's wave, by its name and its head, and its samples.
#include <gtest/gtest.h>

#include "native/vectors.h"
#include "voicebank/waveheader.h"
#include "win/scratch.h"

namespace {

using vectors::Json;

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
      {L"none.wav", with(22, 0), 0, 0.0},    {L"beyond 512 MiB.wav", with(43, 0xFF), 1, 5897.753},
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

TEST(WaveHeader, ReadsFromTheDiskWhatTheNamePromises) {
  WaveHeader wave;
  const Json expected = Json::parse(vectors::OpenData("waves.json"));
  for (const Json& test : expected["waves"]) {
    const std::wstring path = vectors::Wide(std::string(MARLIT_TEST_DATA) + "/" + test["file"].get<std::string>());
    EXPECT_EQ(Json(wave.Load(path, true)), test["header_only"]) << test["case"];
    const std::uint32_t dataSize = wave.dataSize;
    EXPECT_EQ(Json(wave.Load(path, false)), test["full"]) << test["case"];
    if (!wave.loaded) continue;
    EXPECT_EQ(wave.samples.size(), dataSize) << test["case"];
    char length[32];
    std::snprintf(length, sizeof(length), ", %.3f sec", wave.LengthSeconds());
    EXPECT_TRUE(test["information"].get<std::string>().ends_with(length)) << test["case"] << length;
  }
  EXPECT_EQ(wave.Load(L"missing.wav", true), -1);
  EXPECT_FALSE(wave.loaded) << "a failed read leaves nothing of the wave before";
}

}  // namespace
