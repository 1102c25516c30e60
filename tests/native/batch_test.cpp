// marlit-batch on real folders: what each command leaves, says and ends with.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "batch/program.h"
#include "batch/workers.h"
#include "native/testdata.h"
#include "samplebank/bank.h"

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

// The sample voicebank in a folder of the test's own, where the program keeps its old maps as well.
struct BatchTest : testing::Test {
  BatchTest() : root_(fs::temp_directory_path() / ("marlit-batch-test-" + std::to_string(getpid()))) {
    fs::remove_all(root_);
    setenv("XDG_DATA_HOME", (root_ / "data").c_str(), 1);
    MakeBank("bank");
  }
  ~BatchTest() override { fs::remove_all(root_); }

  void MakeBank(const std::string& name) const {
    static const std::vector<BankFile> files = MakeSampleBank();
    for (const BankFile& file : files) {
      const fs::path path = root_ / name / fs::path(file.path);
      fs::create_directories(path.parent_path());
      std::ofstream(path, std::ios::binary)
          .write(reinterpret_cast<const char*>(file.bytes.data()), static_cast<std::streamsize>(file.bytes.size()));
    }
  }
  std::string Bank(const std::string& name = "bank") const { return root_ / name; }

  int Run(const std::vector<std::string>& arguments) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const int code = RunProgram(arguments);
    out_ = testing::internal::GetCapturedStdout();
    faults_ = testing::internal::GetCapturedStderr();
    return code;
  }
  // Runs are told apart by the second in which they begin.
  int RunInANewSecond(const std::vector<std::string>& arguments) {
    for (const std::time_t now = std::time(nullptr); std::time(nullptr) == now;) std::this_thread::yield();
    return Run(arguments);
  }
  std::vector<Json> Lines() const {
    std::vector<Json> lines;
    std::istringstream text(out_);
    for (std::string line; std::getline(text, line);) lines.push_back(Json::parse(line));
    return lines;
  }

  // All files of a folder with their bytes.
  static std::map<std::string, std::string> Content(const fs::path& folder) {
    std::map<std::string, std::string> files;
    for (const auto& item : fs::recursive_directory_iterator(folder)) {
      if (!item.is_regular_file()) continue;
      std::ifstream file(item.path(), std::ios::binary);
      files[fs::relative(item.path(), folder)] = std::string(std::istreambuf_iterator<char>(file), {});
    }
    return files;
  }

  const fs::path root_;
  std::string out_, faults_;
};

TEST_F(BatchTest, FindsThePlantedSyllablesTakesOverWhatItOffersAndPutsItBack) {
  const auto before = Content(Bank());
  EXPECT_EQ(Run({"check", Bank(), "--json"}), 1);
  std::map<std::string, std::string> reasons;
  for (const Json& line : Lines()) {
    if (line["type"] == "finding") reasons[line["wave"]] = line["reason"];
  }
  const std::map<std::string, std::string> planted = {
      {"か.wav", "octave-high"}, {"さ.wav", "noise"}, {"ら.wav", "octave-low"}};
  EXPECT_EQ(reasons, planted);
  EXPECT_EQ(Run({"check", Bank(), "--fix", "--dry-run"}), 1);
  EXPECT_EQ(Content(Bank()), before);
  EXPECT_EQ(Run({"check", Bank(), "--min-frames", "100"}), 0) << out_;

  EXPECT_EQ(Run({"check", Bank(), "--fix"}), 1);
  EXPECT_NE(Content(Bank()), before);
  const auto fixed = Content(Bank());
  EXPECT_EQ(Run({"check", Bank()}), 0) << out_;
  EXPECT_EQ(RunInANewSecond({"restore", Bank()}), 0) << faults_;
  EXPECT_EQ(Content(Bank()), before);
  EXPECT_EQ(RunInANewSecond({"restore", Bank()}), 0) << "what was put back can be taken back";
  EXPECT_EQ(Content(Bank()), fixed);
}

