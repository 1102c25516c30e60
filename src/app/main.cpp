// The entry point of the program. Only the first argument counts.
#include <windows.h>
#include <shellapi.h>

#include "app/application.h"

namespace {

// A library is loaded by its name alone. It may come from the program's folder and the system's, and never from the
// folder that is current, which is a voicebank from somewhere as often as not, or from one of the search path. A system
// that has not been updated knows the narrower search alone.
void SearchLibrariesBesideTheProgram() {
  SetDllDirectoryW(L"");
  using SetFolders = BOOL(WINAPI*)(DWORD);
  const FARPROC entry = GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "SetDefaultDllDirectories");
  const auto setFolders = reinterpret_cast<SetFolders>(reinterpret_cast<void*>(entry));
  if (setFolders) setFolders(LOAD_LIBRARY_SEARCH_DEFAULT_DIRS);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
  SearchLibrariesBesideTheProgram();
  int count = 0;
  wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  const std::wstring argument = count > 1 ? arguments[1] : L"";
  LocalFree(arguments);
  return RunApplication(argument);
}
