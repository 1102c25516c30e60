#include "resampler/hiddenrun.h"

#include <shellapi.h>
#include <shlwapi.h>

#include "base/files.h"
#include "base/handle.h"
#include "base/narrowpath.h"
#include "base/path.h"
#include "frqmap/vslib.h"
#include "resampler/commandline.h"
#include "resampler/resamplerkind.h"

namespace {

bool BeginsAsProgram(HANDLE file) {
  WORD signature = 0;
  DWORD read = 0;
  return ReadFile(file, &signature, sizeof(signature), &read, nullptr) && signature == IMAGE_DOS_SIGNATURE;
}

// The reason not to try a run; 0 for none. The shell would open a folder in a window, and an empty name as the folder
// that is current: both would count as runs that went well, for each wave of a job. It would also tell the user of a
// file that has gone or is no program, in a box for each worker, of which all but the first hide behind the job's own
// window. The shell itself looks for a bare name.
DWORD WhyNotRun(const std::wstring& program) {
  const bool bareName = program.find(L'\\') == program.npos;
  if (bareName) return program.empty() ? ERROR_FILE_NOT_FOUND : 0;
  const FileHandle file(CreateFileW(ApiPath(program).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, 0, nullptr));
  if (!file) return FileExists(program) ? 0 : ERROR_FILE_NOT_FOUND;
  const bool named = lstrcmpiW(PathFindExtensionW(program.c_str()), L".exe") == 0;
  return named && !BeginsAsProgram(file.get()) ? ERROR_BAD_EXE_FORMAT : 0;
}

// The shell knows no extended form. A program that it would not find by its path it finds by the short one.
std::wstring ShellForm(const std::wstring& program) {
  return program == ApiPath(program) ? program : NarrowForm(program).value_or(program);
}

}  // namespace

DWORD RunHidden(HWND owner, const std::wstring& program, const std::wstring& commandLine, LONG* exitCode) {
  if (const DWORD reason = WhyNotRun(program)) return reason;
  const std::wstring file = ShellForm(program);
  SHELLEXECUTEINFOW run{};
  run.cbSize = sizeof(run);
  run.fMask = SEE_MASK_NOCLOSEPROCESS | SEE_MASK_NO_CONSOLE;
  run.hwnd = owner;
  run.lpFile = file.c_str();
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
  return CVsLib().CreateFile(wave, vs4uRange.Lowest, vs4uRange.Semitones, vs4uUseFrq, FrqTypeFrq, nullptr);
}
