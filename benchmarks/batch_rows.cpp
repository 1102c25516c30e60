// marlit-batch as a whole process on banks of thousands, natively, against bare programs that do the same to the same
// files on as many threads; and its peak memory.
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <thread>

#include "companions/resampler/render.h"
#include "figure.h"
#include "frqmap/freq0003.h"
#include "knownvoices.h"
#include "measuring.h"
#include "rows.h"

namespace {

namespace fs = std::filesystem;

constexpr int kSyllables = 5000;
constexpr int kFewSyllables = 1000;
constexpr double kSeconds = 0.3;
constexpr double kLongSeconds = 1.5;  // a wave that a map is made of
constexpr int kWavesOfResampler = 60;
constexpr int kWavesOfProcesses = 200;

enum class Maps { Fit, OfOtherWaves, None };

struct Files {
  Bytes wave, map;
};

void Write(const fs::path& path, const Bytes& bytes) {
  std::ofstream file(path, std::ios::binary);
  file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  Require(static_cast<bool>(file.flush()), "a bank cannot be written");
}

Sound Repeated(const std::vector<float>& voice, double seconds) {
  Sound sound;
  sound.samples.resize(static_cast<std::size_t>(seconds * sound.rate));
  // The sound begins where all of the voices sound.
  for (std::size_t i = 0; i < sound.samples.size(); ++i) sound.samples[i] = voice[(i + 9000) % voice.size()];
  return sound;
}

// A map of another wave is half as long again: the check then goes by its course, and listens to nothing.
std::vector<Files> FilesOf(double seconds, Maps maps) {
  std::vector<Files> files;
  for (const voices::KnownVoice& known : voices::All()) {
    if (known.sampleRate != 44100) continue;
    const std::vector<float> voice = voices::Sound(known);
    const Sound sound = Repeated(voice, seconds);
    files.push_back({EncodeWaveFile(To16Bits(sound.samples), sound.rate), {}});
    if (maps == Maps::None) continue;
    const FrqMap map = MakeMap(maps == Maps::Fit ? sound : Repeated(voice, 1.5 * seconds));
    files.back().map = EncodeFreq0003(map, FrqTypeFrq);
  }
  return files;
}

// A voicebank in a folder of its own for temporary files, and what the program keeps beside it.
class BatchBank {
 public:
  BatchBank(int count, double seconds, Maps maps) {
    std::string name = fs::temp_directory_path() / "marlit_bench_XXXXXX";
    Require(mkdtemp(name.data()) != nullptr, "no folder for a bank");
    root_ = name;
    fs::create_directory(Folder());
    const std::vector<Files> files = FilesOf(seconds, maps);
    for (int i = 0; i < count; ++i) {
      std::array<char, 32> base{};
      std::snprintf(base.data(), base.size(), "_あかさ%04d", i + 1);
      const Files& of = files[static_cast<std::size_t>(i) % files.size()];
      Write(Folder() / (base.data() + std::string(".wav")), of.wave);
      if (maps != Maps::None) Write(Folder() / (base.data() + std::string("_wav.frq")), of.map);
    }
  }
  ~BatchBank() {
    std::error_code error;
    fs::remove_all(root_, error);
  }
  BatchBank(const BatchBank&) = delete;
  BatchBank& operator=(const BatchBank&) = delete;

  fs::path Root() const { return root_; }
  fs::path Folder() const { return root_ / "bank"; }
  void Remove(std::string_view ending) const {
    std::vector<fs::path> gone;
    for (const auto& file : fs::directory_iterator(Folder())) {
      if (file.path().native().ends_with(ending)) gone.push_back(file.path());
    }
    for (const fs::path& path : gone) fs::remove(path);
  }

