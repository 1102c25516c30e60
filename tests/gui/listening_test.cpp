// Listening: what each command makes of the selected stretch, that it can be stopped, and what it says where there is
// nothing to be heard. The test's sound device swallows what it is given; what would be heard lies in a scratch folder.
#include "gui/resamplerdouble.h"
#include "native/tone.h"
#include "pitch/pitchanalysis.h"
#include "voicebank/sound.h"
#include "voicebank/waveheader.h"

namespace {

constexpr std::size_t kHop = 256;

struct Listen : DoubleTest {
  // A second of 440 Hz and a map of as many frames.
  void AddTone(const std::wstring& name, double mapHz) const {
    AddSyllable(name, std::vector<double>(172, mapHz));
    const std::vector<float> tone = SecondOfTone([](double) { return 440.0; }, 0.0, 1.0);
    folder_.Write(name + L".wav", EncodeWaveFile(To16Bits(tone), 44100));
  }

  void SetKey(const std::wstring& hz) const {
    Type(IDC_EDITOR_KEY, hz);
    SendItem(IDC_EDITOR_KEY, WM_KILLFOCUS);
  }

  static std::wstring Made(const std::wstring& name) {
    for (const std::wstring& folder : Scratches()) {
      if (FileExists(PathIn(folder, name))) return PathIn(folder, name);
    }
    return {};
  }
  // As the menu says when it is opened.
  bool IsSounding() const {
    SendMessageW(editor_, WM_MENUSELECT, MAKEWPARAM(0, 0xFFFF), 0);
    return !IsGrey(ID_LISTEN_STOP);
  }
  // On the keyboard, once the editor has it.
  void PressInEditor(const std::vector<WORD>& keys) const {
    EXPECT_TRUE(Eventually([&] {
      SetForegroundWindow(editor_);
      const GUITHREADINFO thread = InputOf(editor_);
      return thread.hwndActive == editor_ && thread.hwndFocus;
    }));
    PressKeys(editor_, keys);
  }
  // Presses the keys and waits for the end; what has been heard.
  WaveHeader Hear(const std::vector<WORD>& keys, const std::wstring& name) const {
    DeleteFileW(Made(name).c_str());
    PressInEditor(keys);
    EXPECT_TRUE(Eventually([&] { return !Made(name).empty() && !IsSounding(); })) << name.c_str();
    WaveHeader wave;
    EXPECT_EQ(wave.LoadWav(Made(name), false), 0);
    return wave;
  }
  // At a frame [Hz].
  static double PitchOf(const WaveHeader& wave, std::size_t frame) {
    const auto sound = SoundOfWave(wave.format, wave.samples);
    return AnalysePitch(sound.value_or(Sound()).samples, wave.format.samplesPerSec, kHop).at(frame);
  }
  bool Says(const std::vector<WORD>& keys, int text) const {
    PressInEditor(keys);
    return HasSaid(LoadResString(static_cast<UINT>(text)));
  }
  static Bytes Channel(const Bytes& stereo, std::size_t channel) {
    Bytes bytes;
    for (std::size_t i = 2 * channel; i + 1 < stereo.size(); i += 4) {
      bytes.insert(bytes.end(), {stereo[i], stereo[i + 1]});
    }
    return bytes;
  }

