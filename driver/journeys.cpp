// The journeys: what a user does, and what the files hold afterwards.
#include "driver/journeys.h"

#include <sddl.h>

#include <algorithm>
#include <cmath>

#include "driver/screen.h"
#include "resources/ids.h"

namespace {

constexpr UINT kJobMs = 180'000;

struct FirstStart : Journey {
  void Travel() override {
    Keep();
    Open();
    Shoot("empty", "Started without a voicebank, settings or a resampler");
    PressInEditor(L"Ctrl+o");
    OpenByFolderDialog();
    Shoot("opened", "Opened the sample voicebank by Ctrl+O, its path typed");
    Menu(L"t o");
    Dialog(kOption);
    Shoot("bundled", "Tool, Option: nothing is chosen, so the resampler beside the program is in use");
    Press(L"Escape");
    AwaitEndOf(kOption);
    CreateMissingMaps(bank_);
    Shoot("created", "Edit, Create missing frequency maps");
    Check("every wave has its map", [this] { return EveryWaveHasAMap(FilesIn(bank_)); });
    CheckChanged("only the missing maps are new", L"mi_wav.frq お_wav.frq 強/い_wav.frq");
    before_[L"mi_wav.frq"] = Now(L"mi_wav.frq");
    GoTo(0);
    SetFrame(30, 233.25);
    Shoot("edited", "The first syllable, whose map was made just now: one frame set");
    Press(L"Ctrl+s");
    CheckFrame("the map that was made has the frame", L"mi_wav.frq", 30, 233.25);
    CheckOnlyFrames("and nothing else of it has changed", L"mi_wav.frq", 30, 30);
    Keep();
    Leave();
    Check("no resampler is written down", [] { return !IsResamplerChosen(); });
    OpenAgain();
  }

  void OpenByFolderDialog() {
    Dialog(kFolderDialog);
    Shoot("folder-dialog", "The folder dialog");
    TypeOver(bank_.wstring());
    Press(L"Return");
    AwaitEndOf(kFolderDialog);
    Await("the syllables", [this] { return RowCount() == 14; });
  }

  void OpenAgain() {
    Open();
    Menu(L"f f");
    Shoot("recent", "Started again: the voicebank is among the recent folders");
    Press(L"1");
    Await("the syllables", [this] { return RowCount() == 14; });
    Shoot("reopened", "Opened it from there");
    Menu(L"e Down*7 Return");  // its access key is that of another item too
    Dialog(kQuestion);
    Shoot("create-all-question", "Edit, Initialize all frequency maps");
    Press(L"n");
    AwaitEndOf(kQuestion);
    CheckChanged("No leaves all maps as they are", L"");
    Leave();
  }
};

struct ManySyllables : Journey {
  void Travel() override {
    const std::filesystem::path samples = std::exchange(bank_, bank_ / L"many");
    std::filesystem::create_directory(bank_);
    const wchar_t* const stems[] = {L"あ", L"い", L"う", L"え", L"か", L"さ", L"ま", L"ra", L"na_2", L"mi"};
    for (int i = 0; i < 150; ++i) {
      const std::wstring stem = stems[i % std::size(stems)], number = std::to_wstring(1000 + i).substr(1);
      std::filesystem::copy(samples / (stem + L".wav"), bank_ / (stem + L"_" + number + L".wav"));
    }
    Open(bank_);
    TypeOptions(ProgramFolder() / L"basic-resampler.exe", L"4");
    Shoot("option", "Tool, Option: typed the path of the resampler and 4 workers");
    Press(L"Return");
    AwaitEndOf(kOption);
    Menu(L"e m");
    Dialog(kCreating);
    ShootNow("creating", "Edit, Create missing frequency maps, on 150 syllables");
    AwaitEndOf(kCreating, kJobMs);
    ToEditor();
    Shoot("created", "All are made");
    Check("every wave has its map", [this] { return EveryWaveHasAMap(FilesIn(bank_)); });
    Keep();
    SpoilAndCorrect({L"あ_010_wav.frq", L"か_064_wav.frq", L"ra_137_wav.frq"});
  }

  void SpoilAndCorrect(const std::vector<std::wstring>& spoilt) {
    for (const std::wstring& map : spoilt) ScaleFrames(bank_ / map, 60, 12, 2.0);
    Menu(L"f f 1");
    Shoot("reopened", "Opened the folder again by File, Recent Folders: three maps have been spoilt outside");
    Menu(L"Right*3 Down Return");
    Dialog(kCheck);
    Shoot("check", "Tool, Check frequency maps");
    Press(L"Return");
    const HWND bar = Dialog(kModifyBar);
    Shoot("checked", "The bar shows the first place");
    Front(bar);
    Press(L"Alt+n");
    Shoot("next", "Next");
    Press(L"Alt+a");
    AwaitEndOf(kModifyBar);
    Shoot("modified", "Modify All");
    PressInEditor(L"Ctrl+Shift+s");
    Shoot("saved", "Ctrl+Shift+S");
    for (const std::wstring& map : spoilt) {
      Check("octave errors have gone", [&] { return PitchIsNear(Before(map), Now(map)); });
    }
    Leave();
    Files after = FilesIn(bank_);
    for (const std::wstring& map : spoilt) after[map] = Before(map);
    Check("no other map has changed", [&] { return after == before_; });
  }

