// Maps in real files, of their own or in a desc.mrq: what is in the way of a save.
#include "frqmap/mapfiles.h"

#include "frqmap/mrqstore.h"
#include "native/family.h"
#include "win/scratch.h"

namespace {

TEST(MapFiles, ASaveThatFailsTellsWhyAndKeepsWhatWasThere) {
  const ScratchFolder folder;
  folder.Write(L"other file");
  const std::tuple<std::wstring, const char*, DWORD, DWORD> tests[] = {
      {L"か_wav.frq", "voice/ば_wav.frq", FILE_ATTRIBUTE_READONLY, ERROR_ACCESS_DENIED},
      {L"desc.mrq", "mrq/02-in-place/desc.mrq", FILE_ATTRIBUTE_READONLY, ERROR_ACCESS_DENIED},
      {L"desc.mrq", "mrq/22-five-bytes/desc.mrq", FILE_ATTRIBUTE_NORMAL, ERROR_HANDLE_EOF}};
  for (const auto& [name, data, attributes, error] : tests) {
    const Bytes before = testdata::FileBytes(data);
    folder.Write(name, before);
    SetFileAttributesW(folder.Path(name).c_str(), attributes);
    FrqMap map = MapOf({55.0, 220.0});
    MrqStore store;
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(SaveMap(map, folder.Path(L"か.wav"), name == L"desc.mrq" ? FrqTypeMrq : FrqTypeFrq, &store), -1) << data;
    EXPECT_EQ(GetLastError(), error) << data;
    EXPECT_EQ(ReadWholeFile(folder.Path(name)), before);
    SetFileAttributesW(folder.Path(name).c_str(), FILE_ATTRIBUTE_NORMAL);
  }
  FrqMap map = MapOf({55.0, 220.0});
  EXPECT_EQ(SaveMap(map, folder.Path(L"no\\か.wav"), FrqTypeFrq, nullptr), -1);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_PATH_NOT_FOUND});
}

}  // namespace
