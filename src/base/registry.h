// The program's settings in the registry of the current user.
//
// Every value is REG_BINARY of an exact size: one of another size or type counts as absent. A value opens and closes
// its key by itself. A value that cannot be written is skipped, and code that has a window may ask whether that has
// happened.
#pragma once

#include <windows.h>

#include <cstddef>
#include <list>
#include <string>

// True if the value was there and is now in the buffer; the buffer is left alone otherwise.
bool RegReadBinary(const wchar_t* name, void* buffer, std::size_t size);
bool RegWriteBinary(const wchar_t* name, const void* buffer, std::size_t size);

template <typename T>
bool RegReadValue(const wchar_t* name, T& value) {
  return RegReadBinary(name, &value, sizeof(value));
}

template <typename T>
bool RegWriteValue(const wchar_t* name, const T& value) {
  return RegWriteBinary(name, &value, sizeof(value));
}

// A flag is kept as one byte, whatever a bool is elsewhere.
bool RegReadFlag(const wchar_t* name, bool fallback);
void RegWriteFlag(const wchar_t* name, bool flag);

// The placement of a window. A window that was closed minimised comes back visible.
bool RestoreWindowPlacement(HWND window, const wchar_t* name);
void SaveWindowPlacement(HWND window, const wchar_t* name);

// Whether something could not be written, or was noted to have no form that can; true once in a run.
bool TakeSettingsFailure();
void NoteSettingsFailure();
// At the start of a run, which is told of its own failures alone.
void ForgetSettingsFailure();

// A list of texts as History1, History2 and so on under a key of its own. A gap ends it; saving replaces the whole key.
void LoadHistory(const wchar_t* key, std::list<std::wstring>& list);
void SaveHistory(const wchar_t* key, const std::list<std::wstring>& list);

inline constexpr wchar_t kFolderHistoryKey[] = L"SOFTWARE\\UTAU Plugin\\Marlit\\Folders";
