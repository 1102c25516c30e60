// marlit-batch beside what the windows do: the same maps, byte for byte.

#include <gtest/gtest.h>

#include <tuple>

#include "check/checkrun.h"
#include "frqmap/freq0003.h"
#include "frqmap/mapfiles.h"
#include "frqmap/mrqstore.h"
#include "native/testdata.h"
#include "samplebank/bank.h"
#include "driver/programs.h"
#include "win/scratch.h"
#include "win/scratchvariable.h"

namespace {

struct BatchProgram : testing::Test {
  // The sample bank; its waves.
  std::vector<std::wstring> MakeBank(const std::wstring& name) const {
    static const std::vector<BankFile> files = MakeSampleBank();
    std::vector<std::wstring> waves;
    for (const BankFile& file : files) {
      const std::filesystem::path inside = std::filesystem::path(file.path).make_preferred();
      folder_.Write(name + L"\\" + inside.wstring(), file.bytes);
      if (inside.extension() == L".wav") waves.push_back(folder_.Path(name + L"\\" + inside.wstring()));
    }
    return waves;
  }

  DWORD Run(const std::wstring& arguments) const { return RunProgram(L"\"" MARLIT_BATCH "\" " + arguments); }
  static DWORD RunProgram(const std::wstring& line) { return ExitCodeOf(StartProgram(line, nullptr).first.get()); }

  // Of all maps of a kind in a bank. Entries of a file tell when they were written, and come in the order in which they
  // were ready: these are as bytes of another kind.
  std::vector<std::optional<Bytes>> Maps(const std::wstring& bank, FrqType kind) const {
    std::vector<std::optional<Bytes>> maps;
    MrqStore store;
    for (const wchar_t* const part : {L"", L"\\強"}) store.LoadFolder(folder_.Path(bank + part));
    for (const std::wstring& wave : waves_) {
      const std::wstring inside = wave.substr(folder_.Path(L"windows\\").size());
      const std::wstring path = MapPathFromWaveW(folder_.Path(bank + L"\\" + inside), kind);
      FrqMap entry;
      EXPECT_TRUE(kind != FrqTypeMrq || entry.Load(path, &store) == 0) << path.c_str();
      maps.push_back(kind == FrqTypeMrq ? EncodeFreq0003(entry, FrqTypeFrq) : ReadWholeFile(path));
    }
    return maps;
  }

  ScratchFolder folder_;
  const ScratchVariable localData_{L"LOCALAPPDATA", folder_.Path(L"local")};
  std::vector<std::wstring> waves_ = MakeBank(L"windows");
};

TEST_F(BatchProgram, TakesOverWhatTheCheckOfTheWindowsTakesOver) {
  MakeBank(L"tool");
  EXPECT_EQ(Run(L"check --fix \"" + folder_.Path(L"tool") + L"\""), 1u);
  int applied = 0;
  {
    const CheckLibrary library;
    for (const std::wstring& wave : waves_) {
      FrqMap map;
      if (LoadMap(map, wave, FrqTypeFrq, nullptr) != 0) continue;
      const CheckQuery query(map, MapPathFromWaveW(wave, FrqTypeFrq));
      ASSERT_EQ(library.Judge({}, query), CheckLibrary::Verdict::Judged);
      if (TakeCheckResults(*query.Frames, map) == 0) continue;
      map.ApplyMarks(-1, true);
      EXPECT_EQ(SaveMap(map, wave, FrqTypeFrq, nullptr), 0);
      ++applied;
    }
  }
  EXPECT_EQ(applied, 3);
  EXPECT_EQ(Maps(L"tool", FrqTypeFrq), Maps(L"windows", FrqTypeFrq));
  EXPECT_TRUE(Eventually([] { return !GetModuleHandleW(L"checkfrq.dll"); }));
}

TEST_F(BatchProgram, MakesTheMapsOfTheBundledResampler) {
  const std::tuple<const wchar_t*, FrqType, const wchar_t*> cases[] = {{L"basic-resampler.exe", FrqTypeFrq, L"frq"},
                                                                       {L"model4.exe", FrqTypeFrc, L"frc"},
                                                                       {L"tips.exe", FrqTypePmk, L"pmk"},
                                                                       {L"w4u.exe", FrqTypeDio, L"dio"},
                                                                       {L"moresampler.exe", FrqTypeMrq, L"mrq"}};
  for (const wchar_t* const bank : {L"tool", L"resampler", L"windows"}) {
    waves_ = MakeBank(bank);
    // Each wave costs a process a kind: two of one name in two folders, and one that has no map yet, are enough.
    std::erase_if(waves_, [](const std::filesystem::path& wave) {
      return wave.stem() != L"あ" && wave.stem() != L"mi" && std::filesystem::remove(wave);
    });
  }
  for (const auto& [program, kind, name] : cases) {
    SCOPED_TRACE(testing::Message() << "kind " << kind);
    folder_.Write(std::wstring(L"program\\") + program, testdata::BytesAt(MARLIT_RESAMPLER));
    const std::wstring resampler = folder_.Path(std::wstring(L"program\\") + program);
    for (const std::wstring& wave : waves_) {
      Disk().Delete(MapPathFromWaveW(wave, kind));
      EXPECT_EQ(RunProgram(L"\"" + resampler + L"\" \"" + wave + L"\" nul 100 100 GN 0 50"), 0u);
    }
    EXPECT_EQ(Run(L"create --all -k " + std::wstring(name) + L" \"" + folder_.Path(L"tool") + L"\""), 0u);
    EXPECT_EQ(Run(L"create --all --resampler \"" + resampler + L"\" \"" + folder_.Path(L"resampler") + L"\""), 0u);
    EXPECT_EQ(Maps(L"tool", kind), Maps(L"windows", kind));
    EXPECT_EQ(Maps(L"resampler", kind), Maps(L"windows", kind));
  }
}

}  // namespace
