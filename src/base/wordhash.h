// WordHash: a hash of 64 bits over whole words, by which bytes that have changed are found: a torn end, another file.
//
// It guards against chance and not against anybody's will. It stands apart, because stamps of files, images of maps and
// frames of a journal all need it and none of them knows another.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "base/bytes.h"

// FNV-1a (Fowler, Noll, Vo 1991) by words, with its upper half folded down after each: frequencies of few digits differ
// in their upper bits alone.
class WordHash {
 public:
  explicit WordHash(std::uint64_t seed = 0) { Add(seed); }

  void Add(std::uint64_t word) {
    hash_ = (hash_ ^ word) * 0x100000001B3u;
    hash_ ^= hash_ >> 32;
  }

  void Add(double number) {
    std::uint64_t word = 0;
    std::memcpy(&word, &number, sizeof(word));
    Add(word);
  }

  // The number of the bytes is added too, so that zeros at the end count.
  void Add(ByteSpan bytes) {
    Add(std::uint64_t{bytes.size()});
    for (; !bytes.empty(); bytes = bytes.subspan(std::min(bytes.size(), sizeof(std::uint64_t)))) {
      std::uint64_t word = 0;
      std::memcpy(&word, bytes.data(), std::min(bytes.size(), sizeof(word)));
      Add(word);
    }
  }

  // Never 0, which stands for a hash that there is not.
  std::uint64_t Value() const { return hash_ == 0 ? 1 : hash_; }

 private:
  std::uint64_t hash_ = 0xCBF29CE484222325u;
};
