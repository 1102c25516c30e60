// The store of desc.mrq entries over real files that cannot be written.
#include "frqmap/mrqstore.h"

#include <gtest/gtest.h>

#include "native/testdata.h"
#include "win/scratch.h"

namespace {

TEST(MrqStore, ASaveThatFailsTellsWhyAndLeavesTheFileAsItWas) {
  const std::tuple<const char*, DWORD, DWORD> tests[] = {
      {"mrq/02-in-place/desc.mrq", FILE_ATTRIBUTE_READONLY, ERROR_ACCESS_DENIED},
      {"mrq/22-five-bytes/desc.mrq", FILE_ATTRIBUTE_NORMAL, ERROR_HANDLE_EOF}};
  for (const auto& [start, attributes, error] : tests) {
    const ScratchFolder folder;
    folder.Write(L"desc.mrq", testdata::FileBytes(start));
    SetFileAttributesW(folder.Path(L"desc.mrq").c_str(), attributes);
    MrqStore store;
    store.SetEntry(folder.Path(L"na"), {256, 44100, {110.0}, 0, 0});
    EXPECT_EQ(store.WriteEntry(folder.Path(L"na")), -1);
    EXPECT_EQ(GetLastError(), error);
    EXPECT_EQ(ReadWholeFile(folder.Path(L"desc.mrq")), testdata::FileBytes(start));
    SetFileAttributesW(folder.Path(L"desc.mrq").c_str(), FILE_ATTRIBUTE_NORMAL);
  }
}

}  // namespace