  const std::vector<WORD> recording_ = {VK_CONTROL, VK_F5}, curve_ = {VK_SHIFT, VK_F5},
                          both_ = {VK_CONTROL, VK_SHIFT, VK_F5}, compare_ = {VK_F9};
};

TEST_F(Listen, PlaysTheRecordingTheCurveOrBothOverTheSelectedStretch) {
  AddTone(L"bank\\a", 220.0);
  Start(Bank());
  const std::set<std::wstring> names = NamesIn(Bank());
  WaveHeader wave;
  ASSERT_EQ(wave.Load(Wave(L"a"), false), 0);
  EXPECT_EQ(Hear(recording_, L"recording.wav").samples, wave.samples) << "nothing is selected";
  SelectFrames({10, 40});
  const Bytes part = Hear(recording_, L"recording.wav").samples;
  EXPECT_EQ(part, Bytes(wave.samples.begin() + 2 * 10 * kHop, wave.samples.begin() + 2 * 41 * kHop));
  const WaveHeader curve = Hear(curve_, L"curve.wav");
  EXPECT_EQ(curve.samples.size(), 2 * 31 * kHop);
  EXPECT_NEAR(PitchOf(curve, 15), 220.0, 0.5);
  const WaveHeader both = Hear(both_, L"both.wav");
  EXPECT_EQ(both.format.channels, 2);
  EXPECT_EQ(Channel(both.samples, 0), part);
  EXPECT_EQ(Channel(both.samples, 1), curve.samples);
  EXPECT_EQ(NamesIn(Bank()), names);
  Leave();
  EXPECT_TRUE(Scratches().empty());
}

TEST_F(Listen, RendersTheSavedCurveAndThenTheEditedOne) {
  AddTone(L"bank\\a", 440.0);
  Start(Bank());
  SetKey(L"440");
  Press(ID_FILE_SAVE);
  EXPECT_TRUE(Says(compare_, IDS_LISTEN_SAME));
  SetKey(L"880");
  SelectFrames({60, 109});
  const WaveHeader edited = Hear(compare_, L"edited.wav");
  WaveHeader saved;
  ASSERT_EQ(saved.LoadWav(Made(L"saved.wav"), false), 0);
  EXPECT_EQ(saved.samples.size(), 2 * 50 * kHop);
  EXPECT_NEAR(PitchOf(saved, 25), 440.0, 10.0);
  EXPECT_NEAR(PitchOf(edited, 25), 880.0, 20.0);
  EXPECT_EQ(Column(2), L"*|") << "nothing was saved";
}

// Play takes the entry as it was saved.
TEST_F(Listen, RendersEditsOfMapsThatShareAFileToo) {
  Install(L"moresampler.exe");
  folder_.Write(L"program\\note", SecondOfSilence());
  Script(L"300 0 note");
  folder_.Write(L"bank\\a.wav", SecondOfSilence());
  MrqEntry saved;
  saved.Hop = static_cast<SampleCount>(kHop);
  saved.Frequencies = {220.0, 220.0};
  MrqStore store;
  store.AddFolder(Bank());
  ASSERT_EQ(store.SaveEntry(Bank() + L"\\a", saved), 0);
  Start(Bank());
  SetFirstFrame(L"330");
  PressInEditor(compare_);
  std::set<double> rendered;
  EXPECT_TRUE(Eventually([&] {
    MrqStore beside;
    for (const std::wstring& folder : Scratches()) {
      beside.LoadFolder(folder);
      if (const auto entry = beside.Find(PathIn(folder, L"a"))) rendered.insert(entry->Frequencies.at(0));
    }
    return rendered == std::set{220.0, 330.0};
  }));
}

TEST_F(Listen, StopsBySpaceAndWithTheWindow) {
  Install(L"resampler.exe");
  folder_.Write(L"program\\note", SecondOfSilence());
  Script(L"600 0 note");
  AddTone(L"bank\\a", 440.0);
  Start(Bank());
  SetFirstFrame(L"220");
  SelectFrames({3, 4, 5});
  SendMessageW(editor_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Item(IDC_EDITOR_FRAMES)), TRUE);
  PressInEditor(compare_);
  EXPECT_TRUE(Eventually([this] { return IsSounding() && FileExists(folder_.Path(L"program\\calls.txt")); }));
  PressInEditor({VK_SPACE});
  EXPECT_TRUE(Eventually([this] { return !IsSounding(); }));
  EXPECT_EQ(SelectedFrames(), (std::vector{3, 4, 5})) << "the key was no one else's";
  // The run comes to its end before the next command, and no second one begins.
  Hear(curve_, L"curve.wav");
  const std::vector<std::wstring> calls = TakeCalls();
  EXPECT_TRUE(calls.size() == 2 && calls.back() == L"-");
  EXPECT_TRUE(Made(L"saved.wav").empty());
  PressInEditor({VK_SPACE});
  EXPECT_TRUE(Eventually([this] { return SelectedFrames() != std::vector{3, 4, 5}; })) << "without a sound it is a key";
  PressInEditor(compare_);
  EXPECT_TRUE(Eventually([this] { return IsSounding(); }));
  Leave();
  EXPECT_EQ(ExitCode(), 0);
  EXPECT_TRUE(Scratches().empty());
}

TEST_F(Listen, SaysWhyThereIsNothingToBeHeard) {
  AddTone(L"bank\\a", 220.0);
  AddSyllable(L"bank\\b", {0.0, 0.0});  // its wave lacks its sound
  AddSyllable(L"bank\\c", std::vector<double>(400, 220.0));
  folder_.Write(L"bank\\c.wav", SecondOfSilence());
  Start(Bank());
  Select(1);
  for (const auto& keys : {recording_, both_}) EXPECT_TRUE(Says(keys, IDS_LISTEN_NOWAVE));
  EXPECT_TRUE(Says(curve_, IDS_LISTEN_NOCURVE));
  Select(2);
  SelectFrames({300, 310});
  for (const auto& keys : {recording_, both_}) EXPECT_TRUE(Says(keys, IDS_LISTEN_BEHIND));
  EXPECT_EQ(Hear(curve_, L"curve.wav").samples.size(), 2 * 11 * kHop) << "it needs no recording";
  DeleteFileW(Wave(L"c").c_str());
  EXPECT_EQ(Hear(curve_, L"curve.wav").samples.size(), 2 * 11 * kHop);
}

}  // namespace
