// Where a voicebank lies: in a folder that cannot be written to, or one of which the system keeps a shadow.
#include "voicebank/folderaccess.h"

#include <shlobj.h>
#include <gtest/gtest.h>
#include <sddl.h>

#include "win/scratch.h"

namespace {

std::wstring SystemFolder(int id) {
  wchar_t folder[MAX_PATH] = L"";
  SHGetFolderPathW(nullptr, id, nullptr, SHGFP_TYPE_CURRENT, folder);
  return folder;
}

// Puts a file's last writing so many days before now.
void Age(const std::wstring& path, int days) {
  namespace fs = std::filesystem;
  fs::last_write_time(path, fs::file_time_type::clock::now() - std::chrono::hours(24 * days));
}

// Gives a folder these rights, and no others.
void Protect(const std::wstring& folder, const wchar_t* rights) {
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  ConvertStringSecurityDescriptorToSecurityDescriptorW(rights, SDDL_REVISION_1, &descriptor, nullptr);
  EXPECT_TRUE(SetFileSecurityW(folder.c_str(), DACL_SECURITY_INFORMATION, descriptor));
  LocalFree(descriptor);
}

TEST(FolderAccess, WhatLiesUnderAProtectedFolderHasAShadow) {
  const std::wstring programs = SystemFolder(CSIDL_PROGRAM_FILES);
  const std::wstring shadows = SystemFolder(CSIDL_LOCAL_APPDATA) + L"\\VirtualStore";
  for (const auto& [path, shadow] :
       {std::pair(programs + L"\\UTAU\\voice", shadows + programs.substr(2) + L"\\UTAU\\voice"),
        {SystemFolder(CSIDL_WINDOWS), shadows + SystemFolder(CSIDL_WINDOWS).substr(2)},
        {L"C:\\", shadows},
        {programs + L" Extra\\x", L"none"},
        {SystemFolder(CSIDL_PERSONAL) + L"\\voice", L"none"},
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
  EXPECT_EQ(picked(), path) << "neither is there";
  WriteWholeFile(shadow, {});
  EXPECT_EQ(picked(), shadow);
  WriteWholeFile(path, {});
  Age(path, 2);
  Age(shadow, 1);
  EXPECT_EQ(picked(), shadow);
  Age(shadow, 3);
  EXPECT_EQ(picked(), path);
  std::filesystem::last_write_time(shadow, std::filesystem::last_write_time(path));
  EXPECT_EQ(picked(), path) << "equally old";
  std::filesystem::remove(path);
  std::filesystem::remove(shadow);
}

TEST(FolderAccess, AFolderWithoutTheRightToWriteIsTold) {
  const ScratchFolder folder;
  folder.Write(L"open\\a");
  folder.Write(L"closed\\a");
  Protect(folder.Path(L"closed"), L"D:(A;;GRGX;;;WD)");
  EXPECT_EQ(CanWriteFolder(folder.Path(L"open")), 1);
  EXPECT_EQ(CanWriteFolder(folder.Path(L"closed")), 0);
  Protect(folder.Path(L"closed"), L"D:(A;;GA;;;WD)");
  EXPECT_EQ(CanWriteFolder(folder.Path(L"missing")), -1);
  bool isFile = false;
  EXPECT_TRUE(FileExistsAsFile(folder.Path(L"open\\a"), isFile) && isFile);
  EXPECT_TRUE(FileExistsAsFile(folder.Path(L"open"), isFile) && !isFile);
  EXPECT_FALSE(FileExistsAsFile(folder.Path(L"missing"), isFile));
}

}  // namespace
