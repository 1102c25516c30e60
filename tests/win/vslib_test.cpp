// Projects in the analysis library, a stand-in for it: loading, saving, making and converting, and a library that
// refuses, lies or is not there.
#include "frqmap/vslib.h"

#include <utility>

#include "frqmap/convert.h"
#include "frqmap/mapfiles.h"
#include "native/testdata.h"
#include "win/scratch.h"

namespace {

constexpr std::size_t kPoints = 1384, kSecondPoint = kPoints + 104;

void Put(Bytes& file, std::size_t offset, auto value) {
  std::memcpy(&file[offset], &value, sizeof(value));
}

// A file of the stand-in with one voiced point and one without pitch, and a pattern in all that has no meaning.
Bytes ProjectFile(std::int32_t items = 1, std::int32_t pointCount = 2) {
  Bytes file(kPoints + 2 * 104, 0xC5);
  Put(file, 8, 44100);
  Put(file, 16, items);
  Put(file, 20 + 272, 200);
  Put(file, 20 + 276, pointCount);
  for (const std::size_t point : {kPoints, kSecondPoint}) {
    Put(file, point + 8, 0.25);
    Put(file, point + 44, 6000);
    Put(file, point + 60, point == kPoints ? 1 : 0);
  }
  return file;
}

struct VsLib : testing::Test {
  void SetUp() override {
    folder_.Write(L"vslib.dll", testdata::BytesAt(MARLIT_VSLIB_DOUBLE));
    folder_.Write(L"a_wav.vs4ufrq", ProjectFile());
    folder_.Write(L"b.wav");
    UseLibrary(true);
  }
  void TearDown() override {
    EXPECT_EQ(Entry<int()>("OpenProjects")(), 0) << "a project was left open";
    UseLibrary(false);
  }
  // The next use loads the library anew, or finds none.
  void UseLibrary(bool use) {
    if (VsHelper::Shared().Module) FreeLibrary(std::exchange(VsHelper::Shared().Module, nullptr));
    SetDllDirectoryW(use ? folder_.Path().c_str() : nullptr);
    EXPECT_EQ(VsHelper::Shared().Load() == 0, use);
  }
  template <typename Function>
  static Function* Entry(const char* name) {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(VsHelper::Shared().Module, name)));
  }
  int Load(FrqMap& map) const { return LoadMap(map, wave_, FrqTypeVs4ufrq, nullptr); }
  int Save(FrqMap& map) const { return SaveMap(map, wave_, FrqTypeVs4ufrq, nullptr); }
  // Load, Save, CreateFile, ExportMap and ExportPmk, as text.
  std::string Results(FrqMap& edited) {
    const std::wstring project = folder_.Path(L"a_wav.vs4ufrq");
    FrqMap map;
    std::string results;
    for (const int result :
         {Load(map), Save(edited), ConvertMap(folder_.Path(L"b.wav"), FrqTypeFrq, FrqTypeVs4ufrq, nullptr),
          CVsLib().ExportMap(project, FrqTypeFrq, nullptr), CVsLib().ExportPmk(project)}) {
      results += std::to_string(result) + " ";
    }
    return results;
  }

  ScratchFolder folder_;
  const std::wstring wave_ = folder_.Path(L"a.wav");
};

TEST_F(VsLib, ASaveChangesTheEditedControlPointAndNothingElse) {
  FrqMap map, saved;
  ASSERT_EQ(Load(map), 0);
  map.CopyTo(saved);
  map.SetFrequency(1, 440.0);
  EXPECT_EQ(Save(map), 0);
  Bytes expected = ProjectFile();
  Put(expected, kSecondPoint + 44, 6900);
  Put(expected, kSecondPoint + 60, 1);
  EXPECT_EQ(ReadWholeFile(folder_.Path(L"a_wav.vs4ufrq")), expected);
  EXPECT_EQ(Save(saved), 0);
  EXPECT_EQ(ReadWholeFile(folder_.Path(L"a_wav.vs4ufrq")), ProjectFile()) << "the copy was not edited";
}

TEST_F(VsLib, ASaveThatBreaksOffLeavesTheProjectAndTheNextOneSavesTheEdits) {
  FrqMap map, found;
  ASSERT_EQ(Load(map), 0);
  map.SetFrequency(1, 440.0);
  for (const int room : {0, 700, 1400}) {
    *Entry<int*()>("RoomOnDisk")() = room;
    SetLastError(ERROR_SUCCESS);
    EXPECT_NE(Save(map), 0);
    EXPECT_NE(GetLastError(), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(ReadWholeFile(folder_.Path(L"a_wav.vs4ufrq")), ProjectFile()) << room;
  }
  *Entry<int*()>("RoomOnDisk")() = -1;
  EXPECT_EQ(Save(map), 0);
  EXPECT_EQ(Load(found), 0);
  EXPECT_EQ(found.Frames[1].Frequency, 440.0);
  // A project that another program has cut takes none of the points.
  folder_.Write(L"a_wav.vs4ufrq", Bytes(kPoints));
  EXPECT_NE(Save(map), 0);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_WRITE_FAULT});
  EXPECT_EQ(ReadWholeFile(folder_.Path(L"a_wav.vs4ufrq")), Bytes(kPoints));
}

