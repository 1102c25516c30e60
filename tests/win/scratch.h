// Places that a test may write to: a registry of its own, gone with the test, beside its folder.
#pragma once

#include <windows.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

#include "base/handle.h"
#include "native/scratchfolder.h"

// Stands in for the user's settings in this process.
struct ScratchRegistry {
  ScratchRegistry() {
    RegCreateKeyExW(HKEY_CURRENT_USER, path_.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, key_.out(), nullptr);
    RegDeleteTreeW(key_.get(), nullptr);  // a test that was ended early may have had the number of this process
    RegOverridePredefKey(HKEY_CURRENT_USER, key_.get());
  }
  ~ScratchRegistry() {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegDeleteTreeW(HKEY_CURRENT_USER, path_.c_str());
  }

 private:
  const std::wstring path_ = L"Software\\MarlitTest" + std::to_wstring(GetCurrentProcessId());
  RegistryKey key_;
};

inline std::set<std::wstring> NamesIn(const std::wstring& folder) {
  std::set<std::wstring> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) names.insert(entry.path().filename());
  return names;
}

// The header of a second of sound: 44100 Hz, 16 bits, one channel. The samples are left out.
inline const Bytes kSecondOfSound = {'R', 'I', 'F', 'F', 0,  0, 0,   0,   'W', 'A',  'V',  'E',  'f', 'm',  't',
                                     ' ', 16,  0,   0,   0,  1, 0,   1,   0,   0x44, 0xAC, 0,    0,   0x88, 0x58,
                                     1,   0,   2,   0,   16, 0, 'd', 'a', 't', 'a',  0x88, 0x58, 1,   0};

// The same with its samples, which are silent, and with all that a player asks of a head.
inline Bytes SecondOfSilence() {
  Bytes file = kSecondOfSound;
  file.resize(file.size() + 88200);
  const std::size_t rest = file.size() - 8;
  for (std::size_t i = 0; i < 4; ++i) file[4 + i] = static_cast<std::uint8_t>(rest >> (8 * i));
  return file;
}