  // As many frames, none further apart than a semitone.
  static bool PitchIsNear(const Bytes& before, const Bytes& after) {
    const std::vector<double> was = FrequenciesOf(before), is = FrequenciesOf(after);
    return !was.empty() && std::equal(was.begin(), was.end(), is.begin(), is.end(), [](double one, double other) {
      return one == other || (one / other < 1.06 && one / other > 0.94);
    });
  }
};

struct Plugin : Journey {
  void Travel() override {
    Keep();
    ChooseResampler(ProgramFolder() / L"basic-resampler.exe");
    WriteHostFile();
    Open(HostFile());
    Shoot("listed", "Started by the host on the notes か, あ強, か and one that the voicebank does not know");
    Leave();
    Check("the host is told that nothing was saved", [this] { return ReadFile(HostFile()).empty(); });
    CheckChanged("no file of the voicebank has changed", L"");

    WriteHostFile();
    Open(HostFile());
    Await("two syllables", [this] { return RowCount() == 2; });
    SetFrame(30, 233.25);
    GoTo(1);
    SetFrame(31, 234.5);
    Shoot("edited", "Set a frame of each of the two");
    Press(L"Ctrl+Down");  // there is no third
    SetFrame(32, 235.75);
    Press(L"Ctrl+Shift+s");
    Shoot("saved", "Ctrl+Down at the last syllable, one more frame, and Ctrl+Shift+S");
    CheckFrame("the last frame is saved", L"強/あ_wav.frq", 32, 235.75);
    Menu(L"f e");
    Await("all syllables", [this] { return RowCount() == 14; });
    Shoot("whole-voicebank", "File, Edit all syllables of this voicebank");
    Leave();
    CheckFiles();
  }

  void CheckFiles() {
    const std::string dummy = "dummy\n";
    Check("the host is told that something was saved",
          [&] { return ReadFile(HostFile()) == Bytes(dummy.begin(), dummy.end()); });
    CheckChanged("the maps of the two syllables alone have changed", L"か_wav.frq 強/あ_wav.frq");
    CheckOnlyFrames("in か it is the frame that was set", L"か_wav.frq", 30, 30);
    CheckFrame("it has the frequency that was typed", L"か_wav.frq", 30, 233.25);
    CheckOnlyFrames("in 強/あ it is the two that were set", L"強/あ_wav.frq", 31, 32);
    CheckFrame("the first has its frequency", L"強/あ_wav.frq", 31, 234.5);
    CheckFrame("and so has the second", L"強/あ_wav.frq", 32, 235.75);
  }

  std::filesystem::path HostFile() const { return folder_ / L"host.tmp"; }
  void WriteHostFile() const {
    const std::wstring text = L"[#VERSION]\r\nUST Version 1.20\r\n[#SETTING]\r\nTempo=120\r\nVoiceDir=" +
                              bank_.wstring() +
                              L"\r\n[#PREV]\r\nLength=480\r\nLyric=い\r\n"
                              L"[#0001]\r\nLength=480\r\nLyric=か\r\n"
                              L"[#0002]\r\nLength=240\r\nLyric=x\r\n@alias=あ強\r\n"
                              L"[#0003]\r\nLength=480\r\nLyric=か\r\n"
                              L"[#0004]\r\nLength=480\r\nLyric=そ\r\n"
                              L"[#NEXT]\r\nLength=480\r\nLyric=う\r\n";
    Bytes bytes(2 * text.size());
    bytes.resize(static_cast<std::size_t>(
        WideCharToMultiByte(932, 0, text.data(), static_cast<int>(text.size()), reinterpret_cast<char*>(bytes.data()),
                            static_cast<int>(bytes.size()), nullptr, nullptr)));
    WriteFile(HostFile(), bytes);
  }
};

struct ReadOnly : Journey {
  void Travel() override {
    ChooseResampler(ProgramFolder() / L"basic-resampler.exe");
    SetFileAttributesW((bank_ / L"か_wav.frq").c_str(), FILE_ATTRIBUTE_READONLY);
    Keep();
    Open(bank_);
    GoTo(8);
    SetFrame(40, 222.5);
    Press(L"Ctrl+s");
    ReadFailure("failed", "か: one frame set, Ctrl+S on a map that is read-only");
    CheckChanged("the map is as it was", L"");
    GoTo(4);
    SetFrame(20, 266.75);
    GoTo(9);
    SelectFrames(70, 5);
    DoubleClick(MiddleOf(Item(IDC_EDITOR_HALVE)));
    Await("half of it", [this] { return std::abs(std::stod(FrameText(75)) * 2.0 - was(75)) < 1e-6; });
    Shoot("edited", "い: one frame set. さ: six frames halved by a double click on the button below the list");
    Press(L"Ctrl+Shift+s");
    ReadFailure("failed-all", "Ctrl+Shift+S");
    CheckChanged("what comes before the read-only map is saved, and nothing behind it", L"い_wav.frq");
    GoTo(8);
    Shoot("kept", "か still has its edit");
    SaveAll();
    SaveInFolder();
  }

