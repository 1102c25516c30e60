// Little-endian numbers in a block of bytes: the ground of every file codec.
//
// Both cursors are plain memory. The reader's error is sticky: a codec reads field after field and asks once, at
// the end, whether all of it was there.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <type_traits>
#include <utility>
#include <vector>

using Bytes = std::vector<std::uint8_t>;
using ByteSpan = std::span<const std::uint8_t>;

class ByteReader {
 public:
  explicit ByteReader(ByteSpan bytes) : rest_(bytes) {}

  // The next number or plain array, zero if it is not all there.
  template <typename T>
  T Read() {
    static_assert(std::is_trivially_copyable_v<T>);
    T value{};
    if (Need(sizeof(T))) {
      std::memcpy(&value, rest_.data(), sizeof(T));
      rest_ = rest_.subspan(sizeof(T));
    }
    return value;
  }

  // The next bytes as they lie there; none if not all are.
  ByteSpan Take(std::size_t size) {
    if (!Need(size)) return {};
    const ByteSpan taken = rest_.first(size);
    rest_ = rest_.subspan(size);
    return taken;
  }

  // Whether `count` records of `size` bytes are left. A negative count is none that a file can hold.
  bool Holds(std::int64_t count, std::size_t size) const {
    return !failed_ && count >= 0 && static_cast<std::uint64_t>(count) <= rest_.size() / size;
  }

  std::size_t Left() const { return rest_.size(); }
  bool Failed() const { return failed_; }
  // Sets the error, for a codec that finds nonsense.
  void Fail() { failed_ = true; }

 private:
  bool Need(std::size_t size) {
    failed_ = failed_ || rest_.size() < size;
    return !failed_;
  }

  ByteSpan rest_;
  bool failed_ = false;
};

class ByteWriter {
 public:
  template <typename T>
  void Write(const T& value) {
    static_assert(std::is_trivially_copyable_v<T>);
    std::memcpy(Append(sizeof(T)), &value, sizeof(T));
  }

  // Room for `size` bytes more, zero until they are written there; good until the next call. An insert of a range costs
  // several times as much, which counts where a file is written number by number.
  std::uint8_t* Append(std::size_t size) {
    const std::size_t end = bytes_.size();
    bytes_.resize(end + size);
    return bytes_.data() + end;
  }

  std::size_t Size() const { return bytes_.size(); }
  void Reserve(std::size_t size) { bytes_.reserve(size); }
  Bytes Take() { return std::move(bytes_); }

 private:
  Bytes bytes_;
};
