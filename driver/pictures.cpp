#include "driver/pictures.h"

#include <algorithm>
#include <cstdio>
#include <initializer_list>

#include "driver/mapfiles.h"
#include "driver/screen.h"
#include "driver/user.h"
#include "resources/ids.h"

namespace {

constexpr UINT kJobMs = 180'000;
constexpr DWORD kJournalMs = 1'200;  // an edit is on the disk within a second

// The program's place in the pictures, which show its path and those of the voicebanks.
const std::filesystem::path kHome = L"C:\\Marlit", kVoices = L"C:\\voice", kSample = kVoices / L"sample",
                            kRestricted = L"C:\\Program Files\\voice";

class Photographer : public User {
 public:
  explicit Photographer(const std::filesystem::path& into) : into_(into) {}

  bool TakeAll() {
    try {
      Install();
      TakeMainWindows();
      TakeDialogs();
      TakeJobs();
      TakeWhatIsKept();
      TakeRestrictedFolder();
    } catch (const std::exception& fault) {
      std::printf("  %s\n", fault.what());
      Screen::Now().Save(into_ / L"wrong.png");
      return false;
    }
    return true;
  }

 private:
  static void Install() {
    std::filesystem::create_directory(kHome);
    for (const wchar_t* name : {L"marlit.exe", L"checkfrq.dll", L"basic-resampler.exe"}) {
      std::filesystem::copy(ProgramFolder() / name, kHome / name);
    }
    WriteSampleBank(kSample);
  }

  // With the settings of a first start, and a resampler of that file name.
  void StartOn(const std::filesystem::path& folder, const wchar_t* resampler = L"basic-resampler.exe") {
    constexpr auto kIfMissing = std::filesystem::copy_options::skip_existing;
    std::filesystem::copy(ProgramFolder() / L"basic-resampler.exe", kHome / resampler, kIfMissing);
    ForgetSettings();
    ChooseResampler(kHome / resampler);
    StartOnly(kHome / L"marlit.exe", folder);
  }
  void Open(const std::filesystem::path& folder, const wchar_t* resampler = L"basic-resampler.exe") {
    StartOn(folder, resampler);
    FindMainWindows();
    Screen::AtRest();
    ToEditor();
  }
  void Close(bool discarding = false) const {
    PressInEditor(L"Ctrl+q");
    if (discarding) {
      Dialog(kQuestion);
      Press(L"y");
    }
    Await("the end of the program", [this] { return EndsWell(); });
  }

  // The screen when it has come to rest, or at once, cut to windows.
  void Take(const char* name, std::initializer_list<HWND> windows, bool atRest = true) const {
    const Screen screen = atRest ? Screen::AtRest() : Screen::Now();
    RECT cut{};
    for (const HWND window : windows) {
      const RECT rect = RectOf(window);
      UnionRect(&cut, &cut, &rect);
    }
    screen.Save(into_ / (std::string(name) + ".png"), cut);
    std::printf("  %s\n", name);
    std::fflush(stdout);
  }
  // A dialog of the system's may begin with another window.
  HWND TakeDialog(const char* name, const DialogKind& kind) const {
    Dialog(kind);
    Screen::AtRest();
    const HWND dialog = Dialog(kind);
    Take(name, {dialog});
    return dialog;
  }
  void TakeAndLeave(const char* name, const DialogKind& kind) const {
    TakeDialog(name, kind);
    Press(L"Escape");
    AwaitEndOf(kind);
  }

  void TakeMainWindows() {
    Open(kSample);
    Take("start", {Editor(), List()});
    EnlargeForPictures();
    Take("files", {List()});
    TakeCorrection();
    TakeSpectrum();
    TakeMenus();
    Close(true);
  }
  void EnlargeForPictures() const { Enlarge(Pixels(150), Pixels(110)); }

  // The syllable か and the octave error in the middle of it, halved by the button under the list.
  void TakeCorrection() const {
    const Bytes map = ReadFile(kSample / L"か_wav.frq");
    const std::vector<double> hz = FrequenciesOf(map);
    const double high = 1.6 * AverageOf(map);
    const auto error = std::find_if(hz.begin(), hz.end(), [=](double one) { return one > high; }) - hz.begin();
    const auto frame = static_cast<int>(error);
    GoTo(8);
    ShowClosely(frame);
    ClickFrames();
    Take("editor", {Editor()});
    SelectFrames(frame, 11);
    Take("error-selected", {Editor()});
    DoubleClick(MiddleOf(Item(IDC_EDITOR_HALVE)));
    Take("error-halved", {Editor()});
    Press(L"Ctrl+q");
    TakeAndLeave("discard", kQuestion);
  }

  // Three steps of zoom, the octaves of a voice, and a place in the syllable.
  void ShowClosely(int column) const {
    PointAt(PlaceIn(Table(), 102, 202));
    TurnWheel(3, VK_CONTROL);
    TurnWheel(20, 0);
    TurnWheel(-(column - 20) / 4, VK_SHIFT);
  }

  void TakeSpectrum() const {
    const POINT button = MiddleOf(GetDlgItem(Table(), IDC_TABLE_VIEW));
    Click(button);
    Take("spectrum", {Editor()});
    const POINT label = MiddleOf(GetDlgItem(Table(), IDC_TABLE_BRIGHTNESS));
    Click(label);
    Take("brightness", {Editor()});
    Click(label);
    Click(button, true);
    Take("colors", {Editor()});
    Press(L"Escape");
  }

