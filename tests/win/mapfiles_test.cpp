// Maps in real files, of their own or in a desc.mrq: what is in the way of a save, and deletion.
#include "frqmap/mapfiles.h"

#include "frqmap/mrqstore.h"
#include "native/family.h"
#include "win/scratch.h"

namespace {

struct MapFiles : testing::Test {
  MapFiles() { folder.Write(L"other file"); }
  std::wstring Path(const std::wstring& name) const { return folder.Path(name); }

  const ScratchFolder folder;
};

TEST_F(MapFiles, ASaveThatFailsTellsWhyAndKeepsWhatWasThere) {
  const std::tuple<std::wstring, const char*, DWORD, DWORD> tests[] = {
      {L"か_wav.frq", "voice/ば_wav.frq", FILE_ATTRIBUTE_READONLY, ERROR_ACCESS_DENIED},
      {L"desc.mrq", "mrq/02-in-place/desc.mrq", FILE_ATTRIBUTE_READONLY, ERROR_ACCESS_DENIED},
      {L"desc.mrq", "mrq/22-five-bytes/desc.mrq", FILE_ATTRIBUTE_NORMAL, ERROR_HANDLE_EOF}};
  for (const auto& [name, data, attributes, error] : tests) {
    const Bytes before = testdata::FileBytes(data);
    folder.Write(name, before);
    SetFileAttributesW(Path(name).c_str(), attributes);
    FrqMap map = MapOf({55.0, 220.0});
    MrqStore store;
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(SaveMap(map, Path(L"か.wav"), name == L"desc.mrq" ? FrqTypeMrq : FrqTypeFrq, &store), -1) << data;
    EXPECT_EQ(GetLastError(), error) << data;
    EXPECT_EQ(ReadWholeFile(Path(name)), before);
    SetFileAttributesW(Path(name).c_str(), FILE_ATTRIBUTE_NORMAL);
  }
  FrqMap map = MapOf({55.0, 220.0});
  EXPECT_EQ(SaveMap(map, Path(L"no\\か.wav"), FrqTypeFrq, nullptr), -1);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_PATH_NOT_FOUND});
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
