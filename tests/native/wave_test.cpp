// Waves and AIFF files as their bytes: damaged ones.

#include <cstring>

#include "native/testdata.h"
#include "native/wavebytes.h"

namespace {

std::optional<DecodedWave> Decode(const std::string& name, ByteSpan file, bool headerOnly) {
  WaveBytes source(file);
  return name.ends_with(".wav") ? DecodeWav(source, headerOnly) : DecodeAiff(file);
}

// A chunk of an AIFF file: `content` with its head.
Bytes AiffChunk(const char* id, std::uint32_t size, const Bytes& content) {
  Bytes chunk(id, id + 4);
  for (const int shift : {24, 16, 8, 0}) chunk.push_back(static_cast<std::uint8_t>(size >> shift));
  chunk.insert(chunk.end(), content.begin(), content.end());
  return chunk;
}

TEST(Waves, AFileCutOffAnywhereIsNeverReadBeyondItsEnd) {
  constexpr std::size_t kWholeHead = 54;  // of an AIFF file, whose sound may be cut
  for (const char* name : {"voice/そ.wav", "voice/byo.AIFF"}) {
    const Bytes whole = testdata::FileBytes(name);
    for (std::size_t size = 0; size < whole.size(); ++size) {
      const bool readable = std::strstr(name, "AIFF") && size >= kWholeHead;
      EXPECT_EQ(Decode(name, Bytes(whole.data(), whole.data() + size), false).has_value(), readable) << name << size;
    }
  }
}

TEST(Waves, SoundThatAnAiffLacksIsSilence) {
  const Bytes form = {'F', 'O', 'R', 'M', 0, 0, 0, 0, 'A', 'I', 'F', 'F'};
  // Frames of two channels with two bytes each, the claimed size, the sound; what the samples begin with, before
  // silence.
  const std::tuple<std::uint8_t, std::uint32_t, Bytes, Bytes, std::size_t> tests[] = {
      {2, 8 + 8, {1, 2, 3}, {2, 1, 0, 3}, 8},
      {200, 8 + 8, {1, 2, 3}, {2, 1, 0, 3}, 8},
      {1, 8 + 900, {1, 2, 3}, {2, 1, 3}, 900},
      {0, 0xFFFFFFFF, {9}, {9}, 1 << 20}};
  for (const auto& [frames, claimed, given, samples, size] : tests) {
    Bytes file = form, sound(8);
    const Bytes format = {0, 2, 0, 0, 0, frames, 0, 16, 0x40, 0x0E, 0xAC, 0x44, 0, 0, 0, 0, 0, 0};
    sound.insert(sound.end(), given.begin(), given.end());
    for (const Bytes& chunk :
         {AiffChunk("ODD ", 1, {0}), AiffChunk("COMM", 18, format), AiffChunk("SSND", claimed, sound)}) {
      file.insert(file.end(), chunk.begin(), chunk.end());
    }
    const auto wave = DecodeAiff(file);
    ASSERT_TRUE(wave) << claimed;
    Bytes expected = samples;
    expected.resize(size);
    EXPECT_TRUE(wave->samples == expected) << claimed;
    EXPECT_EQ(wave->dataSize, size) << claimed;
  }
  Bytes reversed = form;
  const Bytes format = {0, 1, 0, 0, 0, 2, 0, 16, 0x40, 0x0E, 0xAC, 0x44, 0, 0, 0, 0, 0, 0};
  for (const Bytes& chunk : {AiffChunk("SSND", 12, Bytes(12)), AiffChunk("COMM", 18, format)}) {
    reversed.insert(reversed.end(), chunk.begin(), chunk.end());
  }
  EXPECT_EQ(DecodeAiff(reversed).value().dataSize, 4u) << "chunks in any order";
  EXPECT_FALSE(DecodeAiff(AiffChunk("SSND", 7, Bytes(20)))) << "no room for what a sound begins with";
}

}  // namespace
