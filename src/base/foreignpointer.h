// Pointers that have come in a message: whether the memory they lead to is there, asked ahead of following them.
//
// Any program on the desktop may send any number to our windows, with anything in its parameters. Its messages must not
// end this program, least of all with a lock held. A pointer of our own could go while it is followed only if its
// sender did not wait, and all of ours do.
#pragma once

#include <cstddef>
#include <cstdint>

// Nothing is readable or writable at null, for any size.
bool IsReadable(const void* address, std::size_t size);
bool IsWritable(const void* address, std::size_t size);
// Whether a text ends within `most` characters and can be read to there.
bool IsReadableText(const wchar_t* text, std::size_t most);

// The value that a parameter leads to, null where it cannot be read, or not be written.
template <typename T>
const T* ReadableAt(std::intptr_t parameter) {
  const auto* const value = reinterpret_cast<const T*>(parameter);
  return IsReadable(value, sizeof(T)) ? value : nullptr;
}
template <typename T>
T* WritableAt(std::intptr_t parameter) {
  auto* const value = reinterpret_cast<T*>(parameter);
  return IsWritable(value, sizeof(T)) ? value : nullptr;
}
// The text of a path, null where there is none.
inline const wchar_t* PathAt(std::intptr_t parameter) {
  constexpr std::size_t kLongestPath = 32768;
  const auto* const text = reinterpret_cast<const wchar_t*>(parameter);
  return IsReadableText(text, kLongestPath) ? text : nullptr;
}
