// Text files of voicebanks and of the host from the disk: their encodings and grammars together, each against what an
// independent reader made of it.
#include <gtest/gtest.h>

#include "native/vectors.h"
#include "resampler/moreconfig.h"
#include "voicebank/inifile.h"
#include "voicebank/libfile.h"
#include "voicebank/otoini.h"
#include "voicebank/pluginfile.h"
#include "win/scratch.h"

namespace {

using vectors::Json;
using vectors::Wide;

std::string Utf8(const std::wstring& text) {
  const std::u8string utf8 = std::filesystem::path(text).u8string();
  return std::string(utf8.begin(), utf8.end());
}

// Names of files in what is expected go out from the folder of the test data.
class TextFilesOnDisk : public testing::Test {
 protected:
  TextFilesOnDisk() { std::filesystem::current_path(MARLIT_TEST_DATA); }

  const Json expected_ = Json::parse(vectors::OpenData("texts.json"));
};

Json Describe(const UtauCommon::NOTE& note) {
  Json entries = Json::object();
  for (const auto& [key, value] : note.entries) entries[Utf8(key)] = Utf8(value);
  const Json name = entries.contains("[]") ? entries["[]"] : Json();
  return {{"name", name},       {"type", int{note.GetType()}}, {"index", note.index},
          {"entries", entries}, {"position", note.position},   {"length", note.GetLength()}};
}

Json Describe(const UtauCommon::OTOENTRY& e) {
  return {Utf8(e.subfolder), Utf8(e.wave), Utf8(e.alias), e.offset, e.consonant, e.cutoff, e.preutterance, e.overlap};
}

TEST_F(TextFilesOnDisk, EveryEncodingIsToldByItsMark) {
  for (const Json& test : expected_["text"]) {
    LibReadFile file(CharsetRule{test["rule"].get<std::uint32_t>()});
    EXPECT_EQ(file.Open(L"oto.ini.missing"), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_TRUE(file.Failed());
    EXPECT_EQ(file.Open(Wide(test["file"])), DWORD{ERROR_SUCCESS}) << test["case"];
    Json lines = Json::array();
    for (std::wstring line; file.ReadLine(line);) lines.push_back(Utf8(line));
    EXPECT_EQ(lines, test["lines"]) << test["case"];
    EXPECT_EQ(Json(static_cast<std::uint32_t>(file.Encoding())), test["encoding"]) << test["case"];
  }
}

TEST_F(TextFilesOnDisk, AKeyOfAnIniFileIsFoundWithItsValue) {
  for (const Json& test : expected_["ini"]) {
    UtauCommon::INIFILE file;
    file.Load(Wide(test["file"]));
    for (const auto& [key, value] : test["values"].items()) {
      EXPECT_EQ(Json(Utf8(file.GetValue(Wide(key), L"none"))), value) << test["file"] << key;
    }
    EXPECT_EQ(Json(Utf8(file.GetValue(L"Tool2Path", L"default"))), test["Tool2Path"]) << test["file"];
    file.Load(L"missing.ini");
    EXPECT_EQ(file.GetValue(L"missing", L"default"), L"default");
  }
}

TEST_F(TextFilesOnDisk, ThePluginFileGivesItsSectionsAndTheWavesOfItsNotes) {
  for (const Json& test : expected_["plugin"]) {
    const std::wstring name = Wide(test["file"]);
    EXPECT_EQ(Json(IsPluginFile(name)), test["is_plugin_file"]) << test["file"];
    UtauCommon::NOTELIST list;
    list.Load(name);
    Json notes = Json::array(), numbered = Json::array(), waves = Json::array();
    for (const UtauCommon::NOTE& note : list.notes) notes.push_back(Describe(note));
    EXPECT_EQ(notes, test["notes"]) << test["file"];
    EXPECT_EQ(Json(Utf8(list.GetVoiceDir())), test["voice_dir"]) << test["file"];
    EXPECT_EQ(Json(Utf8(list.GetSetting(L"Project"))), test["project"]) << test["file"];
    EXPECT_EQ(Json(Utf8(list.GetSetting(L"Tool2"))), test["tool2"]) << test["file"];
    UtauCommon::OTOINI oto;
    oto.Load(list.GetVoiceDir());
    const UtauCommon::NOTE* note = list.FindFirstNumbered();
    for (; note && note->GetType() == UtauCommon::NoteTypeNumbered; note = note->next) {
      numbered.push_back(Utf8(note->GetValue(L"[]")));
      const Json wave = Utf8(ResolveNoteWavePath(*note, oto));
      if (wave != "" && std::find(waves.begin(), waves.end(), wave) == waves.end()) waves.push_back(wave);
    }
    EXPECT_EQ(numbered, test["numbered"]) << test["file"];
    EXPECT_EQ(waves, test.value("wave_paths", Json::array())) << test["file"];
  }
  EXPECT_FALSE(IsPluginFile(L"") || IsPluginFile(L"plugin") || IsPluginFile(L"plugin\\missing"));
}

TEST_F(TextFilesOnDisk, AVoicebanksSyllablesAreThoseOfItsFolderAndTheFoldersInIt) {
  const Json& test = expected_["oto"];
  UtauCommon::OTOINI oto;
  EXPECT_EQ(oto.Load(L"voice"), 0);
  Json entries = Json::array();
  for (const UtauCommon::OTOENTRY& entry : oto.entries) entries.push_back(Describe(entry));
  EXPECT_EQ(entries, test["entries"]);
  for (const Json& text : test["resolve"]) {
    EXPECT_EQ(Json(Utf8(oto.ResolveWavePath(Wide(text["text"])))), text["path"]) << text["text"];
  }
  for (const Json& load : test["other_loads"]) {
    EXPECT_EQ(Json(oto.Load(Wide(load["load"]))), load["result"]) << load["load"];
    EXPECT_EQ(Json(oto.entries.size()), load["entries"].is_array() ? Json(load["entries"].size()) : load["entries"]);
    EXPECT_EQ(Json(Utf8(oto.baseFolder)), load["base_folder"]) << load["load"];
  }
}

TEST_F(TextFilesOnDisk, TheResamplersOwnSettingsTellWhetherItIsCompatible) {
  const ScratchFolder folder;
  EXPECT_FALSE(IsMoreCompatibilityOff(folder.Path(L"r.exe"))) << "no settings";
  for (const Json& test : expected_["moreconfig"]) {
    folder.Write(L"moreconfig.txt", vectors::FileBytes(test["file"]));
    EXPECT_EQ(Json(IsMoreCompatibilityOff(folder.Path(L"r.exe"))), test["off"]) << test["file"];
  }
}

}  // namespace
