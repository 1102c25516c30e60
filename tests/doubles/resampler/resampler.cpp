// A resampler for tests, which does what MARLIT_DOUBLE says: "MILLISECONDS EXITCODE WHAT". It takes its time, leaves
// WHAT beside the wave, or in the place of the note where one is asked for, and ends with its code. WHAT is "nothing",
// "rubbish", or the name of a file beside this program, of which it leaves a copy; the map is of the kind of this
// program's own name.
//
// With MARLIT_DOUBLE_NARROW set it is one of those that take their arguments as bytes in the user's code page, into a
// buffer of 260, and makes nothing of a wave that it does not find so.
//
// Its calls are in calls.txt beside it: a line "+" with the command line from a start, a line "-" from an
// end, in their order, so that a test can count how many ran at once.
#include <windows.h>
#include <shellapi.h>

#include <algorithm>
#include <cwchar>
#include <string>

#include "base/files.h"
#include "base/handle.h"
#include "base/path.h"
#include "base/text.h"
#include "resampler/resamplerkind.h"

namespace {

void Append(const std::wstring& file, const std::wstring& line) {
  const UniqueHandle<KernelTraits> lock(CreateMutexW(nullptr, FALSE, L"MarlitResamplerDouble"));
  WaitForSingleObject(lock.get(), INFINITE);
  const FileHandle calls(CreateFileW(file.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                     OPEN_ALWAYS, 0, nullptr));
  const std::wstring text = line + L"\n";
  DWORD written = 0;
  WriteFile(calls.get(), text.data(), static_cast<DWORD>(text.size() * sizeof(wchar_t)), &written, nullptr);
  ReleaseMutex(lock.get());
}

}  // namespace

// With windows and not with a console, which would take Wine longer to start.
int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
  int count = 0;
  const bool isNarrow = GetEnvironmentVariableW(L"MARLIT_DOUBLE_NARROW", nullptr, 0) != 0;
  wchar_t** const arguments =
      CommandLineToArgvW(isNarrow ? Widen(GetCommandLineA(), CP_ACP).c_str() : GetCommandLineW(), &count);
  wchar_t self[MAX_PATH] = L"", script[MAX_PATH] = L"", what[MAX_PATH] = L"nothing";
  GetModuleFileNameW(nullptr, self, MAX_PATH);
  GetEnvironmentVariableW(L"MARLIT_DOUBLE", script, MAX_PATH);
  int milliseconds = 0, exitCode = 0;
  swscanf(script, L"%d %d %259ls", &milliseconds, &exitCode, what);

  const std::wstring calls = PathIn(FolderOf(self), L"calls.txt");
  Append(calls, std::wstring(L"+") + GetCommandLineW());
  Sleep(static_cast<DWORD>(milliseconds));
  std::wstring wave = count > 1 ? arguments[1] : L"";
  if (isNarrow) wave.resize(std::min<std::size_t>(wave.size(), MAX_PATH - 1));
  if (count > 2 && (!isNarrow || GetFileAttributesW(wave.c_str()) != INVALID_FILE_ATTRIBUTES)) {
    const std::wstring output = arguments[2];
    const std::wstring made = output == L"nul" ? MapPathFromWaveW(wave, GetResamplerKind(self)) : output;
    if (what == std::wstring(L"rubbish")) {
      WriteWholeFile(made, Bytes{'r', 'u', 'b'});
    } else if (what != std::wstring(L"nothing")) {
      CopyFileW(PathIn(FolderOf(self), what).c_str(), made.c_str(), FALSE);
    }
  }
  Append(calls, L"-");
  return exitCode;
}