TEST_F(BatchTest, WithoutKeepingThereIsNothingToPutBack) {
  EXPECT_EQ(Run({"shift", Bank(), "--cents", "100", "--no-keep"}), 0);
  EXPECT_EQ(Run({"restore", Bank()}), 3);
  EXPECT_EQ(Run({"shift", Bank(), "--cents", "-100"}), 0);
  EXPECT_EQ(Run({"restore", Bank(), "--list"}), 0);
  EXPECT_EQ(out_.substr(0, 3), "1: ");
}

// The maps that come of it are compared by the families of maps; here each kind is read and written in all folders.
TEST_F(BatchTest, ConvertsAllMapsFromEachKindToTheNext) {
  const std::string kinds[] = {"frq", "mrq", "dio", "pmk", "frc", "frq"};
  for (std::size_t i = 1; i < std::size(kinds); ++i) {
    EXPECT_EQ(Run({"convert", Bank(), "--from", kinds[i - 1], "--to", kinds[i]}), 0) << faults_;
    EXPECT_EQ(Run({"list", Bank(), "--kind", kinds[i], "--json"}), 0);
    const std::vector<Json> lines = Lines();
    const auto isOfKind = [&](const Json& line) { return line.value("kind", Json()) == kinds[i]; };
    EXPECT_EQ(std::ranges::count_if(lines, isOfKind), 11) << kinds[i];
    for (const auto& [name, bytes] : Content(Bank())) {
      if (name.ends_with("." + kinds[i - 1])) fs::remove(fs::path(Bank()) / name);
    }
  }
}

TEST_F(BatchTest, MakesWhatIsMissingAndLeavesTheRest) {
  const auto before = Content(Bank());
  EXPECT_EQ(Run({"create", Bank(), "--json"}), 0) << faults_;
  EXPECT_EQ(Lines().back()["maps"], 3);
  auto after = Content(Bank());
  for (const char* const made : {"mi_wav.frq", "お_wav.frq", "強/い_wav.frq"}) EXPECT_EQ(after.erase(made), 1u) << made;
  EXPECT_EQ(after, before);
  EXPECT_EQ(Run({"create", Bank(), "--kind", "mrq", "--only", "?.wav"}), 0);
  EXPECT_EQ(Run({"list", Bank(), "--kind", "mrq", "--json"}), 0);
  std::size_t maps = 0;
  for (const Json& line : Lines()) maps += line.value("kind", Json()) == "mrq" ? 1 : 0;
  EXPECT_EQ(maps, 11u) << "all but those of longer names";
}

TEST_F(BatchTest, CurvesComeBackBitForBit) {
  const auto before = Content(Bank());
  EXPECT_EQ(Run({"export", Bank(), "-o", Bank("curves")}), 0) << faults_;
  EXPECT_EQ(Content(Bank("curves")).size(), 11u);
  EXPECT_EQ(Run({"shift", Bank(), "--cents", "700"}), 0);
  EXPECT_NE(Content(Bank()), before);
  EXPECT_EQ(Run({"import", Bank(), "-o", Bank("curves")}), 0) << faults_;
  auto after = Content(Bank());
  // The key is no part of a curve.
  const auto frames = [](std::string file) { return file.substr(40); };
  for (const auto& [name, bytes] : before) {
    if (!name.ends_with(".frq")) continue;
    EXPECT_EQ(frames(after[name]), frames(bytes)) << name;
  }
}

TEST_F(BatchTest, WhatCannotBeReadOrWrittenIsToldAndTheRestIsDone) {
  fs::create_directories(root_ / "empty");
  for (const std::string& folder : {Bank("nowhere"), Bank("empty"), Bank() + "/か.wav"}) {
    EXPECT_EQ(Run({"list", folder, Bank()}), 3) << folder;
    EXPECT_NE(faults_.find(folder), std::string::npos) << faults_;
    EXPECT_NE(out_.find("ら.wav"), std::string::npos);
  }
  std::ofstream(fs::path(Bank()) / "か_wav.frq") << "no map";
  fs::permissions(fs::path(Bank()) / "ら_wav.frq", fs::perms::owner_read);
  EXPECT_EQ(Run({"check", Bank(), "--fix"}), 3);
  EXPECT_NE(faults_.find("か.wav: the frq map cannot be read: no map of its kind"), std::string::npos) << faults_;
  EXPECT_NE(faults_.find("ら.wav: the frq map cannot be written: access denied"), std::string::npos) << faults_;
  EXPECT_EQ(Run({"check", Bank(), "--only", "さ*"}), 0) << "the third one was mended";
}

