// The place of a voicebank, in a folder of which the system may keep a shadow; and what is told of its folders, and of
// its waves by their heads alone.
#include "voicebank/folderaccess.h"

#include <shlobj.h>

#include "voicebank/folderlisting.h"
#include "voicebank/waveheader.h"
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
        {programs + std::wstring(400, L'x'), L"none"},
        {programs + L"\\" + std::wstring(400, L'x'), shadows + programs.substr(2) + L"\\" + std::wstring(400, L'x')}}) {
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

TEST(FolderListing, AFileIsFoundHoweverItsNameIsSpelled) {
  const ScratchFolder folder;
  folder.Write(L"Ａか_wav.FRQ", Bytes(3));
  ListedFolders listed;
  EXPECT_EQ(listed.SizeOf(folder.Path(L"ａか_WAV.frq")), 3u);
  for (const wchar_t* name : {L"missing", L"missing\\x", L"Ａか_wav.FRQ\\x"}) {
    EXPECT_FALSE(listed.SizeOf(folder.Path(name))) << name;
  }
  EXPECT_FALSE(listed.SizeOf(folder.Path())) << "a folder is no file";
}

TEST(WaveHeader, TellsALengthOfAnyHead) {
  const ScratchFolder folder;
  WaveHeader wave;
  for (const auto& [channels, seconds] : {std::pair(3, 0.333), {0, 0.0}}) {
    Bytes head = kSecondOfSound;
    head[22] = static_cast<std::uint8_t>(channels);
    folder.Write(L"a.WAVE", head);
    EXPECT_EQ(wave.Load(folder.Path(L"a.WAVE"), true), 0);
    EXPECT_EQ(wave.LengthSeconds(), seconds) << channels;
    EXPECT_EQ(wave.Load(folder.Path(L"a.WAVE"), false), -1) << "the samples are not there";
    EXPECT_FALSE(wave.loaded) << "a failed read leaves nothing of the wave before";
  }
}

}  // namespace
