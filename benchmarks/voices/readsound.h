// A wave file as the programs of this folder read it: without the system below the portable floor.
#pragma once

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

#include "voicebank/sound.h"

class BytesSource : public ByteSource {
 public:
  explicit BytesSource(const Bytes& bytes) : bytes_(bytes) {}
  std::size_t ReadAt(std::int64_t position, void* target, std::size_t size) override {
    if (position < 0 || position >= Size()) return 0;
    const std::size_t there = std::min(size, static_cast<std::size_t>(Size() - position));
    std::memcpy(target, bytes_.data() + position, there);
    return there;
  }
  std::int64_t Size() const override { return std::ssize(bytes_); }

 private:
  const Bytes& bytes_;
};

inline std::optional<Sound> ReadSound(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  const Bytes bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  BytesSource source(bytes);
  const std::optional<DecodedWave> wave = DecodeWav(source, false);
  return wave ? SoundOfWave(wave->format, wave->samples) : std::nullopt;
}
