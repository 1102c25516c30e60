#include "batch/machine.h"

#include <windows.h>
#include <fcntl.h>
#include <io.h>

#include "base/path.h"
#include "base/systempath.h"
#include "base/utf8.h"
#include "frqmap/mapfiles.h"
#include "frqmap/mrqstore.h"
#include "resampler/mapmaking.h"

namespace {

void (*interrupted)() = nullptr;

// A second request ends the program at once, as users expect of one that does not answer.
BOOL WINAPI OnControl(DWORD) {
  static bool wasAsked = false;
  if (wasAsked) return FALSE;
  wasAsked = true;
  interrupted();
  return TRUE;
}

std::string ReasonOf(const ItemResult& result) {
  switch (result.End) {
    case ItemEnd::NotStarted: return "the resampler cannot be started: system error " + std::to_string(result.Error);
    case ItemEnd::EndedBadly: return "the resampler has failed with " + std::to_string(result.Error);
    case ItemEnd::NotKept: return "the map that is there could not be kept, and stays";
    default: return "the resampler has made no map";
  }
}

}  // namespace

std::wstring FullPathOfTyped(const std::string& typed) {
  std::wstring path = FullPathOf(WideOf(typed));
  while (path.size() > 3 && path.ends_with(L'\\')) path.pop_back();
  return path;
}

std::filesystem::path FilesystemPath(const std::wstring& path) {
  return ApiPath(path);
}

std::wstring TypedForm(std::wstring path) {
  return path;
}

std::wstring KeepingFolder() {
  return LocalProgramFolder(L"Batch");
}

std::uint32_t ProcessNumber() {
  return GetCurrentProcessId();
}

void PrepareProcess() {
  SearchLibrariesBesideTheProgram();
  SetConsoleOutputCP(CP_UTF8);
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
}

// Whether a file is a console that knows how to take a line back.
bool IsTerminal(std::FILE* file) {
  DWORD mode = 0;
  const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file)));
  if (!GetConsoleMode(handle, &mode)) return false;
  return (mode & ENABLE_VIRTUAL_TERMINAL_PROCESSING) ||
         SetConsoleMode(handle, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

void WhenInterrupted(void (*handler)()) {
  interrupted = handler;
  SetConsoleCtrlHandler(&OnControl, TRUE);
}

bool RunResampler(const std::wstring& resampler, const std::wstring& wave, FrqType kind, MrqStore& store,
                  std::string& reason) {
  MapOrder order;
  order.Resampler = resampler;
  order.Kind = kind;
  const ItemResult result = MakeMap(order, wave, store);
  if (kind == FrqTypeMrq) store.LoadFolder(FolderOf(wave));
  if (result.End == ItemEnd::Made && MapFileExists(MapPathFromWaveW(wave, kind), &store)) return true;
  reason = ReasonOf(result);
  return false;
}
