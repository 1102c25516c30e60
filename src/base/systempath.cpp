#include "base/systempath.h"

#include <windows.h>
#include <objbase.h>
#include <shlobj.h>
#include <shlwapi.h>

#include "base/path.h"

namespace {

// The text that a call writes into a buffer, given its size; the call returns the length. Empty if it fails.
template <typename Call>
std::wstring TextOf(Call call) {
  std::wstring text(kLongestPath, L'\0');
  const DWORD length = call(static_cast<DWORD>(text.size()), text.data());
  text.resize(length < text.size() ? length : 0);
  return text;
}

}  // namespace

std::wstring FullPathOf(const std::wstring& path) {
  const std::wstring plain = PlainPath(path);
  const std::wstring named = PathIsRelativeW(plain.c_str()) ? PathIn(TextOf(GetCurrentDirectoryW), plain) : plain;
  const std::wstring literal = ApiPath(named);
  if (literal != named && GetFileAttributesW(literal.c_str()) != INVALID_FILE_ATTRIBUTES) return PlainPath(literal);
  const std::wstring full =
      TextOf([&](DWORD size, wchar_t* text) { return GetFullPathNameW(plain.c_str(), size, text, nullptr); });
  return full.empty() ? path : full;
}

std::wstring ProgramPath() {
  return ModulePath(nullptr);
}

std::wstring ModulePath(HMODULE module) {
  return PlainPath(TextOf([=](DWORD size, wchar_t* text) { return GetModuleFileNameW(module, text, size); }));
}

// A system that has not been updated knows the narrower search alone.
void SearchLibrariesBesideTheProgram() {
  SetDllDirectoryW(L"");
  using SetFolders = BOOL(WINAPI*)(DWORD);
  const FARPROC entry = GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "SetDefaultDllDirectories");
  const auto setFolders = reinterpret_cast<SetFolders>(reinterpret_cast<void*>(entry));
  if (setFolders) setFolders(LOAD_LIBRARY_SEARCH_DEFAULT_DIRS);
}

std::wstring TemporaryPath() {
  return TextOf(GetTempPathW);
}

std::wstring KnownFolder(const KNOWNFOLDERID& id) {
  wchar_t* found = nullptr;
  const HRESULT result = SHGetKnownFolderPath(id, 0, nullptr, &found);
  const std::wstring folder = SUCCEEDED(result) ? found : L"";
  CoTaskMemFree(found);
  return folder;
}

std::wstring EnvironmentText(const wchar_t* name) {
  return TextOf([&](DWORD size, wchar_t* text) { return GetEnvironmentVariableW(name, text, size); });
}

std::wstring LocalProgramFolder(const wchar_t* name) {
  std::wstring local = EnvironmentText(L"LOCALAPPDATA");
  if (local.empty()) local = KnownFolder(FOLDERID_LocalAppData);
  return local.empty() ? local : PathIn(PathIn(local, L"Marlit"), name);
}
