#include "base/registry.h"

#include <atomic>

#include "base/handle.h"

namespace {

// The user is told of a failure once in a run, which is enough.
enum class Failure { None, Met, Told };
std::atomic<Failure> failure = Failure::None;

bool Noted(bool isWritten) {
  if (!isWritten) NoteSettingsFailure();
  return isWritten;
}

constexpr wchar_t kSettingsKey[] = L"Software\\UTAU Plugin\\Marlit";

RegistryKey OpenForReading(const wchar_t* path) {
  RegistryKey key;
  // A failed call may write to its out parameter, so the key counts only on success.
  HKEY opened = nullptr;
  if (RegOpenKeyExW(HKEY_CURRENT_USER, path, 0, KEY_READ, &opened) == ERROR_SUCCESS) key.reset(opened);
  return key;
}

RegistryKey OpenForWriting(const wchar_t* path) {
  RegistryKey key;
  HKEY opened = nullptr;
  const LSTATUS status = RegCreateKeyExW(HKEY_CURRENT_USER, path, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE,
                                         nullptr, &opened, nullptr);
  if (status == ERROR_SUCCESS) key.reset(opened);
  return key;
}

std::wstring HistoryName(int number) {
  return L"History" + std::to_wstring(number);
}

// Reads one text of a history, whatever its type; false if it is missing or cannot be read.
bool ReadHistoryText(HKEY key, int number, std::wstring& text) {
  const std::wstring name = HistoryName(number);
  DWORD size = 0;
  if (RegQueryValueExW(key, name.c_str(), nullptr, nullptr, nullptr, &size) != ERROR_SUCCESS) return false;
  // The buffer is zeroed and larger than the value, so that a text without its terminator ends all the same.
  std::wstring buffer(size + 1, L'\0');
  auto* const bytes = reinterpret_cast<BYTE*>(buffer.data());
  if (RegQueryValueExW(key, name.c_str(), nullptr, nullptr, bytes, &size) != ERROR_SUCCESS) return false;
  text = buffer.c_str();
  return true;
}

}  // namespace

bool RegReadBinary(const wchar_t* name, void* buffer, std::size_t size) {
  const RegistryKey key = OpenForReading(kSettingsKey);
  if (!key) return false;
  DWORD type = 0;
  DWORD stored = 0;
  if (RegQueryValueExW(key.get(), name, nullptr, &type, nullptr, &stored) != ERROR_SUCCESS) return false;
  if (type != REG_BINARY || stored != size) return false;
  return RegQueryValueExW(key.get(), name, nullptr, nullptr, static_cast<BYTE*>(buffer), &stored) == ERROR_SUCCESS;
}

bool RegWriteBinary(const wchar_t* name, const void* buffer, std::size_t size) {
  const RegistryKey key = OpenForWriting(kSettingsKey);
  const auto* const bytes = static_cast<const BYTE*>(buffer);
  return Noted(key && RegSetValueExW(key.get(), name, 0, REG_BINARY, bytes, static_cast<DWORD>(size)) == ERROR_SUCCESS);
}

void NoteSettingsFailure() {
  Failure none = Failure::None;
  failure.compare_exchange_strong(none, Failure::Met);
}

bool TakeSettingsFailure() {
  Failure met = Failure::Met;
  return failure.compare_exchange_strong(met, Failure::Told);
}

void ForgetSettingsFailure() {
  failure = Failure::None;
}

bool RegReadFlag(const wchar_t* name, bool fallback) {
  BYTE stored = fallback;
  RegReadValue(name, stored);
  return stored != 0;
}

void RegWriteFlag(const wchar_t* name, bool flag) {
  RegWriteValue(name, static_cast<BYTE>(flag));
}

bool RestoreWindowPlacement(HWND window, const wchar_t* name) {
  WINDOWPLACEMENT placement{};
  if (!RegReadValue(name, placement)) return false;
  if (placement.showCmd == SW_SHOWMINIMIZED) placement.showCmd = SW_SHOW;
  if (placement.showCmd == SW_MINIMIZE) placement.showCmd = SW_SHOWNA;
  return SetWindowPlacement(window, &placement) != 0;
}

void SaveWindowPlacement(HWND window, const wchar_t* name) {
  WINDOWPLACEMENT placement{};
  placement.length = sizeof(placement);
  if (GetWindowPlacement(window, &placement)) RegWriteValue(name, placement);
}

void LoadHistory(const wchar_t* keyName, std::list<std::wstring>& list) {
  const RegistryKey key = OpenForReading(keyName);
  if (!key) return;
  std::wstring text;
  for (int number = 1; ReadHistoryText(key.get(), number, text); ++number) list.push_back(text);
}

void SaveHistory(const wchar_t* keyName, const std::list<std::wstring>& list) {
  RegDeleteKeyW(HKEY_CURRENT_USER, keyName);
  const RegistryKey key = OpenForWriting(keyName);
  if (!Noted(!!key)) return;
  int number = 1;
  for (const std::wstring& text : list) {
    const auto size = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    const auto* const bytes = reinterpret_cast<const BYTE*>(text.c_str());
    if (!Noted(RegSetValueExW(key.get(), HistoryName(number).c_str(), 0, REG_SZ, bytes, size) == ERROR_SUCCESS)) return;
    ++number;
  }
}
