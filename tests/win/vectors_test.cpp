// The share of the families in expected.json that takes code pages, windows or settings: texts, the lists of voicebanks
// and of hosts. Names in it go out from the folder of the vectors.
#include <windows.h>

#include "app/mapsearch.h"
#include "native/family.h"
#include "resampler/moreconfig.h"
#include "resampler/resamplerkind.h"
#include "voicebank/inifile.h"
#include "voicebank/libfile.h"
#include "voicebank/otoini.h"
#include "voicebank/pluginfile.h"
#include "win/scratch.h"
#include "window/keptfolder.h"

namespace {

using testdata::Json, testdata::Utf8, testdata::Wide;

struct vectors : testing::Test {
  vectors() { std::filesystem::current_path(testdata::Path(Family::Folder())); }

  const KeptFolder current_;
};

TEST_F(vectors, FrameEstimates) {
  MrqStore store;
  LoadFolders(store);
  ListedFolders listed;
  Family::Each("frame_estimates", [&](Family& family, const Json& test) {
    for (const std::string kind : {"frq", "frc", "pmk", "dio", "mrq"}) {
      const std::wstring wave = L"voice\\" + Wide(test["row"]);
      family.Expect(FindMap(wave, FrqTypeFromPathW(Wide("x." + kind)), listed, store).FrameEstimate, test[kind]);
    }
  });
}

TEST_F(vectors, Text) {
  Family::Each("text", [](Family& family, const Json& test) {
    LibReadFile file(CharsetRule{test["rule"].get<std::uint32_t>()});
    EXPECT_EQ(file.Open(Wide(test["file"])), DWORD{ERROR_SUCCESS});
    Json lines = Json::array();
    for (std::wstring line; file.ReadLine(line);) lines.push_back(Utf8(line));
    family.Expect(lines, test["lines"]);
    family.Expect(static_cast<std::uint32_t>(file.Encoding()), test["encoding"]);
  });
}

TEST_F(vectors, MoreConfig) {
  const ScratchFolder folder;
  EXPECT_FALSE(IsMoreCompatibilityOff(folder.Path(L"r.exe"))) << "no settings";
  Family::Each("moreconfig", [&](Family& family, const Json& test) {
    folder.Write(L"moreconfig.txt", Family::File(test["file"]));
    family.Expect(IsMoreCompatibilityOff(folder.Path(L"r.exe")), test["off"]);
  });
}

TEST_F(vectors, Ini) {
  Family::Each("ini", [](Family& family, const Json& test) {
    UtauCommon::INIFILE file;
    file.Load(Wide(test["file"]));
    for (const auto& [key, value] : test["values"].items()) {
      family.Expect(Utf8(file.GetValue(Wide(key), L"none")), value);
    }
    family.Expect(Utf8(file.GetValue(L"Tool2Path", L"default")), test["Tool2Path"]);
    file.Load(L"missing.ini");
    family.Expect(Utf8(file.GetValue(L"missing", L"default")), test["missing"]);
  });
}

Json Describe(const UtauCommon::NOTE& note) {
  Json entries = Json::object();
  for (const auto& [key, value] : note.entries) entries[Utf8(key)] = Utf8(value);
  const Json name = entries.contains("[]") ? entries["[]"] : Json();
  return {{"name", name},       {"type", int{note.GetType()}}, {"index", note.index},
          {"entries", entries}, {"position", note.position},   {"length", note.GetLength()}};
}

TEST_F(vectors, Plugin) {
  Family::Each("plugin", [](Family& family, const Json& test) {
    const std::wstring name = Wide(test["file"]);
    family.Expect(IsPluginFile(name), test["is_plugin_file"]);
    UtauCommon::NOTELIST list;
    list.Load(name);
    Json notes = Json::array(), numbered = Json::array(), waves = Json::array();
    for (const UtauCommon::NOTE& note : list.notes) notes.push_back(Describe(note));
    UtauCommon::OTOINI oto;
    oto.Load(list.GetVoiceDir());
    const UtauCommon::NOTE* note = list.FindFirstNumbered();
    for (; note && note->GetType() == UtauCommon::NoteTypeNumbered; note = note->next) {
      numbered.push_back(Utf8(note->GetValue(L"[]")));
      const Json wave = Utf8(ResolveNoteWavePath(*note, oto));
      if (wave != "" && std::find(waves.begin(), waves.end(), wave) == waves.end()) waves.push_back(wave);
    }
    family.Expect({notes, numbered, Utf8(list.GetVoiceDir()), Utf8(list.GetSetting(L"Project")),
                   Utf8(list.GetSetting(L"Tool2")), waves},
                  {test["notes"], test["numbered"], test["voice_dir"], test["project"], test["tool2"],
                   test.value("wave_paths", Json::array())});
  });
  EXPECT_FALSE(IsPluginFile(L"") || IsPluginFile(L"plugin") || IsPluginFile(L"plugin\\missing"));
}

TEST_F(vectors, Oto) {
  Family family("oto");
  const Json& test = family.Entries();
  UtauCommon::OTOINI oto;
  family.Expect(oto.Load(Wide(test["load"])), test["result"]);
  Json entries = Json::array();
  for (const UtauCommon::OTOENTRY& e : oto.entries) {
    entries.push_back(
        {Utf8(e.subfolder), Utf8(e.wave), Utf8(e.alias), e.offset, e.consonant, e.cutoff, e.preutterance, e.overlap});
  }
  family.Expect(entries, test["entries"]);
  for (const Json& text : test["resolve"]) family.Expect(Utf8(oto.ResolveWavePath(Wide(text["text"]))), text["path"]);
  for (const Json& load : test["other_loads"]) {
    family.Expect(oto.Load(Wide(load["load"])), load["result"]);
    const Json count = load["entries"].is_array() ? Json(load["entries"].size()) : load["entries"];
    family.Expect({oto.entries.size(), Utf8(oto.baseFolder)}, {count, load["base_folder"]});
  }
}

TEST_F(vectors, ResamplerKinds) {
  Family notes("notes");
  for (const Json& test : notes.Entries()["resampler_kind"]) {
    notes.Expect(GetResamplerKind(Wide(test["path"])), test["kind"]);
  }
}

}  // namespace
