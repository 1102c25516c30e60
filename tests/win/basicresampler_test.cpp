// The bundled resampler as a program: hosts start it thousands of times and look at nothing but what it leaves.

#include "companions/resampler/mrqlock.h"
#include "companions/resampler/render.h"
#include "frqmap/mapfiles.h"
#include "frqmap/mrqstore.h"
#include "native/testdata.h"
#include "native/tone.h"
#include "pitch/pitchanalysis.h"
#include "voicebank/waveheader.h"
#include "driver/programs.h"
#include "win/scratch.h"

namespace {

constexpr wchar_t kWave[] = L"強 い&%^.wav";

// A second of 300 Hz.
const Bytes& WaveFile() {
  static const Bytes file = EncodeWaveFile(To16Bits(SecondOfTone([](double) { return 300.0; }, 0.0, 0.8)), 44100);
  return file;
}

struct BasicResampler : testing::Test {
  // A copy under another name, of another family; in a folder of its own, so that what it writes can be counted.
  void Install(const std::wstring& name) {
    folder_.Write(L"program\\" + name, testdata::BytesAt(MARLIT_RESAMPLER));
    program_ = folder_.Path(L"program\\" + name);
  }
  void SetUp() override {
    Install(L"basic-resampler.exe");
    std::filesystem::create_directories(Bank());
  }

  std::wstring Bank() const { return folder_.Path(L"bank"); }
  std::wstring Path(const std::wstring& name) const { return Bank() + L"\\" + name; }
  void Write(const std::wstring& name, const Bytes& bytes) { folder_.Write(L"bank\\" + name, bytes); }

  // "@" stands for the voicebank's folder. It is not made the current one: what the system starts for a console stays
  // in there for a while, and the folder could not be deleted.
  UniqueHandle<KernelTraits> Start(const std::wstring& arguments) const {
    std::wstring line = L"\"" + program_ + L"\" ";
    for (const wchar_t c : arguments) line += c == L'@' ? Path(L"") : std::wstring(1, c);
    return StartProgram(line, nullptr).first;
  }
  DWORD Run(const std::wstring& arguments) const { return ExitCodeOf(Start(arguments).get()); }

  // As the program itself asks for a map.
  DWORD MakeMapOf(const std::wstring& wave) const { return Run(L"\"@" + wave + L"\" nul 100 100 GN 0 50"); }

