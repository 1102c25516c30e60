// Programs that are started, windows of them that come in their own time, and how to wait for them: shared by the
// driver and by the tests, those of the program in their own process among them.
#pragma once

#include <windows.h>

#include <string>
#include <system_error>
#include <utility>

#include "base/handle.h"

inline UINT limitMs = 5000;

// False if the state does not come within the limit.
template <typename State>
bool Eventually(State state, UINT limit = limitMs) {
  for (const ULONGLONG end = GetTickCount64() + limit; !state(); Sleep(5)) {
    if (GetTickCount64() > end) return false;
  }
  return true;
}

// A visible dialog of a process, told by the class and the id of controls in it; null for none.
inline HWND FindDialogOf(DWORD processId, const wchar_t* controlClass, int id, HWND exceptThis = nullptr) {
  for (HWND window = nullptr; (window = FindWindowExW(nullptr, window, L"#32770", nullptr));) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    const bool isTheirs = process == processId && IsWindowVisible(window) && window != exceptThis;
    const bool hasId = id == 0 || GetDlgItem(window, id);
    if (isTheirs && hasId && FindWindowExW(window, nullptr, controlClass, nullptr)) return window;
  }
  return nullptr;
}

// Starts a program in a folder, null for the present one; its process, and the number of that.
inline std::pair<UniqueHandle<KernelTraits>, DWORD> StartProgram(std::wstring line, const wchar_t* folder) {
  STARTUPINFOW start{};
  start.cb = sizeof(start);
  PROCESS_INFORMATION made{};
  if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr, folder, &start,
                      &made)) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), "a program does not start");
  }
  CloseHandle(made.hThread);
  return {UniqueHandle<KernelTraits>(made.hProcess), made.dwProcessId};
}

inline DWORD ExitCodeOf(HANDLE process) {
  DWORD code = STILL_ACTIVE;
  WaitForSingleObject(process, 60'000);
  GetExitCodeProcess(process, &code);
  return code;
}
