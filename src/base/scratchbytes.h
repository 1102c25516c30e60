// Bytes of use for a moment, such as those of a file that is read to be decoded.
//
// Files come by the thousand, and fresh memory for each would cost as much as its reading: a thread keeps the memory of
// the last, unless that was far larger than usual.
#pragma once

#include <utility>

#include "base/bytes.h"

class ScratchBytes {
 public:
  ScratchBytes() : Content(std::exchange(Kept(), {})) {}
  ~ScratchBytes() {
    if (Content.capacity() <= kMostKept) Kept() = std::move(Content);
  }
  ScratchBytes(const ScratchBytes&) = delete;
  ScratchBytes& operator=(const ScratchBytes&) = delete;

  Bytes Content;  // of any size and content at first

 private:
  static constexpr std::size_t kMostKept = 1 << 20;

  static Bytes& Kept() {
    static thread_local Bytes kept;
    return kept;
  }
};
