// bare_batch: the yardsticks of marlit-batch, written with nothing else in mind, and the start of them and of it alike.
// It is a program of its own, so that both sides of a row are whole processes that start from the same small one: a
// process begins with the peak memory of the one that has started it.
//
//   bare_batch run FILE PROGRAM ARGUMENT...  runs it with its output in FILE; prints [ms], peak memory [KiB] and code
//   bare_batch heads FOLDER THREADS          reads the first page of each wave and each map whole, and prints a line
//   bare_batch rules FOLDER THREADS          reads each wave and each map whole, and checks the map by its course
//   bare_batch copies FOLDER THREADS         reads each map, notes its bytes in a log, and writes them as another file
//                                            beside it
//   bare_batch maps FOLDER THREADS           reads each wave and makes the map beside it
//   bare_batch map WAVE                      the same with one wave
//   bare_batch processes FOLDER THREADS      the latter, a process for each wave
//   bare_batch hearings FOLDER THREADS       reads each wave and each map and hears what a check asks of the sound
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "base/posix/nativepath.h"
#include "check/checkrecords.h"
#include "check/checkrules.h"
#include "check/hearing.h"
#include "companions/resampler/render.h"
#include "frqmap/freq0003.h"
#include "measuring.h"
#include "voicebank/soundfile.h"

extern char** environ;

namespace {

constexpr std::size_t kPage = 4096;
constexpr std::uint32_t kNothing = 0;

// The count keeps a compiler from leaving out what is read.
std::atomic<std::size_t> came = 0;

int Run(const char* output, char** command) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output, O_WRONLY | O_CREAT | O_TRUNC, 0666);
  posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
  int status = 0;
  rusage used = {};
  const double ms = MillisecondsOf([&] {
    pid_t process = 0;
    const bool isStarted = posix_spawnp(&process, command[0], &actions, nullptr, command, environ) == 0;
    if (!isStarted || wait4(process, &status, 0, &used) < 0) std::exit(2);
  });
  std::printf("%f %ld %d\n", ms, used.ru_maxrss, WIFEXITED(status) ? WEXITSTATUS(status) : -1);
  return 0;
}

// Reads a file, at the most so many bytes of it.
std::vector<char> Read(const std::string& path, std::size_t most) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  struct stat facts {};
  Require(file >= 0 && fstat(file, &facts) == 0, "a file cannot be opened");
  std::vector<char> bytes(std::min(static_cast<std::size_t>(facts.st_size), most));
  Require(read(file, bytes.data(), bytes.size()) == std::ssize(bytes), "a file cannot be read");
  close(file);
  return bytes;
}