  ScratchFolder folder_;
  std::wstring program_;
};

std::wstring Render(const std::wstring& rest) {
  return L"\"@" + std::wstring(kWave) + L"\" \"@お.wav\" " + rest;
}

TEST_F(BasicResampler, MakesTheMapOfItsFamilyBesideTheWave) {
  const std::tuple<const wchar_t*, FrqType, const wchar_t*> cases[] = {
      {L"basic-resampler.exe", FrqTypeFrq, L"強 い&%^_wav.frq"},
      {L"Model4 copy.exe", FrqTypeFrc, L"強 い&%^_wav.frc"},
      {L"TIPS.exe", FrqTypePmk, L"強 い&%^_wav.pmk"},
      {L"w4u.exe", FrqTypeDio, L"強 い&%^.dio"},
      {L"moresampler.exe", FrqTypeMrq, L"desc.mrq"}};
  for (const auto& [program, kind, file] : cases) {
    SCOPED_TRACE(testing::Message() << "kind " << kind);
    Install(program);
    std::filesystem::remove_all(Bank());
    Write(kWave, WaveFile());
    ASSERT_EQ(MakeMapOf(kWave), 0u);
    EXPECT_EQ(NamesIn(Bank()), (std::set<std::wstring>{kWave, file}));
    MrqStore store;
    store.LoadFolder(Bank());
    FrqMap map;
    ASSERT_EQ(LoadMap(map, Path(kWave), kind, &store), 0);
    EXPECT_EQ(map.Hop, 256);
    EXPECT_NEAR(map.ShownAverage(), 300.0, 1.0);
    EXPECT_NEAR(map.Frames[80].Frequency, 300.0, 1.0);
    EXPECT_EQ(map.Frames[160].Frequency, FrqNoPitch);
    EXPECT_GT(map.Frames[80].Amplitude, 500.0);

    // A map that is there is its user's.
    map.SetFrequency(80 * 256, 444.0);
    ASSERT_EQ(SaveMap(map, Path(kWave), kind, &store), 0);
    const auto edited = ReadWholeFile(Path(file));
    EXPECT_EQ(MakeMapOf(kWave), 0u);
    EXPECT_EQ(ReadWholeFile(Path(file)), edited);
  }
}

TEST_F(BasicResampler, RefusesWhatItCannotDoAndLeavesNothing) {
  Write(kWave, WaveFile());
  Write(L"empty.wav", {});
  Write(L"cut.wav", Bytes(WaveFile().begin(), WaveFile().begin() + 5000));
  Write(L"folder.wav\\x", {});
  Write(L"rubbish.aiff", Bytes(500, 'x'));
  const auto before = NamesIn(Bank());
  const std::pair<std::wstring, DWORD> cases[] = {{L"", 2},
                                                  {Render(L"H4 100 \"\" 0 500"), 2},
                                                  {L"@empty.wav nul", 1},
                                                  {L"@cut.wav nul", 1},
                                                  {L"@folder.wav nul", 1},
                                                  {L"@rubbish.aiff nul", 1},
                                                  {L"@gone.wav @out.wav C4 100 \"\" 0 500", 1}};
  for (const auto& [arguments, code] : cases) {
    EXPECT_EQ(Run(arguments), code) << arguments.c_str();
    EXPECT_EQ(NamesIn(Bank()), before) << arguments.c_str();
  }
  Install(L"vs4u.exe");
  EXPECT_EQ(MakeMapOf(kWave), 1u);
  EXPECT_EQ(NamesIn(Bank()), before);
}

TEST_F(BasicResampler, RendersTheNoteAndMakesTheMapThatIsMissing) {
  Write(kWave, WaveFile());
  ASSERT_EQ(Run(Render(L"A4 100 \"g-5\" 0 1000 0 0 100 100 !120 AA#1#")), 0u);
  EXPECT_EQ(NamesIn(Bank()), (std::set<std::wstring>{kWave, L"強 い&%^_wav.frq", L"お.wav"}));
  WaveHeader wave;
  ASSERT_EQ(wave.Load(Path(L"お.wav"), false), 0);
  EXPECT_NEAR(AnalysePitch(SoundOfWave(wave.format, wave.samples)->samples, 44100, 256).at(70), 440.0, 5.0);

  // A map that cannot be read is left to its user, and the note sounds all the same.
  Write(L"強 い&%^_wav.frq", {1, 2, 3});
  EXPECT_EQ(MakeMapOf(kWave), 1u);
  EXPECT_EQ(Run(Render(L"A4 100 \"\" 0 500")), 0u);
  EXPECT_EQ(ReadWholeFile(Path(L"強 い&%^_wav.frq")), (Bytes{1, 2, 3}));
}

// Each of them raises the entry count of the one file, which no two may do at a time.
TEST_F(BasicResampler, KeepsAllMapsOfAFolderThatManyWriteAtOnce) {
  Install(L"moresampler.exe");
  std::vector<UniqueHandle<KernelTraits>> processes;
  auto lock = std::make_optional<MrqLock>(Bank());
  for (int i = 0; i < 12; ++i) {
    const std::wstring wave = std::to_wstring(i) + L".ka.wav";
    Write(wave, WaveFile());
    processes.push_back(Start(L"@" + wave + L" nul"));
  }
  EXPECT_EQ(WaitForSingleObject(processes.front().get(), 300), DWORD{WAIT_TIMEOUT});
  EXPECT_FALSE(FileExists(Path(L"desc.mrq")));
  lock.reset();
  for (const auto& process : processes) EXPECT_EQ(ExitCodeOf(process.get()), 0u);
  MrqStore store;
  store.LoadFolder(Bank());
  for (int i = 0; i < 12; ++i) EXPECT_TRUE(store.Find(Path(std::to_wstring(i) + L".ka"))) << i;
}

}  // namespace
