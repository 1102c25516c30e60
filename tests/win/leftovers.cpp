// Fails every test that leaves its process otherwise than it has found it: tests run in one process, in any order.
//
// A file of its own, as no test calls it: it listens to all of the executables that it is linked into.
#include <windows.h>
#include <commctrl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <set>
#include <string>

#include "driver/programs.h"

namespace {

using State = std::set<std::wstring>;

// But for the hidden ones, in which the system keeps the current folder of each drive.
void AddVariables(State& state) {
  wchar_t* const all = GetEnvironmentStringsW();
  for (const wchar_t* one = all; *one; one += lstrlenW(one) + 1) {
    if (*one != L'=') state.insert(one);
  }
  FreeEnvironmentStringsW(all);
}

// Dialogs, message boxes and balloons that are seen.
void AddWindows(State& state) {
  for (HWND window = nullptr; (window = FindWindowExW(nullptr, window, nullptr, nullptr));) {
    DWORD process = 0;
    wchar_t name[64] = L"";
    GetWindowThreadProcessId(window, &process);
    if (process != GetCurrentProcessId() || !IsWindowVisible(window)) continue;
    GetClassNameW(window, name, 64);
    if (name == std::wstring(L"#32770") || name == std::wstring(TOOLTIPS_CLASSW)) state.insert(name);
  }
}

// Scratch files, the tests' and the program's.
void AddFiles(State& state) {
  const std::wstring process = std::to_wstring(GetCurrentProcessId());
  for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::temp_directory_path())) {
    const std::wstring name = entry.path().filename().wstring();
    if (name == L"MarlitTest" + process || name.starts_with(L"marlit_" + process + L'_')) state.insert(name);
  }
}

State Now() {
  State state = {std::filesystem::current_path().wstring(), L"a limit of " + std::to_wstring(limitMs)};
  AddVariables(state);
  AddWindows(state);
  AddFiles(state);
  if (GetDllDirectoryW(0, nullptr) > 1) state.insert(L"a folder of libraries");
  // A stand-in may take the place of these.
  for (const wchar_t* const name : {L"checkfrq.dll", L"vslib.dll"}) {
    if (GetModuleHandleW(name)) state.insert(name);
  }
  for (int key = VK_BACK; key < VK_OEM_CLEAR; ++key) {
    if (GetAsyncKeyState(key) < 0) state.insert(L"the key " + std::to_wstring(key));
  }
  return state;
}

class Leftovers : public testing::EmptyTestEventListener {
  void OnTestStart(const testing::TestInfo&) override { before_ = Now(); }
  // Libraries and windows go in their own time.
  void OnTestEnd(const testing::TestInfo&) override {
    State left;
    Eventually([&] {
      left.clear();
      std::ranges::set_difference(Now(), before_, std::inserter(left, left.end()));
      return left.empty();
    });
    EXPECT_EQ(left, State());
  }

  State before_;
};

[[maybe_unused]] const bool isListening = (testing::UnitTest::GetInstance()->listeners().Append(new Leftovers), true);

}  // namespace
