// The entry point of the program. Only the first argument counts.
#include <windows.h>
#include <shellapi.h>

#include "app/application.h"
#include "base/systempath.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
  SearchLibrariesBesideTheProgram();
  int count = 0;
  wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  const std::wstring argument = count > 1 ? arguments[1] : L"";
  LocalFree(arguments);
  return RunApplication(argument);
}
