// A checksum of bytes that tells a record that was written whole from one that was not. It guards against accidents.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

#include "base/bytes.h"

// Two lanes of 32 bits, mixed as MurmurHash3 mixes its blocks: a 32-bit process has no fast product of 64 bits.
inline std::uint64_t Checksum(ByteSpan bytes) {
  constexpr std::uint32_t kFirst = 0xCC9E2D51;
  constexpr std::uint32_t kSecond = 0x1B873593;
  std::uint32_t a = static_cast<std::uint32_t>(bytes.size()) ^ kFirst;
  std::uint32_t b = ~a;
  const auto mix = [](std::uint32_t lane, std::uint32_t word, std::uint32_t factor) {
    return std::rotl(lane ^ std::rotl(word * factor, 15), 13) * 5 + 0xE6546B64;
  };
  for (; bytes.size() >= 8; bytes = bytes.subspan(8)) {
    std::uint32_t words[2];
    std::memcpy(words, bytes.data(), sizeof(words));
    a = mix(a, words[0], kFirst);
    b = mix(b, words[1], kSecond);
  }
  for (const std::uint8_t byte : bytes) a = mix(a, byte + 1U, kSecond);
  b = mix(b, a, kFirst);
  a = mix(a, b, kSecond);
  return static_cast<std::uint64_t>(a) << 32 | b;
}