  // F10 leaves a menu, however far it is open.
  void TakeMenus() const {
    const std::pair<const char*, const wchar_t*> menus[] = {
        {"menu-file", L"f"}, {"menu-recent", L"f f"}, {"menu-edit", L"e"}, {"menu-view", L"v"},
        {"menu-view-colors", L"v s c"}, {"menu-tool", L"t"}, {"menu-help", L"h"}};
    for (const auto& [name, keys] : menus) {
      Menu(keys);
      Take(name, {Editor()});
      Press(L"F10");
      Screen::AtRest();
    }
  }

  void TakeDialogs() {
    Open(kSample);
    EnlargeForPictures();
    Menu(L"e c");
    TakeAndLeave("convert", kConvert);
    Menu(L"t o");
    TakeAndLeave("option", kOption);
    Menu(L"h a");
    TakeAndLeave("about", kAbout);
    PressInEditor(L"Ctrl+o");
    TakeAndLeave("open-folder", kFolderDialog);
    TakeCheck();
    Close();
  }

  void TakeCheck() const {
    ShowClosely(24);
    CreateMissingMaps(kSample);
    Menu(L"Right*3 Down Return");  // the item has an access key in one language only
    TakeDialog("check", kCheck);
    Press(L"Return");
    DragBelowEditor(TakeDialog("modify", kModifyBar));
    Take("checked", {Editor()});
    Take("files-checked", {List()});
    const int first = std::max(SelectedRow() - 9, 0);
    PressInEditor(L"Ctrl+Up*9");  // the thumbnails begin with the syllable in view
    Await("the row", [=, this] { return SelectedRow() == first; });
    Menu(L"v t");
    Front(TakeDialog("thumbnails", kThumbnails));
    Press(L"Escape");
    AwaitEndOf(kThumbnails);
  }

  // Of the two kinds that ask before, and one that takes long enough to be seen.
  void TakeJobs() {
    const std::filesystem::path many = kVoices / L"many";
    std::filesystem::create_directories(many);
    for (int i = 100; i < 200; ++i) {
      std::filesystem::copy(kSample / L"あ.wav", many / (L"あ_" + std::to_wstring(i) + L".wav"));
    }
    Open(many);
    Menu(L"e m");
    const HWND creating = Dialog(kCreating);
    Await("some maps", [&] { return std::filesystem::exists(many / L"あ_104_wav.frq"); });
    Take("creating", {creating}, false);  // it changes all the time
    AwaitEndOf(kCreating, kJobMs);
    Close();

    Open(kSample, L"vs4u.exe");
    Menu(L"e m");
    TakeAndLeave("vs4ufrq", kRangeOfAnalysis);
    Close();

    Open(kSample, L"moresampler.exe");
    Menu(L"e m");
    Await("the maps", [] { return std::filesystem::exists(kSample / L"強" / L"desc.mrq"); });
    ToEditor();
    Take("files-mrq", {List()});
    Menu(L"e i");
    TakeDialog("initialize-question", kQuestion);
    Press(L"y");
    TakeAndLeave("initialize-mrq", kInitializeMrq);
    Close();
  }

  // Edits that a kill leaves are asked about by the next start; behind their save, and with a map made anew, there are
  // maps that were kept; and a save asks about another program's change.
  void TakeWhatIsKept() {
    Open(kSample);
    EditThreeSyllables();
    Sleep(kJournalMs);
    Kill();

    StartOn(kSample);
    Front(TakeDialog("left-edits", kQuestion));
    Press(L"y");
    AwaitEndOf(kQuestion);
    FindMainWindows();
    Await("the first syllable with edits", [this] { return SelectedRow() == 3; });
    PressInEditor(L"Ctrl+Shift+s");
    GoTo(6);  // え
    MakeAnew(kSample / L"え_wav.frq");
    Menu(L"e k");
    const HWND kept = Dialog(kKeptMaps);
    Press(L"Down Shift+Down");
    Take("kept-maps", {kept});
    Press(L"Escape");
    AwaitEndOf(kKeptMaps);

    DrawStroke();
    WriteFile(kSample / L"え_wav.frq", ReadFile(kSample / L"い_wav.frq"));
    Press(L"Ctrl+s");
    TakeAndLeave("map-changed", kMapChanged);
    Close(true);
  }

  // あ, い and う, behind three with Latin names.
  void EditThreeSyllables() const {
    for (int row = 3; row <= 5; ++row) {
      GoTo(row);
      DrawStroke();
    }
  }
  void DrawStroke() const {
    Drag({PlaceIn(Table(), 122, 152), PlaceIn(Table(), 182, 162), PlaceIn(Table(), 242, 152)});
    Screen::AtRest();
  }
  void MakeAnew(const std::filesystem::path& map) const {
    const Bytes old = ReadFile(map);
    Menu(L"e i");
    Dialog(kQuestion);
    Press(L"y");
    Await("another map", [&] { return ReadFile(map) != old; });
    ToEditor();
    Screen::AtRest();
  }

  // The list comes up only when the warning has been closed.
  void TakeRestrictedFolder() {
    std::filesystem::copy(kSample, kRestricted, std::filesystem::copy_options::recursive);
    StartOn(kRestricted);
    TakeDialog("restricted", kWarning);
    Press(L"Return");
    FindMainWindows();
    Close();
  }

  const std::filesystem::path into_;
};

}  // namespace

bool TakePictures(const std::filesystem::path& into) {
  return Photographer(into).TakeAll();
}
