// The check library as the program loads it: what it hears beside a map, what it does without, and what it keeps.
#include <map>

#include "check/checkrun.h"
#include "native/family.h"
#include "native/tone.h"
#include "voicebank/sound.h"
#include "driver/programs.h"
#include "win/scratch.h"
#include "win/scratchvariable.h"

namespace {

// A second of 220 Hz, and a map that has it an octave high: no fault to whom cannot hear.
const Bytes& WaveFile(double hz = 220.0) {
  static std::map<double, Bytes> files;
  Bytes& file = files[hz];
  if (file.empty()) file = EncodeWaveFile(To16Bits(SecondOfTone([=](double) { return hz; }, 0.0, 1.0)), 44100);
  return file;
}

FrqMap OctaveHigh() {
  return MapOf(std::vector<double>(173, 440.0), 256, std::vector<double>(173, 5000.0));
}

struct CheckLibraryTest : testing::Test {
  void TearDown() override { EXPECT_TRUE(Unloads()); }

  static bool Unloads() {
    return Eventually([] { return !GetModuleHandleW(L"checkfrq.dll"); });
  }
  std::wstring Path(const std::wstring& name) const { return folder_.Path(L"bank\\" + name); }
  void Write(const std::wstring& name, const Bytes& bytes) const { folder_.Write(L"bank\\" + name, bytes); }
  // The number of marks.
  int Check(const std::wstring& map) const {
    const CheckLibrary library;
    FrqMap frames = OctaveHigh();
    const CheckQuery query(frames, Path(map));
    EXPECT_EQ(library.Judge({}, query), CheckLibrary::Verdict::Judged);
    return TakeCheckResults(*query.Frames, frames);
  }
  std::wstring Kept() const { return folder_.Path(L"local\\Marlit\\Heard"); }

  ScratchFolder folder_;
  const ScratchVariable localData_{L"LOCALAPPDATA", folder_.Path(L"local")};
};

TEST_F(CheckLibraryTest, GoesByTheMapAloneWhereThereIsNothingToHear) {
  Write(L"heard.wav", WaveFile());
  for (const FrqType kind : {FrqTypeFrq, FrqTypeDio, FrqTypePmk, FrqTypeMrq}) {
    EXPECT_GT(Check(MapPathFromWaveW(L"heard.wav", kind)), 160) << kind;
  }
  EXPECT_EQ(Check(L"missing_wav.frq"), 0);
  EXPECT_EQ(Check(L"..\\heard_wav.frq"), 0);

  const auto changed = [](std::size_t at, std::initializer_list<std::uint8_t> bytes) {
    Bytes file = WaveFile();
    std::ranges::copy(bytes, file.begin() + static_cast<std::ptrdiff_t>(at));
    return file;
  };
  const Bytes whole = WaveFile();
  const std::pair<const wchar_t*, Bytes> bad[] = {
      {L"empty", {}},
      {L"head", Bytes(whole.begin(), whole.begin() + 30)},
      {L"cut", Bytes(whole.begin(), whole.begin() + 20'000)},
      {L"no wave", Bytes(100'000, 'x')},
      {L"claims 4 GB", changed(40, {0xFC, 0xFF, 0xFF, 0xFF})},
      {L"no channels", changed(22, {0, 0})},
      {L"coded", changed(20, {85, 0})},
      {L"of another length", EncodeWaveFile(std::vector<std::int16_t>(132'300, 1), 44100)},
      {L"longer than two minutes", EncodeWaveFile(std::vector<std::int16_t>(8000 * 121), 8000)}};
  for (const auto& [name, bytes] : bad) {
    Write(std::wstring(name) + L".wav", bytes);
    EXPECT_EQ(Check(std::wstring(name) + L"_wav.frq"), 0) << name;
  }
  CreateDirectoryW(Path(L"folder.wav").c_str(), nullptr);
  EXPECT_EQ(Check(L"folder_wav.frq"), 0);
  Write(L"held.wav", WaveFile());
  const FileHandle held(CreateFileW(Path(L"held.wav").c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  EXPECT_EQ(Check(L"held_wav.frq"), 0) << "somebody is writing it";
}

TEST_F(CheckLibraryTest, KeepsWhatItHasHeardAsLongAsTheWaveStands) {
  Write(L"a.wav", WaveFile());
  Write(L"b.wav", WaveFile());
  const int marks = Check(L"a_wav.frq");
  ASSERT_GT(marks, 160);
  ASSERT_TRUE(Unloads());
  ASSERT_EQ(NamesIn(Kept()).size(), 1u) << "a folder, a file";
  {
    const FileHandle held(CreateFileW(Path(L"a.wav").c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_EQ(Check(L"a_wav.frq"), marks) << "the wave is not opened again";
    ASSERT_TRUE(Unloads());
  }
  Write(L"a.wav", WaveFile(440.0));
  EXPECT_EQ(Check(L"a_wav.frq"), 0) << "another recording";
  ASSERT_TRUE(Unloads());
  folder_.Write(L"local\\Marlit\\Heard\\" + *NamesIn(Kept()).begin(), Bytes(5000, 7));
  EXPECT_EQ(Check(L"b_wav.frq"), marks) << "what was kept is damaged";
}

TEST_F(CheckLibraryTest, GivesTheSameMarksAheadOfItsTurnAndInIt) {
  constexpr int kWaves = 30;
  for (int i = 0; i < kWaves; ++i) Write(std::to_wstring(100 + i) + L".wav", WaveFile(i % 3 == 0 ? 220.0 : 440.0));
  const CheckLibrary library;
  for (int i = 0; i < kWaves; ++i) {
    FrqMap map = OctaveHigh();
    const CheckQuery query(map, Path(std::to_wstring(100 + i) + L"_wav.frq"));
    library.Judge({}, query);
    EXPECT_EQ(TakeCheckResults(*query.Frames, map) > 160, i % 3 == 0) << i;
    if (i % 7 == 0) Sleep(50);
  }
}

}  // namespace
