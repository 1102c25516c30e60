// The store of desc.mrq entries over real files: what each operation makes of file and memory, several threads and
// several stores at one file, and files that cannot be written.
#include "frqmap/mrqstore.h"

#include <gmock/gmock.h>

#include <set>
#include <thread>

#include "frqmap/mapfiles.h"
#include "frqmap/mrqstream.h"
#include "native/vectors.h"
#include "win/scratch.h"

namespace {

using vectors::Json;
using vectors::Wide;

std::int32_t ExpectedTime() {
  return 0x5EEDC10C;
}

Json Vectors(const char* key) {
  return Json::parse(vectors::OpenData("mrq.json"))[key];
}

MrqEntry EntryOf(const Json& fields) {
  return {fields[0], fields[1], fields[2].get<std::vector<double>>(), fields[3], fields[4]};
}

Json Described(const MrqEntry& entry) {
  return {entry.Hop, entry.SampleRate, entry.Frequencies, entry.Timestamp, entry.Unedited};
}

Json Do(MrqStore& store, const ScratchFolder& folder, const std::string& operation, const Json& args) {
  const std::wstring key = folder.Path(Wide(args.value("key", "")));
  if (operation == "AddFolder") return store.AddFolder(folder.Path());
  if (operation == "LoadFolder") return store.LoadFolder(folder.Path());
  if (operation == "WriteEntry") return store.WriteEntry(key);
  if (operation == "RemoveEntry") return store.RemoveEntry(key);
  if (operation == "CompactMrqFile") return CompactMrqFile(folder.Path(L"desc.mrq"), ExpectedTime());
  if (operation == "DeleteMapFile") return DeleteMapFile(folder.Path(Wide(args["path"])), &store, args["keep_entry"]);
  if (operation == "SetEntry") return store.SetEntry(key, EntryOf(args["entry"]));
  store.Reload();
  return nullptr;
}

// After a step of a course of operations.
void ExpectState(const MrqStore& store, const ScratchFolder& folder, const Json& course, const Json& step) {
  const std::optional<Bytes> file = ReadWholeFile(folder.Path(L"desc.mrq"));
  EXPECT_EQ(file, step["after"].is_null() ? std::nullopt : std::optional(vectors::FileBytes(step["after"])));
  for (const Json& each : course["steps"]) {
    for (const auto& [key, unused] : each["entries"].items()) {
      const std::optional<MrqEntry> entry = store.Find(folder.Path(Wide(key)));
      EXPECT_EQ(entry ? Described(*entry) : Json(), step["entries"].value(key, Json())) << key;
    }
  }
  const std::set<std::string> gone = step.value("files_gone", std::set<std::string>());
  for (const std::string name : course["files"]) EXPECT_NE(FileExists(folder.Path(Wide(name))), gone.contains(name));
}

TEST(MrqStore, EveryOperationLeavesFileAndMemoryAsTheResamplerExpectsThemWhileItReads) {
  for (const Json& course : Vectors("mrq")) {
    const ScratchFolder folder;
    folder.Write(L"other file");
    if (course["start"].is_string()) folder.Write(L"desc.mrq", vectors::FileBytes(course["start"]));
    for (const std::string file : course["files"]) folder.Write(Wide(file));
    const FileHandle resampler(CreateFileW(folder.Path(L"desc.mrq").c_str(), GENERIC_READ,
                                           FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr));
    MrqStore store(&ExpectedTime);
    for (const Json& step : course["steps"]) {
      SCOPED_TRACE(course["case"].dump() + " " + step["op"].dump() + " " + step["args"].dump().substr(0, 60));
      EXPECT_EQ(Do(store, folder, step["op"], step["args"]), step["result"]);
      ExpectState(store, folder, course, step);
    }
  }
}

TEST(MrqStore, MapsOfAVoicebankComeOutWithTheLevelsOfTheirWavesAndGoBackIn) {
  const std::wstring data = Wide(MARLIT_TEST_DATA) + L"\\";
  MrqStore store;
  const Json known = Vectors("mrq_keys");
  for (const std::string folder : known["folders"]) store.LoadFolder(data + Wide(folder));
  for (const std::string key : known["keys"]) EXPECT_TRUE(MapFileExists(data + Wide(key) + L".mrq", &store)) << key;
  EXPECT_FALSE(MapFileExists(data + L"voice\\FU.mrq", &store)) << "keys regard case";
  for (const Json& test : Vectors("maps")) {
    SCOPED_TRACE(test["case"].get<std::string>());
    FrqMap map;
    ASSERT_EQ(map.Load(NarrowPath(data + Wide(test["load_as"])).value_or(""), &store), 0);
    EXPECT_TRUE(map.Hop == test["hop"] && map.SinglePrecision && map.DerivedAverage);
    ASSERT_EQ(map.Frames.size(), test["frequency"].size());
    for (std::size_t i = 0; i < map.Frames.size(); ++i) {
      EXPECT_EQ(map.Frames[i].Frequency, test["frequency"][i]);
      EXPECT_EQ(map.Frames[i].Voiced, test["frequency"][i] > FrqNoPitch);
      EXPECT_NEAR(map.Frames[i].Amplitude, test["amplitude"][i], 1e-9);
    }

    const ScratchFolder folder;
    folder.Write(L"other file");
    MrqStore other(&ExpectedTime);
    const std::wstring name = Wide(test["load_as"]);
    ASSERT_EQ(map.Save(*NarrowPath(folder.Path(name.substr(name.rfind(L'\\') + 1))), &other), 0);
    EXPECT_EQ(ReadWholeFile(folder.Path(L"desc.mrq")), vectors::FileBytes(test["save"]["file"]));
    map.SetFrequency(0, 440.0);
    SaveMap(map, folder.Path(L"edited.wav"), FrqTypeMrq, &other);
    EXPECT_EQ(other.Find(folder.Path(L"edited")).value().Unedited, 0);
  }
}

TEST(MrqStore, SavesOfManyThreadsReachTheFileAndASecondStore) {
  const ScratchFolder folder;
  folder.Write(L"other file");
  MrqStore store;
  store.LoadFolder(folder.Path());
  const auto key = [&](int thread, int save) { return folder.Path(std::to_wstring(thread * 10 + save % 10)); };
  MrqEntry entries[30];
  for (std::size_t save = 0; save < 30; ++save) entries[save].Frequencies.assign(save * 900 + 1, 99.0);
  std::vector<std::jthread> threads;
  for (int thread = 0; thread < 6; ++thread) {
    threads.emplace_back([&, thread] {
      for (int save = 0; save < 30; ++save) {
        EXPECT_EQ(store.SaveEntry(key(thread, save), entries[save]), 0);
        if (save % 10 == 5) store.CompactFiles();
        if (save % 10 == 7) store.LoadFolder(folder.Path());
      }
    });
  }
  threads.clear();
  MrqStore second;
  second.LoadFolder(folder.Path());
  for (int last = 0; last < 60; ++last) {
    const std::optional<MrqEntry> found = second.Find(key(last / 10, last));
    EXPECT_TRUE(found && found->Frequencies == entries[20 + last % 10].Frequencies) << last;
  }
  second.RemoveEntry(key(0, 0));
  store.Reload();
  EXPECT_TRUE(!store.Find(key(0, 0)) && store.Find(key(0, 1)));
}

TEST(MrqStore, ASaveThatFailsTellsWhyAndLeavesTheFileAsItWas) {
  const std::tuple<const char*, DWORD, DWORD> tests[] = {
      {"mrq/02-in-place/desc.mrq", FILE_ATTRIBUTE_READONLY, ERROR_ACCESS_DENIED},
      {"mrq/22-five-bytes/desc.mrq", FILE_ATTRIBUTE_NORMAL, ERROR_HANDLE_EOF}};
  for (const auto& [start, attributes, error] : tests) {
    const ScratchFolder folder;
    folder.Write(L"desc.mrq", vectors::FileBytes(start));
    SetFileAttributesW(folder.Path(L"desc.mrq").c_str(), attributes);
    MrqStore store;
    store.SetEntry(folder.Path(L"na"), {256, 44100, {110.0}, 0, 0});
    EXPECT_EQ(store.WriteEntry(folder.Path(L"na")), -1);
    EXPECT_EQ(GetLastError(), error);
    EXPECT_EQ(ReadWholeFile(folder.Path(L"desc.mrq")), vectors::FileBytes(start));
    SetFileAttributesW(folder.Path(L"desc.mrq").c_str(), FILE_ATTRIBUTE_NORMAL);
  }
}

}  // namespace
