#include "resampler/hiddenrun.h"

#include <shellapi.h>

#include <optional>

#include "base/files.h"
#include "base/handle.h"
#include "frqmap/mapfiles.h"
#include "frqmap/vslib.h"
#include "resampler/commandline.h"
#include "resampler/resamplerkind.h"

namespace {

// The shell would open a folder in a window, and an empty name as the folder that is current: both would count as runs
// that went well, for each wave of a job. And it would tell the user of a file that has gone, a box for each worker. A
// bare name is the shell's to look for.
bool IsNoFile(const std::wstring& program) {
  if (program.find(L'\\') == program.npos) return program.empty();
  return !FileExists(program);
}

}  // namespace

DWORD RunHidden(HWND owner, const std::wstring& program, const std::wstring& commandLine, LONG* exitCode) {
  if (IsNoFile(program)) return ERROR_FILE_NOT_FOUND;
  SHELLEXECUTEINFOW run{};
  run.cbSize = sizeof(run);
  run.fMask = SEE_MASK_NOCLOSEPROCESS | SEE_MASK_NO_CONSOLE;
  run.hwnd = owner;
  run.lpFile = program.c_str();
  run.lpParameters = commandLine.c_str();
  run.nShow = SW_HIDE;
  if (!ShellExecuteExW(&run)) return GetLastError();
  const UniqueHandle<KernelTraits> process(run.hProcess);
  WaitForSingleObject(process.get(), INFINITE);
  DWORD code = 0;
  if (exitCode && GetExitCodeProcess(process.get(), &code)) *exitCode = static_cast<LONG>(code);
  return 0;
}

int RunResamplerCreateMap(HWND owner, const std::wstring& resamplerPath, const std::wstring& wave,
                          const NoteRange& vs4uRange, bool vs4uUseFrq, LONG* exitCode) {
  if (GetResamplerKind(resamplerPath) != FrqTypeVs4ufrq) {
    return static_cast<int>(RunHidden(owner, resamplerPath, CreateCommandLine(wave), exitCode));
  }
  const std::optional<std::string> path = NarrowPath(wave);
  if (!path) return -1;
  return CVsLib().CreateFile(*path, vs4uRange.Lowest, vs4uRange.Semitones, vs4uUseFrq, FrqTypeFrq, nullptr);
}
