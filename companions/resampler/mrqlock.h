// Keeps several resamplers out of one desc.mrq: hosts run many at a time, all of which raise the entry count of one
// file.
#pragma once

#include <windows.h>

#include <algorithm>
#include <string>

#include "base/handle.h"

// Held for a folder from construction to destruction, by one process of the session at a time.
class MrqLock {
 public:
  explicit MrqLock(std::wstring folder) {
    CharLowerBuffW(folder.data(), static_cast<DWORD>(folder.size()));
    std::ranges::replace(folder, L'\\', L'/');
    // Longer names than a path's limit are refused; the end of the path is what tells folders apart.
    constexpr std::size_t kLongest = 200;
    if (folder.size() > kLongest) folder.erase(0, folder.size() - kLongest);
    mutex_.reset(CreateMutexW(nullptr, FALSE, (L"Local\\BasicResampler:" + folder).c_str()));
    if (mutex_) WaitForSingleObject(mutex_.get(), INFINITE);
  }
  ~MrqLock() {
    if (mutex_) ReleaseMutex(mutex_.get());
  }
  MrqLock(const MrqLock&) = delete;
  MrqLock& operator=(const MrqLock&) = delete;

 private:
  UniqueHandle<KernelTraits> mutex_;
};
