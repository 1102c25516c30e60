// A wave file in memory, as WaveHeader hands one over from the disk.
#pragma once

#include <algorithm>

#include "voicebank/wavefile.h"

struct WaveBytes : ByteSource {
  explicit WaveBytes(ByteSpan bytes) : bytes_(bytes) {}

  std::int64_t Size() const override { return static_cast<std::int64_t>(bytes_.size()); }
  std::size_t ReadAt(std::int64_t position, void* target, std::size_t size) override {
    if (position > Size()) return 0;
    const ByteSpan rest = bytes_.subspan(static_cast<std::size_t>(position));
    const std::size_t got = std::min(size, rest.size());
    std::copy_n(rest.begin(), got, static_cast<std::uint8_t*>(target));
    return got;
  }

 private:
  ByteSpan bytes_;
};