 private:
  fs::path root_;
};

struct Ended {
  double ms = 0.0;
  long peakKiB = 0;
  int code = -1;
};

fs::path Beside(const char* program) {
  return fs::read_symlink("/proc/self/exe").parent_path() / program;
}

Ended Run(const BatchBank& bank, const std::string& command) {
  const std::string line = "XDG_DATA_HOME='" + (bank.Root() / "data").string() + "' '" +
                           Beside("bare_batch").string() + "' run '" + (bank.Root() / "output").string() + "' " +
                           command;
  Ended ended;
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> told(popen(line.c_str(), "r"), &pclose);
  Require(told && std::fscanf(told.get(), "%lf %ld %d", &ended.ms, &ended.peakKiB, &ended.code) == 3, "nothing ran");
  return ended;
}

// Runs a command to its end. To find something, or not to find it, is no failure.
Ended Batch(const BatchBank& bank, const std::string& words) {
  const std::string program = "'" + Beside("marlit-batch").string() + "' ";
  const Ended ended = Run(bank, program + words + " '" + bank.Folder().string() + "'");
  Require(ended.code == 0 || ended.code == 1, "marlit-batch has failed");
  return ended;
}

double Bare(const BatchBank& bank, const std::string& way) {
  const std::string threads = std::to_string(std::max(1u, std::thread::hardware_concurrency()));
  const Ended ended =
      Run(bank, "'" + Beside("bare_batch").string() + "' " + way + " '" + bank.Folder().string() + "' " + threads);
  Require(ended.code == 0, "bare_batch has failed");
  return ended.ms;
}

// The time of a command against a bare way; files of the endings are no part of the bank and go before each.
struct Pair {
  int syllables;
  double seconds;
  Maps maps;
  const char* words;
  const char* way;
  const char* made;
};

class OfBank : public Work {
 public:
  explicit OfBank(const Pair& pair) : pair_(pair), bank_(pair.syllables, pair.seconds, pair.maps) {}
  double Measured() override {
    Clear();
    return Batch(bank_, pair_.words).ms;
  }
  double Yardstick() override {
    Clear();
    return Bare(bank_, pair_.way);
  }

 private:
  void Clear() const {
    if (*pair_.made) bank_.Remove(pair_.made);
    bank_.Remove(".copy");
  }

  const Pair pair_;
  const BatchBank bank_;
};

Row RowOfBank(const char* name, double aim, const Pair& pair) {
  return {name, "ms", aim, [=] { return std::make_unique<OfBank>(pair); }};
}

// A wave of a bank, by the analysis in the program, against the resampler that comes along as a process for each wave,
// as many at a time as there are cores.
class OfResampler : public Work {
 public:
  explicit OfResampler(const std::string& resampler) : words_("create --all --resampler '" + resampler + "'") {}
  double Measured() override { return Batch(bank_, "create --all").ms / kWavesOfResampler; }
  double Yardstick() override { return Batch(bank_, words_).ms / kWavesOfResampler; }

 private:
  const std::string words_;
  const BatchBank bank_{kWavesOfResampler, kLongSeconds, Maps::None};
};

constexpr std::array<const char*, 3> kCommands = {"list", "check --note A3", "convert --from frq --to frc"};

long PeakOf(const BatchBank& bank, const std::string& words) {
  bank.Remove(".frc");
  return Batch(bank, words).peakKiB;
}

// The memory of the command that takes most, in bytes for each syllable more.
double BytesOfSyllable() {
  const BatchBank few(kFewSyllables, kSeconds, Maps::OfOtherWaves), many(kSyllables, kSeconds, Maps::OfOtherWaves);
  double most = 0.0;
  for (const std::string command : kCommands) {
    const long more = PeakOf(many, command) - PeakOf(few, command);
    most = std::max(most, 1024.0 * static_cast<double>(more) / (kSyllables - kFewSyllables));
  }
  return most;
}

// The same in MB for each thread more. The check listens here.
double MegabytesOfThread() {
  const BatchBank bank(kFewSyllables, kSeconds, Maps::Fit);
  double most = 0.0;
  for (const std::string command : kCommands) {
    const long more = PeakOf(bank, command + " --jobs 4") - PeakOf(bank, command + " --jobs 1");
    most = std::max(most, static_cast<double>(more) / 1024.0 / 3.0);
  }
  return most;
}

}  // namespace

std::vector<Row> BatchRows(const std::string& resampler) {
  return {
      RowOfBank("batch_list", 1.5, {kSyllables, kSeconds, Maps::OfOtherWaves, "list", "heads", ""}),
      RowOfBank("batch_check", 1.5, {kSyllables, kSeconds, Maps::OfOtherWaves, "check --note A3", "rules", ""}),
      RowOfBank("batch_hearing", 1.2, {kFewSyllables, kSeconds, Maps::Fit, "check", "hearings", ""}),
      RowOfBank("batch_convert", 1.5,
                {kSyllables, kSeconds, Maps::OfOtherWaves, "convert --from frq --to frc", "copies", ".frc"}),
      RowOfBank("batch_create", 1.2, {kFewSyllables, kLongSeconds, Maps::None, "create --all", "maps", ".frq"}),
      RowOfBank("batch_bank", 1.0, {kWavesOfProcesses, kLongSeconds, Maps::None, "create --all", "processes", ".frq"}),
      {"batch_resampler", "ms", 1.0 / 15.0, [=] { return std::make_unique<OfResampler>(resampler); }},
      FigureRow("batch_syllable", "bytes", 1000.0, BytesOfSyllable),
      FigureRow("batch_thread", "MB", 4.0, MegabytesOfThread),
  };
}
