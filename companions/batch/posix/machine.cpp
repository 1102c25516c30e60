#include "batch/machine.h"

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "base/path.h"
#include "base/posix/nativepath.h"
#include "base/utf8.h"
#include "frqmap/mapfiles.h"
#include "frqmap/mrqstore.h"

extern char** environ;

namespace {

void (*interrupted)() = nullptr;

std::string Environment(const char* name) {
  const char* const value = std::getenv(name);
  return value ? value : "";
}

// The name that programs of Windows have for a file of this system.
std::string WineForm(const std::wstring& path) {
  std::string form = "Z:" + NativePath(path);
  std::ranges::replace(form, '/', '\\');
  return form;
}

}  // namespace

std::wstring FullPathOfTyped(const std::string& typed) {
  std::error_code error;
  std::string path = std::filesystem::absolute(typed, error).lexically_normal().string();
  while (path.size() > 1 && path.ends_with('/')) path.pop_back();
  return PathFromNative(error ? typed : path);
}

std::filesystem::path FilesystemPath(const std::wstring& path) {
  return NativePath(path);
}

std::wstring TypedForm(std::wstring path) {
  return WideOf(NativePath(path));
}

std::wstring KeepingFolder() {
  std::string data = Environment("XDG_DATA_HOME");
  if (data.empty() || !data.starts_with('/')) {
    const std::string home = Environment("HOME");
    if (home.empty()) return {};
    data = home + "/.local/share";
  }
  return PathFromNative(data + "/marlit/batch");
}

std::uint32_t ProcessNumber() {
  return static_cast<std::uint32_t>(getpid());
}

void PrepareProcess() {
  signal(SIGPIPE, SIG_IGN);
}

bool IsTerminal(std::FILE* file) {
  return isatty(fileno(file)) == 1;
}

// A second request ends the program at once, as users expect of one that does not answer.
void WhenInterrupted(void (*handler)()) {
  interrupted = handler;
  struct sigaction action {};
  action.sa_handler = [](int) { interrupted(); };
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  sigemptyset(&action.sa_mask);
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) sigaction(number, &action, nullptr);
}

// A program of Windows runs under Wine, and in a group of its own: the keys that end this program are not meant for it.
bool RunResampler(const std::wstring& resampler, const std::wstring& wave, FrqType kind, MrqStore& store,
                  std::string& reason) {
  const std::wstring map = MapPathFromWaveW(wave, kind);
  DeleteMapFile(map, &store, false);
  std::string program = NativePath(resampler);
  std::string waveForm = WineForm(wave);
  std::array<std::string, 9> words = {"wine", program, waveForm, "nul", "100", "100", "GN", "0", "50"};
  std::array<char*, 10> arguments{};
  std::ranges::transform(words, arguments.begin(), [](std::string& word) { return word.data(); });
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
  pid_t process = 0;
  const int error = posix_spawnp(&process, "wine", nullptr, &attributes, arguments.data(), environ);
  posix_spawnattr_destroy(&attributes);
  if (error != 0) {
    reason = std::string("wine cannot be started: ") + std::strerror(error);
    return false;
  }
  int status = 0;
  while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  if (kind == FrqTypeMrq) store.LoadFolder(FolderOf(wave));
  if (MapFileExists(map, &store)) return true;
  reason = "the resampler has made no map (its code is " + std::to_string(WEXITSTATUS(status)) + ")";
  return false;
}
