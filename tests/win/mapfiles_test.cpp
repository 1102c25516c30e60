// Maps in real files: Japanese names, files and folders that are in the way, and deletion.
#include "frqmap/mapfiles.h"

#include <gtest/gtest.h>

#include "native/family.h"
#include "win/scratch.h"

namespace {

struct MapFiles : testing::Test {
  MapFiles() { folder.Write(L"other file"); }
  std::wstring Path(const std::wstring& name) const { return folder.Path(name); }

  const ScratchFolder folder;
};

TEST_F(MapFiles, SavedMapsComeBackUnderAnyJapaneseName) {
  for (const wchar_t* wave : {L"か.wav", L"ダ_ソ.wav", L"表.wav", L"①～.wav", L"plain.wav"}) {
    for (const FrqType kind : {FrqTypeFrq, FrqTypeFrc}) {
      FrqMap saved = MapOf({55.0, 220.0});
      ASSERT_EQ(SaveMap(saved, Path(wave), kind, nullptr), 0) << wave;
      EXPECT_TRUE(MapFileExists(MapPathFromWaveW(Path(wave), kind), nullptr)) << wave;
      FrqMap loaded = MapOf({100.0});
      ASSERT_EQ(LoadMap(loaded, Path(wave), kind, nullptr), 0) << wave;
      EXPECT_TRUE(loaded.Equals(saved));
      EXPECT_EQ(loaded.Kind, kind);
      EXPECT_EQ(loaded.MaxFrequency, 220.0);
      EXPECT_FALSE(loaded.Modified);
    }
  }
}

TEST_F(MapFiles, AMapThatCannotBeLoadedLeavesAnEmptyOne) {
  folder.Write(L"bad_wav.frq", testdata::FileBytes("bad/frq-one-too-many_wav.frq"));
  folder.Write(L"folder_wav.frq\\x");
  EXPECT_FALSE(MapFileExists(Path(L"folder_wav.frq"), nullptr)) << "a folder is no map";
  for (const std::wstring& wave : {std::wstring(L"missing.wav"), std::wstring(L"bad.wav"), std::wstring(L"folder.wav"),
                                   std::wstring(L"밤.wav"), std::wstring(300, L'x')}) {
    FrqMap map = MapOf({55.0, 220.0});
    EXPECT_NE(LoadMap(map, Path(wave), FrqTypeFrq, nullptr), 0);
    EXPECT_FALSE(map.Loaded);
    EXPECT_EQ(map.FrameCount, 0);
    EXPECT_EQ(map.Kind, FrqTypeUnknown);
  }
}

TEST_F(MapFiles, ASaveThatFailsTellsWhyAndKeepsWhatWasThere) {
  const Bytes before = testdata::FileBytes("voice/ば_wav.frq");
  const std::wstring path = Path(L"か_wav.frq");
  folder.Write(L"か_wav.frq", before);

  FrqMap empty;
  EXPECT_EQ(SaveMap(empty, Path(L"か.wav"), FrqTypeFrq, nullptr), -1);
  EXPECT_EQ(ReadWholeFile(path), before);

  SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY);
  const struct {
    const wchar_t* wave;
    DWORD error;
  } tests[] = {
      {L"か.wav", ERROR_ACCESS_DENIED}, {L"밤.wav", ERROR_PATH_NOT_FOUND}, {L"no\\か.wav", ERROR_PATH_NOT_FOUND}};
  for (const auto& test : tests) {
    FrqMap map = MapOf({55.0, 220.0});
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(SaveMap(map, Path(test.wave), FrqTypeFrq, nullptr), -1) << test.wave;
    EXPECT_EQ(GetLastError(), test.error) << test.wave;
  }
  EXPECT_EQ(ReadWholeFile(path), before);
  SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(MapFiles, DeletingAMapTakesItsCompanionsWithIt) {
  const std::vector<std::wstring> names = {L"か_wav.frq", L"か.dio", L"か.star", L"か.platinum", L"か.mrq"};
  for (const std::wstring& name : names) folder.Write(name);
  const auto left = [&] {
    std::wstring present;
    for (const std::wstring& name : names) present += FileExists(Path(name)) ? L'1' : L'0';
    return present;
  };
  EXPECT_TRUE(DeleteMapFile(Path(L"か_wav.frq"), nullptr, false));
  EXPECT_EQ(left(), L"01111");
  EXPECT_TRUE(DeleteMapFile(Path(L"か.dio"), nullptr, false));
  EXPECT_EQ(left(), L"00001");
  EXPECT_FALSE(DeleteMapFile(Path(L"か.dio"), nullptr, false)) << "there is none any more";
  EXPECT_FALSE(DeleteMapFile(Path(L"か.mrq"), nullptr, false)) << "entries live in a store, not in a file of that name";
  EXPECT_EQ(left(), L"00001");
}

}  // namespace