// The note says until when the new file may be there in part: a program that loses nothing writes one too.
void Copy(const std::string& from, const std::string& to) {
  static std::atomic<int> logs = 0;
  static thread_local const int log = open((to.substr(0, to.rfind('/')) + "/../log" + std::to_string(logs++)).c_str(),
                                           O_RDWR | O_CREAT | O_CLOEXEC, 0666);
  const std::vector<char> bytes = Read(from, SIZE_MAX);
  Require(pwrite(log, bytes.data(), bytes.size(), 0) == std::ssize(bytes), "the log cannot be written");
  const int file = open(to.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
  Require(file >= 0 && write(file, bytes.data(), bytes.size()) == std::ssize(bytes), "a file cannot be written");
  close(file);
  Require(pwrite(log, &kNothing, sizeof(kNothing), 0) == sizeof(kNothing), "the log cannot be written");
}

// Prints what is seen in a map at a glance, in a line.
void PrintFacts(const std::string& wave, const std::string& map) {
  came += Read(wave, kPage).size();
  const std::vector<char> bytes = Read(map, SIZE_MAX);
  const auto decoded = DecodeFreq0003({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  Require(decoded.has_value(), "a map cannot be read");
  const auto voiced = std::ranges::count_if(decoded->Frames, [](const FrqFrame& frame) { return frame.Voiced; });
  std::printf("%7d %7d %8.2f %8.2f %s\n", decoded->FrameCount, static_cast<int>(voiced), decoded->Average,
              decoded->Frames[0].Frequency, wave.c_str());
}

Sound SoundOf(const std::string& wave) {
  std::optional<Sound> sound = ReadSound(PathFromNative(wave), 120.0);
  Require(sound.has_value(), "a wave cannot be read");
  return std::move(*sound);
}

void Hear(const std::string& wave, const std::string& map) {
  came += Read(map, SIZE_MAX).size();
  const Sound sound = SoundOf(wave);
  const PitchSearch search(sound.samples, sound.rate);
  came += HearingOf(search, sound.samples.size(), sound.rate, 256).Frames.size();
}

void Judge(const std::string& wave, const std::string& map) {
  const std::vector<char> bytes = Read(map, SIZE_MAX);
  auto decoded = DecodeFreq0003({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  Require(decoded.has_value(), "a map cannot be read");
  CheckFrqSettings settings;
  settings.LowNote = settings.HighNote = 57;
  const auto frames = MakeCheckFrames(*decoded, PathFromNative(map));
  const auto regions = MakeCheckRegions(*decoded);
  came += Read(wave, SIZE_MAX).size() + static_cast<std::size_t>(CheckMap(&settings, frames.get(), regions.get()));
}

int WriteMap(const std::string& wave) {
  const Bytes bytes = EncodeFreq0003(MakeMap(SoundOf(wave)), FrqTypeFrq);
  const std::string map = wave.substr(0, wave.size() - 4) + "_wav.frq";
  const int file = open(map.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
  Require(file >= 0 && write(file, bytes.data(), bytes.size()) == std::ssize(bytes), "a map cannot be written");
  close(file);
  return 0;
}

void RunForMap(const std::string& wave) {
  std::string program = std::filesystem::read_symlink("/proc/self/exe").string(), word = "map", path = wave;
  char* const command[] = {program.data(), word.data(), path.data(), nullptr};
  pid_t process = 0;
  int status = -1;
  const bool isStarted = posix_spawn(&process, program.c_str(), nullptr, nullptr, command, environ) == 0;
  Require(isStarted && waitpid(process, &status, 0) > 0 && status == 0, "no map is made");
}

using OfOne = std::function<void(const std::string& wave, const std::string& map)>;

const std::map<std::string, OfOne> kWays = {
    {"heads", PrintFacts},
    {"rules", Judge},
    {"copies", [](const std::string&, const std::string& map) { Copy(map, map + ".copy"); }},
    {"maps", [](const std::string& wave, const std::string&) { WriteMap(wave); }},
    {"processes", [](const std::string& wave, const std::string&) { RunForMap(wave); }},
    {"hearings", Hear},
};

int WorkThrough(const OfOne& way, const char* folder, int threads) {
  std::vector<std::string> waves;
  for (const auto& file : std::filesystem::directory_iterator(folder)) {
    if (file.path().extension() == ".wav") waves.push_back(file.path().string());
  }
  std::ranges::sort(waves);
  std::atomic<std::size_t> next = 0;
  std::vector<std::jthread> pool;
  for (int i = 0; i < threads; ++i) {
    pool.emplace_back([&] {
      for (std::size_t at; (at = next++) < waves.size();) {
        const std::string& wave = waves[at];
        way(wave, wave.substr(0, wave.size() - 4) + "_wav.frq");
      }
    });
  }
  return 0;
}

}  // namespace

int main(int count, char** arguments) {
  const std::string what = count > 3 ? arguments[1] : "";
  if (count == 3 && std::string(arguments[1]) == "map") return WriteMap(arguments[2]);
  if (what == "run") return Run(arguments[2], arguments + 3);
  const auto way = kWays.find(what);
  if (way != kWays.end()) return WorkThrough(way->second, arguments[2], std::atoi(arguments[3]));
  std::fprintf(stderr, "usage: bare_batch run FILE PROGRAM ARGUMENT... | map WAVE | WAY FOLDER THREADS\n");
  return 2;
}
