// The words for a user about a map that cannot be read, and of a job that has ended.
#include "frqmap/mapfault.h"

#include "faultdisk.h"
#include "frqmap/mrqfile.h"
#include "native/family.h"
#include "resampler/jobsum.h"

namespace {

using testdata::FileBytes;

MapFault FaultOf(FaultDisk& disk, const std::string& name, const Bytes& bytes) {
  const std::wstring path = L"C:\\bank\\" + testdata::Wide(name);
  disk.Put(path, bytes);
  return FindMapFault(disk, path, FrqTypeFromPathW(path));
}

// A map that opens is never called bad, and for each that does not there is a word.
TEST(MapFault, IsTheReasonForWhichACodecRefusesAFileAndNoneElse) {
  FaultDisk disk;
  for (const auto& file : std::filesystem::directory_iterator(MARLIT_TEST_DATA "/bad")) {
    const std::string name = file.path().filename().string();
    if (FrqTypeFromPathW(file.path().filename().wstring()) == FrqTypeUnknown) continue;
    const Bytes bytes = FileBytes("bad/" + name);
    EXPECT_EQ(FaultOf(disk, name, bytes).Why == MapFault::None, Decode(name, bytes).has_value()) << name;
  }
  const std::pair<const char*, MapFault::Reason> tests[] = {{"frq-empty_wav.frq", MapFault::CutShort},
                                                            {"frq-truncated-frames_wav.frq", MapFault::CutShort},
                                                            {"frq-magic-lower_wav.frq", MapFault::Foreign},
                                                            {"dio-truncated-header.dio", MapFault::CutShort},
                                                            {"dio-wrong-last-byte.dio", MapFault::Foreign},
                                                            {"pmk-truncated-records_wav.pmk", MapFault::CutShort},
                                                            {"pmk-wrong-magic_wav.pmk", MapFault::Foreign},
                                                            {"pmk-no-records_wav.pmk", MapFault::Foreign}};
  for (const auto& [name, why] : tests) {
    EXPECT_EQ(FaultOf(disk, name, FileBytes(std::string("bad/") + name)).Why, why) << name;
  }
}

TEST(MapFault, SaysWhatTheSystemRefuses) {
  FaultDisk disk;
  const std::wstring path = L"C:\\bank\\a_wav.frq";
  EXPECT_EQ(FindMapFault(disk, path, FrqTypeFrq), (MapFault{MapFault::Refused, FaultDisk::NotFound}));
  disk.Put(path, Bytes(60));
  disk.Plan(3);  // it is opened and measured, and cannot be read
  EXPECT_EQ(FindMapFault(disk, path, FrqTypeFrq).Why, MapFault::Refused);
}

TEST(MapFault, LooksForAnEntryInTheFileOfItsFolder) {
  FaultDisk disk;
  const std::wstring file = L"C:\\bank\\desc.mrq", map = L"C:\\bank\\a.mrq";
  EXPECT_EQ(FindMapFault(disk, map, FrqTypeMrq), MapFault()) << "no file is no fault";
  const Bytes body = EncodeMrqBody({.Hop = 256, .Frequencies = {220.0, 230.0}}, 0);
  const MrqHead head{.Start = 12, .Name = u"a.wav", .BodySize = static_cast<std::int32_t>(body.size())};
  Bytes whole = EmptyMrqFile();
  whole[8] = 1;
  for (const Bytes& part : {EncodeMrqHead(head), body}) whole.insert(whole.end(), part.begin(), part.end());
  disk.Put(file, whole);
  EXPECT_EQ(FindMapFault(disk, map, FrqTypeMrq), MapFault());
  EXPECT_EQ(FindMapFault(disk, L"C:\\bank\\b.mrq", FrqTypeMrq), MapFault()) << "nor is another entry";
  disk.Put(file, Bytes(whole.begin(), whole.end() - 14));
  EXPECT_EQ(FindMapFault(disk, map, FrqTypeMrq).Why, MapFault::Foreign);
  disk.Put(file, Bytes(whole.begin(), whole.begin() + 16));
  EXPECT_EQ(FindMapFault(disk, map, FrqTypeMrq).Why, MapFault::CutShort);
}

TEST(JobSum, CountsEachItemOnceAndNamesThoseThatFailed) {
  using enum ItemEnd;
  const std::vector<WorkItem> items = {{L"a", 0}, {L"b", 1}, {L"c", 2}, {L"d", 3}, {L"e", 4}};
  const JobSum sum = SumOf(items, {{Made}, {EndedBadly, -3}, {NotKept}, {NotReached}, {Made}});
  EXPECT_EQ(std::tuple(sum.Made, sum.NotReached, sum.Failed), std::tuple(2, 1, std::vector<std::wstring>{L"b", L"c"}));
  EXPECT_EQ(std::tuple(sum.First.End, sum.First.Error), std::tuple(EndedBadly, -3));
}

}  // namespace
