// Maps in real files: what goes with one that is deleted, and what nothing comes of.
#include "frqmap/mapfiles.h"

#include "frqmap/convert.h"
#include "native/family.h"
#include "native/scratchfolder.h"

namespace {

TEST(MapFiles, DeletingAMapTakesItsCompanionsWithIt) {
  const ScratchFolder folder;
  const std::vector<std::wstring> names = {L"か_wav.frq", L"か.dio", L"か.star", L"か.platinum", L"か.mrq",
                                           L"か_wav.star"};
  for (const std::wstring& name : names) folder.Write(name);
  const auto left = [&] {
    std::wstring present;
    for (const std::wstring& name : names) present += FileExists(folder.Path(name)) ? L'1' : L'0';
    return present;
  };
  EXPECT_TRUE(DeleteMapFile(folder.Path(L"か_wav.frq"), nullptr, false));
  EXPECT_EQ(left(), L"011111");
  EXPECT_TRUE(DeleteMapFile(folder.Path(L"か.dio"), nullptr, false));
  EXPECT_EQ(left(), L"000011");
  EXPECT_FALSE(DeleteMapFile(folder.Path(L"か.dio"), nullptr, false)) << "there is none any more";
  EXPECT_FALSE(DeleteMapFile(folder.Path(L"か.mrq"), nullptr, false)) << "entries live in a store, in no file of that name";
  EXPECT_EQ(left(), L"000011");
}

TEST(MapFiles, WhatAKindCannotHoldIsRefusedAndSaysWhy) {
  const ScratchFolder folder;
  const std::wstring wave = folder.Path(L"a.wav");
  folder.Write(L"a.wav");
  FrqMap map = MapOf({220.0}), noHop = MapOf({220.0}, 0);
  EXPECT_EQ(SaveMap(map, wave, FrqTypePmk, nullptr), 0);
  const auto before = ReadWholeFile(folder.Path(L"a_wav.pmk"));
  EXPECT_EQ(SaveMap(noHop, wave, FrqTypePmk, nullptr), -1);
  EXPECT_EQ(Disk().LastError(), 13u) << "invalid data";
  EXPECT_EQ(ReadWholeFile(folder.Path(L"a_wav.pmk")), before);
  Disk().SetLastError(0);
  EXPECT_EQ(RestoreMapFile(folder.Path(L"a.mrq"), Bytes(3), nullptr), -1);
  EXPECT_EQ(Disk().LastError(), 13u) << "invalid data";
  // Without the library of projects nothing becomes one, and one becomes nothing.
  folder.Write(L"a_wav.vs4ufrq");
  EXPECT_EQ(SaveMap(map, wave, FrqTypeVs4ufrq, nullptr), -1);
  EXPECT_EQ(LoadMap(map, wave, FrqTypeVs4ufrq, nullptr), -1);
  for (const auto& [from, to] : {std::pair(FrqTypePmk, FrqTypeVs4ufrq), {FrqTypeVs4ufrq, FrqTypeFrc}}) {
    EXPECT_NE(ConvertMap(wave, from, to, nullptr), 0) << from;
  }
  EXPECT_EQ(noHop.Load(folder.Path(L"a.txt"), nullptr), -1);
  EXPECT_TRUE(noHop.Frames.empty()) << "nothing is left of the map before";
}

}  // namespace
