// Where a voicebank lies: in a folder of which the system may keep a shadow.
#include "voicebank/folderaccess.h"

#include <shlobj.h>

#include "win/scratch.h"

namespace {

std::wstring SystemFolder(int id) {
  wchar_t folder[MAX_PATH] = L"";
  SHGetFolderPathW(nullptr, id, nullptr, SHGFP_TYPE_CURRENT, folder);
  return folder;
}

TEST(FolderAccess, WhatLiesUnderAProtectedFolderHasAShadow) {
  const std::wstring programs = SystemFolder(CSIDL_PROGRAM_FILES);
  const std::wstring shadows = SystemFolder(CSIDL_LOCAL_APPDATA) + L"\\VirtualStore";
  for (const auto& [path, shadow] :
       {std::pair(programs + L"\\UTAU\\voice", shadows + programs.substr(2) + L"\\UTAU\\voice"),
        {programs + L" Extra\\x", L"none"},
        {programs + std::wstring(400, L'x'), L"none"}}) {
    std::wstring found = L"none";
    EXPECT_EQ(GetVirtualStorePath(path, found), shadow == L"none" ? -1 : 0) << path;
    EXPECT_EQ(found, shadow);
  }
}

TEST(FolderAccess, TheNewerOfAFileAndItsShadowIsTaken) {
  const std::wstring name = L"MarlitTest" + std::to_wstring(GetCurrentProcessId()) + L".ini";
  const std::wstring path = SystemFolder(CSIDL_COMMON_APPDATA) + L"\\" + name;
  std::wstring shadow;
  ASSERT_EQ(GetVirtualStorePath(path, shadow), 0);
  std::filesystem::create_directories(std::filesystem::path(shadow).parent_path());
  const auto picked = [&] {
    std::wstring found = path;
    PickNewerVirtualStoreFile(found);
    return found;
  };
  WriteWholeFile(shadow, {});
  EXPECT_EQ(picked(), shadow) << "there is nothing but the shadow";
  WriteWholeFile(path, {});
  const auto now = std::filesystem::last_write_time(path);
  for (const int hours : {-1, 0, 1}) {
    std::filesystem::last_write_time(shadow, now + std::chrono::hours(hours));
    EXPECT_EQ(picked(), hours > 0 ? shadow : path) << hours;
  }
  std::filesystem::remove(path);
  std::filesystem::remove(shadow);
}

}  // namespace
