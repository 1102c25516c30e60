// The frames of a map, which copies of the map share until one of them is changed.
//
// A syllable has its map twice, as it is seen and as it was saved, and a gesture remembers a third: hardly ever do two
// of them differ. So a copy costs nothing, and thousands of loaded maps lie in memory once.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>
#include <vector>

#include "frqmap/frqtype.h"

struct FrqFrame {
  double Frequency = FrqNoPitch;    // [Hz]; FrqNoPitch where the frame has no pitch
  double Amplitude = 0.0;           // level in units of 16-bit samples
  double SuggestedFrequency = 0.0;  // [Hz] the check's suggestion for a marked frame; 0.0 = none
  std::uint32_t Mark = 0;           // nonzero: the check has marked this frame
  bool Voiced = false;              // the frame has a pitch
  bool Selected = false;            // in the selection of the frequency table control
};

// FrqFrames are read like a vector. Several threads may hold copies and read them; a single copy is used by one thread
// at a time.
class FrqFrames {
 public:
  using value_type = FrqFrame;
  using const_iterator = const FrqFrame*;

  FrqFrames() = default;
  explicit FrqFrames(std::vector<FrqFrame> frames) { Own() = std::move(frames); }
  FrqFrames(const FrqFrames& other) noexcept : block_(other.block_) {
    if (block_) block_->Users.fetch_add(1, std::memory_order_relaxed);
  }
  FrqFrames(FrqFrames&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
  FrqFrames& operator=(FrqFrames other) noexcept {
    std::swap(block_, other.block_);
    return *this;
  }
  ~FrqFrames() { Release(); }

  bool empty() const { return size() == 0; }
  std::size_t size() const { return block_ ? block_->Frames.size() : 0; }
  const FrqFrame* data() const { return block_ ? block_->Frames.data() : nullptr; }
  const FrqFrame* begin() const { return data(); }
  const FrqFrame* end() const { return data() + size(); }
  const FrqFrame& operator[](std::size_t index) const { return block_->Frames[index]; }
  const FrqFrame& front() const { return block_->Frames.front(); }
  const FrqFrame& back() const { return block_->Frames.back(); }

  // Whether both share the same memory, so that nothing tells them apart.
  bool IsSameAs(const FrqFrames& other) const { return block_ == other.block_; }

  // The frames to be changed, which are shared no longer. Good until a copy is made of this. Throws std::bad_alloc,
  // with everything as it was: a caller that must not be stopped half way asks CanOwn first.
  std::vector<FrqFrame>& Own() {
    if (!block_) {
      block_ = new Block;
    } else if (block_->Users.load(std::memory_order_acquire) > 1) {
      Block* const own = new Block{1, block_->Frames};
      Release();
      block_ = own;
    }
    return block_->Frames;
  }

  // Whether memory holds frames of its own for this; they are there then.
  bool CanOwn() noexcept {
    try {
      Own();
      return true;
    } catch (const std::bad_alloc&) {
      return false;
    }
  }

 private:
  struct Block {
    std::atomic<int> Users = 1;
    std::vector<FrqFrame> Frames;
  };

  void Release() {
    if (block_ && block_->Users.fetch_sub(1, std::memory_order_acq_rel) == 1) delete block_;
  }

  Block* block_ = nullptr;
};