  double was(std::size_t frame) const { return FrequencyOf(Before(L"さ_wav.frq"), frame); }

  void ReadFailure(const char* name, const char* text) {
    Dialog(kQuestion);
    Shoot(name, text);
    Press(L"Return");
    AwaitEndOf(kQuestion);
  }

  void SaveAll() {
    SetFileAttributesW((bank_ / L"か_wav.frq").c_str(), FILE_ATTRIBUTE_NORMAL);
    Press(L"Ctrl+Shift+s");
    Shoot("saved", "Ctrl+Shift+S when the map can be written again");
    CheckChanged("all three maps are saved", L"い_wav.frq か_wav.frq さ_wav.frq");
    CheckFrame("い has the frame that was set", L"い_wav.frq", 20, 266.75);
    CheckFrame("か has the frame that was set", L"か_wav.frq", 40, 222.5);
    CheckOnlyFrames("nothing else in it", L"か_wav.frq", 40, 40);
    CheckOnlyFrames("さ has six other frames", L"さ_wav.frq", 70, 75);
    for (std::size_t frame = 70; frame <= 75; ++frame) {
      CheckFrame("one of them is the half", L"さ_wav.frq", frame, was(frame) / 2.0);
    }
  }

  void SaveInFolder() {
    LetWrite(false);
    GoTo(10);
    Drag({PlaceIn(Table(), 36, 140), PlaceIn(Table(), 66, 115), PlaceIn(Table(), 96, 90)});
    Shoot("drawn", "ま: a stroke in the table; the folder is read-only now");
    Press(L"Ctrl+s");
    CheckChanged("the map is written in its place", L"い_wav.frq か_wav.frq さ_wav.frq ま_wav.frq");
    CheckOnlyFrames("its frames alone", L"ま_wav.frq", 0, 9999);
    Menu(L"f f 1");
    Dialog(kWarning);
    Shoot("warning", "Opened the read-only folder again");
    Press(L"Return");
    AwaitEndOf(kWarning);
    Shoot("reopened", "Its syllables come when the warning has been closed");
    LetWrite(true);
    Leave();
  }

  // The read-only mark of a folder means something else: that nobody may write there is in its access list.
  void LetWrite(bool writing) const {
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    ConvertStringSecurityDescriptorToSecurityDescriptorW(writing ? L"D:P(A;;GA;;;WD)" : L"D:P(A;;GRGX;;;WD)",
                                                         SDDL_REVISION_1, &descriptor, nullptr);
    SetFileSecurityW(bank_.c_str(), DACL_SECURITY_INFORMATION, descriptor);
    LocalFree(descriptor);
  }
};

struct Leaving : Journey {
  void Travel() override {
    Keep();
    ChooseResampler(ProgramFolder() / L"basic-resampler.exe");
    Open(bank_);
    GoTo(8);
    SetFrame(40, 222.5);
    Press(L"Ctrl+q");
    Dialog(kQuestion);
    Shoot("question", "か: one frame set, and Ctrl+Q");
    Press(L"Return");  // No is the default
    AwaitEndOf(kQuestion);
    Shoot("kept", "Return, which is No");
    Check("the program goes on", [this] { return GoesOn(); });
    CheckChanged("no file has changed", L"");
    Menu(L"f f 1");
    Dialog(kQuestion);
    Shoot("open-question", "File, Recent Folders, the same folder");
    Press(L"n");
    AwaitEndOf(kQuestion);
    PressInEditor(L"Ctrl+s");
    Shoot("saved", "No, and Ctrl+S");
    CheckFrame("the edit was kept and is saved now", L"か_wav.frq", 40, 222.5);
    CheckOnlyFrames("nothing else in the map has changed", L"か_wav.frq", 40, 40);
    GiveUpEdits();
    Open(bank_);
    GoTo(8);
    Shoot("reopened", "Started again, か");
    Leave();
  }

  void GiveUpEdits() {
    SetFrame(41, 223.75);
    GoTo(9);
    SetFrame(42, 224.25);
    PressInEditor(L"Escape");
    Dialog(kQuestion);
    Shoot("question-again", "A frame of か and one of さ, and Escape");
    Press(L"y");
    Check("Yes ends the program", [this] { return EndsWell(); });
    CheckChanged("the files are those of the last save", L"か_wav.frq");
    CheckOnlyFrames("without the edits behind it", L"か_wav.frq", 40, 40);
  }
};

template <typename One>
std::unique_ptr<Journey> Make() {
  return std::make_unique<One>();
}

}  // namespace

const std::vector<NamedJourney>& Journeys() {
  static const std::vector<NamedJourney> journeys = {
      {"first-start", Make<FirstStart>}, {"many-syllables", Make<ManySyllables>}, {"plugin", Make<Plugin>},
      {"conversion", MakeConversion},    {"read-only", Make<ReadOnly>},           {"leaving", Make<Leaving>},
  };
  return journeys;
}
