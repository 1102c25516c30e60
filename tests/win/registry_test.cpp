// Settings in the registry: what counts as there.
#include "base/registry.h"

#include <gtest/gtest.h>

#include "win/scratch.h"

namespace {

void Store(const wchar_t* key, const wchar_t* name, DWORD type, DWORD size) {
  RegSetKeyValueW(HKEY_CURRENT_USER, key, name, type, L"abc", size);
}

TEST(Registry, AValueOfAnotherSortOrSizeLeavesTheDefault) {
  const ScratchRegistry registry;
  int value = 7;
  EXPECT_FALSE(RegReadValue(L"Value", value));
  for (const auto& [type, size] : {std::pair{REG_DWORD, 4}, {REG_SZ, 4}, {REG_BINARY, 3}, {REG_BINARY, 8}}) {
    Store(L"Software\\UTAU Plugin\\Marlit", L"Value", type, size);
    EXPECT_FALSE(RegReadValue(L"Value", value)) << type << " " << size;
    EXPECT_TRUE(RegReadFlag(L"Value", true));
  }
  EXPECT_EQ(value, 7);
  Store(L"Software\\UTAU Plugin\\Marlit", L"Value", REG_BINARY, 4);
  EXPECT_TRUE(RegReadValue(L"Value", value));
  EXPECT_EQ(value, 0x00620061);
}

TEST(Registry, AHistoryEndsAtItsGapAndLeavesNothingOfALongerOne) {
  const ScratchRegistry registry;
  SaveHistory(kFolderHistoryKey, {L"x", L"y", L"z"});
  SaveHistory(kFolderHistoryKey, {L"か"});
  Store(kFolderHistoryKey, L"History2", REG_BINARY, 4);  // has no end of its own
  Store(kFolderHistoryKey, L"History4", REG_SZ, 8);
  std::list<std::wstring> loaded;
  LoadHistory(kFolderHistoryKey, loaded);
  EXPECT_EQ(loaded, (std::list<std::wstring>{L"か", L"ab"}));
}

}  // namespace
