// Settings in the registry: what counts as there.
#include "base/registry.h"

#include "win/scratch.h"

namespace {

void Store(DWORD type, DWORD size) {
  RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\UTAU Plugin\\Marlit", L"Value", type, L"abc", size);
}

TEST(Registry, AValueOfAnotherSortOrSizeLeavesTheDefault) {
  const ScratchRegistry registry;
  int value = 7;
  EXPECT_FALSE(RegReadValue(L"Value", value));
  for (const auto& [type, size] : {std::pair{REG_DWORD, 4}, {REG_SZ, 4}, {REG_BINARY, 3}, {REG_BINARY, 8}}) {
    Store(type, size);
    EXPECT_FALSE(RegReadValue(L"Value", value)) << type << " " << size;
    EXPECT_TRUE(RegReadFlag(L"Value", true));
  }
  EXPECT_EQ(value, 7);
  Store(REG_BINARY, 4);
  EXPECT_TRUE(RegReadValue(L"Value", value));
  EXPECT_EQ(value, 0x00620061);
}

}  // namespace
