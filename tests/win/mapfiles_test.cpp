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

TEST_F(MapFiles, ANameBeyondTheCodePageLeavesNothingOfTheMapBefore) {
  FrqMap map = MapOf({55.0, 220.0});
  EXPECT_NE(LoadMap(map, Path(std::wstring(300, L'밤')), FrqTypeFrq, nullptr), 0);
  EXPECT_FALSE(map.Loaded || map.FrameCount);
}

TEST_F(MapFiles, ASaveThatFailsTellsWhyAndKeepsWhatWasThere) {
  const Bytes before = testdata::FileBytes("voice/ば_wav.frq");
  const std::wstring path = Path(L"か_wav.frq");
  folder.Write(L"か_wav.frq", before);

  SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY);
  for (const auto& [wave, error] : {std::pair(L"か.wav", ERROR_ACCESS_DENIED), {L"no\\か.wav", ERROR_PATH_NOT_FOUND}}) {
    FrqMap map = MapOf({55.0, 220.0});
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(SaveMap(map, Path(wave), FrqTypeFrq, nullptr), -1) << wave;
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(error)) << wave;
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
