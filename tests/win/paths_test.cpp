// Voicebanks under any name that the system allows: every kind of map is loaded, saved, converted, made and deleted
// there, and never one of another name in its place.
#include "native/family.h"

#include "base/narrowpath.h"
#include "base/systempath.h"
#include "frqmap/convert.h"
#include "frqmap/mapfiles.h"
#include "frqmap/mrqstore.h"
#include "resampler/mapmaking.h"
#include "voicebank/folderlisting.h"
#include "voicebank/waveheader.h"
#include "win/scratch.h"

namespace {

struct Paths : testing::Test {
  // A folder and a wave in it, both of that name. A second dot does not survive an entry of desc.mrq, and has no part.
  std::wstring AddWave(const std::wstring& name) const {
    std::wstring file = FileNameOf(name);
    std::erase(file, L'.');
    const std::wstring wave = folder_.Path(name + L"\\" + file + L".wav");
    Disk().MakeFolder(FolderOf(wave));
    EXPECT_TRUE(WriteWholeFile(wave, testdata::FileBytes("voice/no.wav")));
    return wave;
  }
  static bool IsListed(const std::wstring& path) {
    const std::optional<FolderListing> listing = FolderListing::Read(FolderOf(path));
    return listing && std::ranges::count(listing->Files(), FileNameOf(path)) == 1;
  }

  const ScratchFolder folder_;
};

std::wstring Deep() {
  std::wstring path = std::wstring(40, L'd');
  for (int i = 1; i < 10; ++i) path += L"\\" + std::wstring(40, L'd');
  return path;
}

const std::wstring kNames[] = {L"José à", L"가나 밤", L"声", L"🎤", L"e\u0301か\u3099", L"a\u0323\u0301", L"¥〜",
                               L"bank.",  L"blank ",   L"aux",  L"NUL.x", std::wstring(240, L'n'), Deep()};

TEST_F(Paths, EveryKindLivesUnderAnyName) {
  const FrqMap map = MapOf({220.0, 55.0, 441.0});
  for (const std::wstring& name : kNames) {
    SCOPED_TRACE(testing::PrintToString(name));
    const std::wstring wave = AddWave(name);
    WaveHeader header;
    EXPECT_EQ(header.Load(wave, false), 0);
    EXPECT_EQ(FullPathOf(wave), wave) << "as an argument";
    MrqStore store;
    for (const FrqType kind : {FrqTypeFrq, FrqTypeFrc, FrqTypePmk, FrqTypeDio, FrqTypeMrq}) {
      FrqMap saved, loaded;
      map.CopyTo(saved);
      const std::wstring file = MapPathFromWaveW(wave, kind);
      EXPECT_EQ(SaveMap(saved, wave, kind, &store), 0) << kind << " " << GetLastError();
      EXPECT_TRUE(IsListed(kind == FrqTypeMrq ? PathIn(FolderOf(wave), L"desc.mrq") : file)) << kind;
      store.Clear();
      store.LoadFolder(FolderOf(wave));
      EXPECT_EQ(LoadMap(loaded, wave, kind, &store), 0) << kind;
      EXPECT_NEAR(loaded.MaxFrequency, 441.0, 1.0) << kind;
      EXPECT_TRUE(DeleteMapFile(MapPathFromWaveW(wave, FrqTypeFrc), &store, false) || kind != FrqTypeFrc);
      EXPECT_TRUE(CanConvertMap(wave, kind, FrqTypeFrc));
      EXPECT_EQ(kind == FrqTypeFrc ? 0 : ConvertMap(wave, kind, FrqTypeFrc, &store), 0) << kind;
      EXPECT_EQ(MapFileExists(MapPathFromWaveW(wave, FrqTypeFrc), &store), kind != FrqTypeFrc);
      EXPECT_TRUE(kind == FrqTypeFrc || DeleteMapFile(file, &store, false)) << kind;
      EXPECT_FALSE(MapFileExists(file, &store));
    }
  }
}

// By the resampler that comes along, which opens any path that fits into a call, and by a copy where it does not fit.
TEST_F(Paths, MapsAreMadeUnderAnyName) {
  Disk().MakeFolder(folder_.Path());
  for (const wchar_t* const program : {L"resampler.exe", L"moresampler.exe"}) {
    CopyFileW(std::filesystem::path(MARLIT_RESAMPLER).c_str(), folder_.Path(program).c_str(), FALSE);
  }
  for (const std::wstring& name : kNames) {
    SCOPED_TRACE(testing::PrintToString(name));
    const std::wstring wave = AddWave(name);
    MrqStore store;
    for (const auto& [program, kind] : {std::pair(L"resampler.exe", FrqTypeFrq), {L"moresampler.exe", FrqTypeMrq}}) {
      FrqMap map;
      EXPECT_EQ(MakeMap({nullptr, folder_.Path(program), kind}, wave, store).End, ItemEnd::Made);
      store.LoadFolder(FolderOf(wave));
      EXPECT_EQ(LoadMap(map, wave, kind, &store), 0) << kind;
    }
  }
}

TEST_F(Paths, NamesThatDifferOnlyForOthersStayTwo) {
  FrqMap map = MapOf({220.0}), loaded;
  const std::pair<const wchar_t*, const wchar_t*> tests[] = {
      {L"が", L"か\u3099"}, {L"〜", L"～"}, {L"Ａ", L"A"}, {L"ā", L"a"}, {L"é", L"e\u0301"}, {L"b ", L"b"}, {L"c", L"c."}};
  MrqStore store;
  for (const auto& [one, other] : tests) {
    SCOPED_TRACE(testing::PrintToString(one));
    const std::wstring folder = folder_.Path(), end = L".wav";
    const std::wstring waves[] = {PathIn(folder, one + end), PathIn(folder, other + end)};
    Disk().MakeFolder(folder);
    for (const FrqType kind : {FrqTypeFrq, FrqTypeMrq}) {
      EXPECT_EQ(SaveMap(map, waves[0], kind, &store), 0);
      EXPECT_NE(LoadMap(loaded, waves[1], kind, &store), 0);
      EXPECT_FALSE(DeleteMapFile(MapPathFromWaveW(waves[1], kind), &store, false) && kind != FrqTypeMrq);
      EXPECT_EQ(LoadMap(loaded, waves[0], kind, &store), 0);
    }
  }
}

// Calls that take bytes are given a path that leads back to the very file, or none.
TEST_F(Paths, TheNarrowFormLeadsToTheSameFile) {
  for (const std::wstring& name : kNames) {
    SCOPED_TRACE(testing::PrintToString(name));
    const std::wstring wave = AddWave(name);
    WriteWholeFile(wave, Bytes(name.begin(), name.end()));
    const std::optional<std::wstring> form = NarrowForm(wave);
    EXPECT_EQ(form.has_value(), name != L"aux" && name != L"NUL.x") << "a device has no other name";
    if (!form) continue;
    EXPECT_TRUE(IsNarrow(*form));
    EXPECT_EQ(ReadNarrowly(*form), *form);
    const FileHandle file(CreateFileA(NarrowBytes(wave)->c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_EQ(GetFileSize(file.get(), nullptr), name.size());
    EXPECT_EQ(NarrowForm(wave + L".가"), std::nullopt) << "it is not there, and has no short name";
  }
}

}  // namespace
