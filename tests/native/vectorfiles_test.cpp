// The share of the families in expected.json that takes real files, of kinds that are read without a code page: waves,
// and maps of every kind with the store. Names in it go out from the folder of the vectors.
#include <filesystem>
#include <set>

#include "frqmap/mapfiles.h"
#include "frqmap/mrqsaving.h"
#include "frqmap/wavelevels.h"
#include "native/family.h"
#include "native/scratchfolder.h"
#include "resampler/commandline.h"
#include "voicebank/textlines.h"
#include "voicebank/waveheader.h"

namespace {

using testdata::Json, testdata::Utf8, testdata::Wide;

// The folder of this process, for a test.
struct AtVectors {
  AtVectors() { std::filesystem::current_path(testdata::Path(Family::Folder())); }
  ~AtVectors() { std::filesystem::current_path(before_); }

 private:
  const std::filesystem::path before_ = std::filesystem::current_path();
};

Json Describe(const WaveHeader& wave, int result) {
  const WaveFormat& f = wave.format;
  return Named(
      "result format_tag channels samples_per_sec avg_bytes_per_sec block_align bits_per_sample extra_size "
      "data_size loaded",
      {result, f.formatTag, f.channels, f.samplesPerSec, f.avgBytesPerSec, f.blockAlign, f.bitsPerSample, f.extraSize,
       wave.dataSize, wave.loaded});
}

TEST(vectors, WaveFiles) {
  const AtVectors here;
  Family::Each("waves", [](Family& family, const Json& test) {
    const std::wstring path = Wide(test["file"]);
    WaveHeader wave;
    for (const char* const load : {"header_only", "full"}) {
      const int result = wave.Load(path, load[0] == 'h');
      Json expected = test[load];
      expected.erase("samples_sha256");
      family.Expect(Describe(wave, result), expected);
      // Samples are as they lie in the file, but for an AIFF's of 16 bits: of these the levels tell.
      const Bytes file = Family::File(test["file"]);
      const bool areThere = !wave.samples.empty() && (file[0] == 'R' || wave.format.bitsPerSample != 16);
      EXPECT_FALSE(areThere && std::ranges::search(file, wave.samples).empty()) << test["file"];
    }
    std::vector<double> levels;
    family.Expect(ReadWaveLevels(path, levels, 256), test["levels_256"]["result"]);
    family.Expect(levels, test["levels_256"]["values"], 1e-12);
    if (!test.contains("frames")) return;
    family.Expect(ReadSamplesPerChannel(path), test["frames"]);
    wave.Load(path, true);
    family.Expect(RenderLengthMs(wave.format, wave.dataSize), test["render_length_ms"]);
  });
}

constexpr auto ExpectedTime = [] { return std::int32_t{0x5EEDC10C}; };

// Saved as each kind into a folder that holds nothing but the wave.
void ExpectSaves(Family& family, FrqMap map, const Json& test) {
  for (const auto& [kind, save] : test["saves"].items()) {
    SCOPED_TRACE(kind);
    if (save.contains("unspecified")) continue;
    const ScratchFolder folder;
    folder.Write(L"other file");
    const std::string wave = test["wave"].is_null() ? "" : test["wave"];
    if (!wave.empty()) folder.Write(Wide(wave.substr(wave.rfind('/') + 1)), Family::File(wave));
    MrqStore store(ExpectedTime);
    const std::wstring path = folder.Path(Wide(save["name"]));
    family.Expect(map.Save(path, &store), save["result"]);
    const std::optional<Bytes> file = ReadWholeFile(kind == "mrq" ? folder.Path(L"desc.mrq") : path);
    family.Expect(file.has_value(), save["result"] == 0);
    if (file && save["result"] == 0) family.ExpectFile(*file, save);
  }
}

TEST(vectors, MapFiles) {
  const AtVectors here;
  const bool tellsCapitals = !FileExists(L"EXPECTED.JSON");  // the disk, which then finds no "a.wav" in "A.WAV"
  MrqStore store;
  LoadFolders(store);
  Family::Each("maps", [&](Family& family, const Json& test) {
    if (tellsCapitals && test["wave"].is_string() && test["wave"].get<std::string>().ends_with(".WAV")) return;
    std::wstring path = Wide(test.contains("load_as") ? test["load_as"] : test["file"]);
    std::ranges::replace(path, L'/', L'\\');
    FrqMap map;
    const int result = map.Load(path, &store);
    EXPECT_EQ(map.Loaded, result == 0);
    const std::string load = test["load"];
    if (load != "open") family.Expect(map.Loaded && (map.FrameCount > 0 || load == "ok"), load == "ok");
    if (load != "ok" || !map.Loaded) return;
    ExpectMap(family, map, test);
    ExpectSaves(family, map, test);
  });
}

TEST(vectors, MrqKeys) {
  const AtVectors here;
  Family family("mrq_keys");
  const auto keys = family.Entries()["keys"].get<std::set<std::string>>();
  MrqStore store;
  LoadFolders(store);
  for (const std::string& key : keys) family.Expect(store.Find(Wide(key)).has_value(), true);
  for (const std::string row : Family::Everything()["rows"]) {
    const std::string wave = "voice\\" + row, key = wave.substr(0, wave.rfind('.'));
    family.Expect(MapFileExists(MapPathFromWaveW(Wide(wave), FrqTypeMrq), &store), keys.contains(key));
  }
}

Json Do(MrqStore& store, const ScratchFolder& folder, const std::string& operation, const Json& args) {
  const std::wstring key = folder.Path(Wide(args.value("key", "")));
  if (operation == "AddFolder") return store.AddFolder(folder.Path());
  if (operation == "LoadFolder") return store.LoadFolder(folder.Path());
  if (operation == "WriteEntry") return store.WriteEntry(key);
  if (operation == "RemoveEntry") return store.RemoveEntry(key);
  if (operation == "CompactMrqFile") return CompactMrqFile(folder.Path(L"desc.mrq"), ExpectedTime());
  if (operation == "DeleteMapFile") return DeleteMapFile(folder.Path(Wide(args["path"])), &store, args["keep_entry"]);
  if (operation == "SetEntry") {
    return store.SetEntry(key,
                          {args["hop"], 44100, args["frequencies"].get<std::vector<double>>(), 0, args["unedited"]});
  }
  store.Reload();
  return nullptr;
}

Json Describe(const MrqEntry& e) {
  return Named("hop sample_rate frequencies timestamp unedited",
               {e.Hop, e.SampleRate, e.Frequencies, e.Timestamp, e.Unedited});
}

// After a step of a course of operations.
void ExpectState(Family& family, const MrqStore& store, const ScratchFolder& folder, const Json& course,
                 const Json& step) {
  const std::optional<Bytes> file = ReadWholeFile(folder.Path(L"desc.mrq"));
  family.Expect(file.has_value(), !step["after"].is_null());
  if (file) family.ExpectFile(*file, step["after"]);
  const auto optional = step.value("entries_optional", std::set<std::string>());
  for (const Json& each : course["steps"]) {
    for (const auto& [key, unused] : each["entries"].items()) {
      const std::optional<MrqEntry> entry = store.Find(folder.Path(Wide(key)));
      if (entry || !optional.contains(key)) {
        family.Expect(entry ? Describe(*entry) : Json(), step["entries"].value(key, Json()));
      }
    }
  }
  const auto gone = step.value("files_gone", std::set<std::string>());
  for (const std::string name : course["files"])
    family.Expect(FileExists(folder.Path(Wide(name))), !gone.contains(name));
}

// While a resampler reads the file.
TEST(vectors, Mrq) {
  Family::Each("mrq", [](Family& family, const Json& course) {
    const ScratchFolder folder;
    folder.Write(L"other file");
    if (course["start"].is_string()) folder.Write(L"desc.mrq", Family::File(course["start"]));
    for (const std::string file : course["files"]) folder.Write(Wide(file));
    const auto resampler = Disk().Open(folder.Path(L"desc.mrq"), FileMode::Read);
    MrqStore store(ExpectedTime);
    for (const Json& step : course["steps"]) {
      // Saved as told there, the map would be hidden behind the count: ours mends it, see "mrqfile_test.cpp".
      if (course["case"] == "count-too-low" && step["op"] == "WriteEntry") break;
      SCOPED_TRACE(course["case"].dump() + " " + step["op"].dump() + " " + step["args"].dump().substr(0, 60));
      family.Expect(Do(store, folder, step["op"], step["args"]), step["result"]);
      ExpectState(family, store, folder, course, step);
    }
  });
}

TEST(vectors, TextEncodings) {
  Family::Each("text", [](Family& family, const Json& test) {
    const Bytes bytes = Family::File(test["file"]);
    const std::string_view file(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const TextEncoding encoding = DetectEncoding(file, CharsetRule{test["rule"].get<std::uint32_t>()});
    family.Expect(static_cast<std::uint32_t>(encoding), test["encoding"]);
    std::string_view rest = SkipByteOrderMark(file), line;
    for (const std::string expected : test["lines"]) {
      ASSERT_TRUE(CutLine(rest, line));
      const bool isPlain = std::ranges::all_of(expected, [](char c) { return c > 0; });
      EXPECT_TRUE(line == expected || (!isPlain && encoding == TextEncoding::ShiftJis)) << line;
    }
    EXPECT_FALSE(CutLine(rest, line));
  });
}

}  // namespace
