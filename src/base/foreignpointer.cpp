#include "base/foreignpointer.h"

#include <windows.h>

#include <algorithm>
#include <cwchar>

namespace {

constexpr DWORD kWritable = PAGE_READWRITE | PAGE_WRITECOPY | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;
constexpr DWORD kReadable = kWritable | PAGE_READONLY | PAGE_EXECUTE_READ;

// The number of bytes from an address on that have one of these protections, counted no further than matters. A guard
// page ends them: to touch it would take it from the stack that it guards.
std::size_t BytesFrom(const void* address, std::size_t wanted, DWORD protections) {
  const auto begin = reinterpret_cast<std::uintptr_t>(address);
  const std::size_t most = std::min(wanted, static_cast<std::size_t>(UINTPTR_MAX - begin));
  std::size_t found = 0;
  while (address && found < most) {
    MEMORY_BASIC_INFORMATION region{};
    const bool known = VirtualQuery(reinterpret_cast<const void*>(begin + found), &region, sizeof(region)) != 0;
    if (!known || region.State != MEM_COMMIT || (region.Protect & PAGE_GUARD)) break;
    if (!(region.Protect & protections)) break;
    found = reinterpret_cast<std::uintptr_t>(region.BaseAddress) + region.RegionSize - begin;
  }
  return std::min(found, most);
}

}  // namespace

bool IsReadable(const void* address, std::size_t size) {
  return address && BytesFrom(address, size, kReadable) == size;
}

bool IsWritable(const void* address, std::size_t size) {
  return address && BytesFrom(address, size, kWritable) == size;
}

bool IsReadableText(const wchar_t* text, std::size_t most) {
  const std::size_t readable = BytesFrom(text, most * sizeof(wchar_t), kReadable) / sizeof(wchar_t);
  return text && wcsnlen(text, readable) < readable;
}