TEST_F(BatchTest, NamesOfAnyBytesLeadToTheirFiles) {
  const std::string stray = "a\\b \xE3\x81\xFF \n\xF0\x9F\x8E\xA4.wav";
  fs::copy(fs::path(Bank()) / "か.wav", fs::path(Bank()) / stray);
  EXPECT_EQ(Run({"create", Bank(), "--kind", "mrq"}), 0) << faults_;
  EXPECT_EQ(Run({"create", Bank()}), 0) << faults_;
  EXPECT_TRUE(fs::exists(fs::path(Bank()) / (stray.substr(0, stray.size() - 4) + "_wav.frq")));
  EXPECT_EQ(Run({"list", Bank(), "--json", "--only", "a*"}), 0) << faults_;
  EXPECT_EQ(Lines().at(0)["wave"], "a\\b \uFFFD\uFFFD\uFFFD \uFFFD\U0001F3A4.wav");
}

TEST_F(BatchTest, BanksBelowAFolderAreFoundOneByOne) {
  MakeBank("more/deep/other");
  EXPECT_EQ(Run({"list", root_, "--recursive", "--json"}), 0) << faults_;
  EXPECT_EQ(Lines().back()["banks"], 2);
  EXPECT_EQ(Lines().back()["syllables"], 28);
  EXPECT_EQ(Run({"report", root_, "-r", "-o", Bank("page.html")}), 1) << faults_;
  EXPECT_GT(fs::file_size(Bank("page.html")), 20000u);
}

TEST_F(BatchTest, AWrongCallSaysSoAndDoesNothing) {
  const auto before = Content(root_);
  for (const std::string call : {"", "mend @", "list", "check @ --note H9", "create @ --all --missing",
                                 "convert @ --from frq", "convert @ --from frq --to frq", "shift @", "key @",
                                 "list @ --jobs 0"}) {
    std::istringstream words(call);
    std::vector<std::string> arguments(std::istream_iterator<std::string>(words), {});
    std::ranges::replace(arguments, "@", Bank());
    EXPECT_EQ(Run(arguments), 2) << call;
    EXPECT_FALSE(faults_.empty());
  }
  EXPECT_EQ(Run({"check", "--help"}), 0);
  EXPECT_EQ(Content(root_), before);
}

TEST(RunInOrder, TakesEachInItsTurnAndHoldsFew) {
  const std::atomic<bool> stop = false;
  std::atomic<int> done = 0;
  std::size_t next = 0;
  int mostAhead = 0;
  RunInOrder<std::size_t>(
      2000, 4, stop,
      [&](std::size_t index) {
        ++done;
        return index;
      },
      [&](std::size_t index, std::size_t result) {
        EXPECT_EQ(index, next++);
        EXPECT_EQ(result, index);
        mostAhead = std::max(mostAhead, done - static_cast<int>(index));
      });
  EXPECT_EQ(next, 2000u);
  EXPECT_LE(mostAhead, 4 * 32 + 1);
}

TEST(RunInOrder, EndsEarlyWithAllThatWasBegunTaken) {
  std::atomic<bool> stop = false;
  std::atomic<std::size_t> begun = 0, taken = 0;
  RunInOrder<int>(
      100000, 3, stop, [&](std::size_t) { return static_cast<int>(++begun); },
      [&](std::size_t, int) { stop = ++taken > 20; });
  EXPECT_EQ(taken, begun);
  EXPECT_LT(taken, 1000u);
  const auto fails = [](std::size_t index) -> int { return index == 7 ? throw std::runtime_error("seven") : 0; };
  stop = false;
  EXPECT_THROW(RunInOrder<int>(100, 2, stop, fails, [](std::size_t, int) {}), std::runtime_error);
}

}  // namespace
