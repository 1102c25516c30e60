// Maps in real files: Japanese names, files and folders that are in the way, and deletion.
#include "frqmap/mapfiles.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>

#include "base/files.h"
#include "native/vectors.h"

namespace {

class MapFiles : public testing::Test {
 protected:
  void SetUp() override {
    const auto name = L"marlit_mapfiles_" + std::to_wstring(GetCurrentProcessId());
    folder_ = std::filesystem::temp_directory_path() / name;
    std::filesystem::create_directories(folder_);
  }
  void TearDown() override { std::filesystem::remove_all(folder_); }

  std::wstring Path(const std::wstring& name) const { return (folder_ / name).wstring(); }

  static FrqMap MapOf(double hz) {
    FrqMap map;
    map.Create(3, FrqTypeFrq);
    map.SetFrequency(256, hz);
    map.Loaded = true;
    return map;
  }

  std::filesystem::path folder_;
};

TEST_F(MapFiles, SavedMapsComeBackUnderAnyJapaneseName) {
  for (const wchar_t* wave : {L"か.wav", L"ダ_ソ.wav", L"表.wav", L"①～.wav", L"plain.wav"}) {
    for (const FrqType kind : {FrqTypeFrq, FrqTypeFrc}) {
      FrqMap saved = MapOf(220.0);
      ASSERT_EQ(SaveMap(saved, Path(wave), kind, nullptr), 0) << wave;
      EXPECT_TRUE(MapFileExists(MapPathFromWaveW(Path(wave), kind), nullptr)) << wave;
      FrqMap loaded = MapOf(100.0);
      ASSERT_EQ(LoadMap(loaded, Path(wave), kind, nullptr), 0) << wave;
      EXPECT_TRUE(loaded.Equals(saved));
      EXPECT_EQ(loaded.Kind, kind);
      EXPECT_EQ(loaded.MaxFrequency, 220.0);
      EXPECT_FALSE(loaded.Modified);
    }
  }
}

TEST_F(MapFiles, AMapThatCannotBeLoadedLeavesAnEmptyOne) {
  ASSERT_TRUE(WriteWholeFile(Path(L"bad_wav.frq"), vectors::FileBytes("bad/frq-one-too-many_wav.frq")));
  std::filesystem::create_directory(Path(L"folder_wav.frq"));
  for (const std::wstring& wave : {std::wstring(L"missing.wav"), std::wstring(L"bad.wav"), std::wstring(L"folder.wav"),
                                   std::wstring(L"밤.wav"), std::wstring(300, L'x')}) {
    FrqMap map = MapOf(220.0);
    EXPECT_NE(LoadMap(map, Path(wave), FrqTypeFrq, nullptr), 0);
    EXPECT_FALSE(map.Loaded);
    EXPECT_EQ(map.FrameCount, 0);
    EXPECT_EQ(map.Kind, FrqTypeUnknown);
  }
}

TEST_F(MapFiles, ASaveThatFailsTellsWhyAndKeepsWhatWasThere) {
  const Bytes before = vectors::FileBytes("voice/ば_wav.frq");
  const std::wstring path = Path(L"か_wav.frq");
  ASSERT_TRUE(WriteWholeFile(path, before));

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
    FrqMap map = MapOf(220.0);
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(SaveMap(map, Path(test.wave), FrqTypeFrq, nullptr), -1) << test.wave;
    EXPECT_EQ(GetLastError(), test.error) << test.wave;
  }
  EXPECT_EQ(ReadWholeFile(path), before);
  SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(MapFiles, ASaveRenewsTheAverageThatItsKindDidNotHold) {
  FrqMap map = MapOf(440.0);
  map.DerivedAverage = true;
  EXPECT_EQ(SaveMap(map, Path(L"か.wav"), FrqTypeFrq, nullptr), 0);
  FrqMap loaded;
  EXPECT_EQ(LoadMap(loaded, Path(L"か.wav"), FrqTypeFrq, nullptr), 0);
  EXPECT_DOUBLE_EQ(loaded.Average, 440.0);
}

TEST_F(MapFiles, OnlyPathsThatTheMapLayerCanHoldAreNarrowed) {
  for (const vectors::Json& test : vectors::Expected("names")["narrow_possible"]) {
    const std::wstring path = vectors::Wide(test["path"]);
    const std::optional<std::string> narrow = NarrowPath(path);
    EXPECT_EQ(narrow.has_value(), test["possible"]) << path.size();
    EXPECT_EQ(WidePath(narrow.value_or("")), narrow ? path : L"");
  }
  EXPECT_FALSE(NarrowPath(L"\u00E9.wav")) << "no look-alike opens another file";
}

TEST_F(MapFiles, DeletingAMapTakesItsCompanionsWithIt) {
  const std::vector<std::wstring> names = {L"か_wav.frq", L"か.dio", L"か.star", L"か.platinum", L"か.mrq"};
  for (const std::wstring& name : names) ASSERT_TRUE(WriteWholeFile(Path(name), Bytes(1)));
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

TEST_F(MapFiles, AFolderNamedLikeAMapIsNone) {
  std::filesystem::create_directory(Path(L"か_wav.frq"));
  EXPECT_FALSE(MapFileExists(Path(L"か_wav.frq"), nullptr));
  EXPECT_FALSE(MapFileExists(Path(L"き_wav.frq"), nullptr));
}

}  // namespace
