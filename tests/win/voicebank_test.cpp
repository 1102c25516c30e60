// What is told of a voicebank's folders, and of its waves by their heads alone.

#include "voicebank/folderlisting.h"
#include "voicebank/waveheader.h"
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