TEST_F(VsLib, ACallThatIsMissingOrCrashesCostsItsProjectAloneAndTheWholeLibraryMayComeLater) {
  // By the number of the entry.
  const std::string results[] = {"0 0 -1 0 0 ",   "-1 -1 0 -1 -1 ", "0 -1 0 0 0 ",   "0 0 0 0 0 ",
                                 "0 0 0 -1 -1 ",  "0 0 0 0 0 ",     "-1 0 0 -1 -1 ", "0 0 -1 0 0 ",
                                 "-1 0 0 -1 -1 ", "-1 0 0 -1 -1 ",  "0 -1 0 0 0 ",   "0 0 0 0 0 "};
  constexpr int kDelete = 3, kGetPoint = 9;
  static volatile int nothing = 0;
  constexpr int (*crashes[])() = {[] { return *static_cast<volatile int*>(nullptr); }, [] { return 1 / nothing; }};
  folder_.Write(L"b_wav.frq", testdata::FileBytes("saved/0001.frq"));
  FrqMap map;
  ASSERT_EQ(Load(map), 0);
  for (int entry = 0; entry < std::ssize(results); ++entry) {
    for (const auto instead : {crashes[entry % 2], static_cast<int (*)()>(nullptr)}) {
      if (!instead && entry == kDelete) continue;  // a project that cannot be closed stays open
      reinterpret_cast<void**>(&VsHelper::Shared().VslibCreateProject)[entry] = reinterpret_cast<void*>(instead);
      EXPECT_EQ(Results(map), !instead && entry == kGetPoint ? results[kDelete] : results[entry]) << entry;
      UseLibrary(true);
      EXPECT_EQ(Results(map), "0 0 0 0 0 ") << entry;
    }
  }
  UseLibrary(false);
  EXPECT_EQ(Results(map), "-1 -1 -1 -1 -1 ");
  SetDllDirectoryW(folder_.Path().c_str());
  EXPECT_EQ(Results(map), "0 0 0 0 0 ") << "it may come later";
}

TEST_F(VsLib, CountsBeyondReasonAreRefused) {
  const std::pair<std::int32_t, std::int32_t> counts[] = {{0, 2}, {-1, 2}, {2'000'000'000, 2}, {1, -1}, {1, 1'000'001}};
  FrqMap map;
  for (const auto& [items, points] : counts) {
    folder_.Write(L"a_wav.vs4ufrq", ProjectFile(items, points));
    EXPECT_EQ(Results(map), "-1 -1 0 -1 -1 ") << items << " " << points;
  }
}

TEST_F(VsLib, AMapOfAnyNameBecomesAProjectAndBack) {
  for (const std::wstring& name : {std::wstring(L"José à"), std::wstring(L"가나"), std::wstring(L"🎤"),
                                   std::wstring(L"か\u3099"), std::wstring(L"bank."), std::wstring(200, L'n')}) {
    SCOPED_TRACE(testing::PrintToString(name));
    const std::wstring wave = folder_.Path(name + L"\\" + name + L".wav");
    folder_.Write(name + L"\\" + name + L".wav");
    folder_.Write(name + L"\\" + name + L"_wav.frq", testdata::FileBytes("saved/0001.frq"));
    EXPECT_TRUE(CanConvertMap(wave, FrqTypeFrq, FrqTypeVs4ufrq));
    EXPECT_EQ(ConvertMap(wave, FrqTypeFrq, FrqTypeVs4ufrq, nullptr), 0);
    FrqMap map;
    for (const FrqType kind : {FrqTypeFrc, FrqTypePmk, FrqTypeVs4ufrq}) {
      EXPECT_EQ(ConvertMap(wave, FrqTypeVs4ufrq, kind, nullptr), kind == FrqTypeVs4ufrq ? -1 : 0) << kind;
      EXPECT_EQ(LoadMap(map, wave, kind, nullptr), 0) << kind;
      EXPECT_NEAR(map.MaxFrequency, 275.9, 1.0) << kind;
    }
    EXPECT_EQ(map.Project.Items.at(0).CarriedAt280[0], 1) << "the option for new projects";
    map.SetFrequency(1, 440.0);
    EXPECT_EQ(SaveMap(map, wave, FrqTypeVs4ufrq, nullptr), 0);
    EXPECT_EQ(LoadMap(map, wave, FrqTypeVs4ufrq, nullptr), 0);
    EXPECT_NEAR(map.MaxFrequency, 440.0, 1.0);
  }
  FrqMap map;
  EXPECT_FALSE(CanLibraryOpen(folder_.Path(L"가나\\다.wav"))) << "what is not there has no short name";
  EXPECT_EQ(ConvertMap(folder_.Path(L"다.wav"), FrqTypeVs4ufrq, FrqTypeFrq, nullptr), 0) << "there is none";
  EXPECT_NE(LoadMap(map, folder_.Path(L"다.wav"), FrqTypeVs4ufrq, nullptr), 0);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_BAD_PATHNAME});
}

}  // namespace
