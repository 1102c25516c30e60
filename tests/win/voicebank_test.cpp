// What is told of a voicebank's folders.
#include <gtest/gtest.h>

#include "voicebank/folderlisting.h"
#include "win/scratch.h"

namespace {

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

}  // namespace
