// The program among others: what they send to its windows, what lies in the folder in which it was started, and that it
// is ended by them, also while it saves. It runs in a process of its own.
#include <algorithm>
#include <cstring>
#include <tuple>
#include <utility>

#include "frqctrl/frqctrlmessages.h"
#include "gui/program.h"
#include "native/testdata.h"

namespace {

constexpr int kBoxText = 0xFFFF;
constexpr wchar_t kBank[] = L"bank\\", kProgram[] = L"program\\marlit.exe";

struct Strangers : testing::Test {
  Strangers() {
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\UTAU Plugin");
    WriteMaps(L"ab", 40);
    folder_.Write(kProgram, testdata::BytesAt(MARLIT_PROGRAM));
  }
  ~Strangers() override {
    End();
    limitMs = usualMs_;
  }

  // Of syllables with names of a letter; the bytes of each map.
  Bytes WriteMaps(const std::wstring& names, SampleCount frames) const {
    FrqMap map;
    map.Create(frames, FrqTypeFrq);
    for (FrqFrame& frame : map.Frames.Own()) frame.Frequency = 220.0;
    const Bytes bytes = EncodeFreq0003(map, FrqTypeFrq);
    for (const wchar_t name : names) {
      folder_.Write(kBank + std::wstring(1, name) + L".wav", SecondOfSilence());
      folder_.Write(kBank + std::wstring(1, name) + L"_wav.frq", bytes);
    }
    return bytes;
  }
  // In the folder of the voicebank, until so many frames are shown.
  void Start(LRESULT frames) {
    const std::wstring bank = folder_.Path(L"bank");
    std::tie(process_, id_) = StartProgram(L"\"" + folder_.Path(kProgram) + L"\" \"" + bank + L"\"", bank.c_str());
    const auto isThere = [&] {
      editor_ = FindDialogOf(id_, WC_LISTBOXW, IDC_EDITOR_FRAMES);
      list_ = FindDialogOf(id_, WC_LISTVIEWW, IDC_LIST_FILES);
      return editor_ && list_ && SendDlgItemMessageW(editor_, IDC_EDITOR_WAVEINFO, WM_GETTEXTLENGTH, 0, 0) > 0;
    };
    ASSERT_TRUE(Eventually(isThere));
    ASSERT_TRUE(Eventually([&] { return FrameCount() == frames; })) << FrameCount();
  }
  void End() {
    if (!process_) return;
    TerminateProcess(process_.get(), 1);
    WaitForSingleObject(process_.get(), limitMs);
    process_.reset();
  }
  LRESULT FrameCount() const { return SendDlgItemMessageW(editor_, IDC_EDITOR_FRAMES, LB_GETCOUNT, 0, 0); }
  HWND Box() const { return FindDialogOf(id_, L"Static", kBoxText, editor_); }
  // Answers the question for the edits that were left with Yes; its text.
  std::wstring BringBack() const {
    HWND box = nullptr;
    EXPECT_TRUE(Eventually([&] { return (box = Box()) != nullptr; }));
    const std::wstring text = WindowText(GetDlgItem(box, kBoxText));
    SendMessageW(box, WM_COMMAND, IDYES, 0);
    EXPECT_TRUE(Eventually([&] { return !IsWindow(box); }));
    return text;
  }

  // All of the program, also those within others.
  std::vector<HWND> Windows() const {
    std::vector<HWND> windows;
    const auto add = [] WINAPI(HWND child, LPARAM to) -> BOOL {
      return reinterpret_cast<std::vector<HWND>*>(to)->push_back(child), TRUE;
    };
    for (HWND window = nullptr; (window = FindWindowExW(nullptr, window, nullptr, nullptr));) {
      DWORD process = 0;
      GetWindowThreadProcessId(window, &process);
      if (process != id_) continue;
      windows.push_back(window);
      EnumChildWindows(window, add, reinterpret_cast<LPARAM>(&windows));
    }
    return windows;
  }
  static bool IsReceiver(HWND window) {
    wchar_t name[32] = L"";
    GetClassNameW(window, name, 32);
    return name == std::wstring(L"#32770") || name == std::wstring(L"FrequencyTableControl");
  }

  // False if the program has ended. A box or a menu that a message has opened is in nobody's way.
  bool Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    ++sent_;
    if (!SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, 300, nullptr)) {
      PostMessageW(GetDlgItem(editor_, IDC_EDITOR_TABLE), WM_CANCELMODE, 0, 0);
      for (const int id : {kBoxText, IDC_VIRTUALSTORE_FOLDER}) {
        if (const HWND box = FindDialogOf(id_, L"Static", id, editor_)) PostMessageW(box, WM_COMMAND, IDCANCEL, 0);
      }
    }
    return WaitForSingleObject(process_.get(), 0) == WAIT_TIMEOUT;
  }
  const ScratchFolder folder_;
  const ScratchVariable localData_{L"LOCALAPPDATA", folder_.Path(L"local")};
  const UINT usualMs_ = std::exchange(limitMs, 20'000);
  UniqueHandle<KernelTraits> process_;
  DWORD id_ = 0;
  HWND editor_ = nullptr, list_ = nullptr;
  int sent_ = 0;
};

TEST_F(Strangers, MessagesWithWildParametersEndNothing) {
  Start(40);
  SendMessageW(list_, FLM_SHOWTHUMBNAIL, 1, 0);
  // Numbers, memory that is not there, pages that can be read alone, at even and odd addresses, and the system's.
  const std::vector<DWORD> wild = {0, 1, 0xFFFFFFFF, 0x10000, 0x7FFE0001, 0x400000, 0xC0000000};
  for (const auto& [first, last] : {std::pair(0x8000u, 0x8100u), {WM_USER, WM_USER + 0x80u}}) {
    for (UINT message = first; message <= last; ++message) {
      for (const HWND window : Windows()) {
        const std::size_t step = IsReceiver(window) ? 1 : wild.size();  // one is enough for the controls of the system
        for (std::size_t i = message % step; i < wild.size(); i += step) {
          const WPARAM other = wild[(i + message) % wild.size()];
          ASSERT_TRUE(Send(window, message, other, static_cast<LPARAM>(wild[i])))
              << std::hex << message << " " << other << " " << wild[i] << " to " << GetDlgCtrlID(window);
        }
      }
    }
  }
  for (const UINT message : {WM_NOTIFY, WM_INITDIALOG}) {
    for (const DWORD lParam : wild) EXPECT_TRUE(Send(list_, message, 0, static_cast<LPARAM>(lParam)));
  }
  RecordProperty("sent", sent_);

  for (const WPARAM syllable : {1, 0}) SendMessageW(list_, FLM_SELECTSYLLABLE, syllable, 0);
  ASSERT_EQ(FrameCount(), 40);
  const auto file = [this] { return ReadWholeFile(folder_.Path(L"bank\\a_wav.frq")).value(); };
  const Bytes before = file();
  SetDlgItemTextW(editor_, IDC_EDITOR_FREQUENCY, L"440");
  for (const WPARAM command : {IDC_EDITOR_SET, ID_FILE_SAVE}) SendMessageW(editor_, WM_COMMAND, command, 0);
  EXPECT_TRUE(file().size() == before.size() && file() != before) << "the program edits and saves";
}

TEST_F(Strangers, EditsOutlastTheEndOfTheSession) {
  Start(40);
  SetDlgItemTextW(editor_, IDC_EDITOR_FREQUENCY, L"440");
  SendMessageW(editor_, WM_COMMAND, IDC_EDITOR_SET, 0);
  SendMessageW(editor_, WM_ENDSESSION, TRUE, 0);
  Sleep(1000);  // that much may be missing
  End();
  Start(40);
  EXPECT_NE(BringBack().find(L"a.wav"), std::wstring::npos);
  const auto isBack = [&] {
    wchar_t text[64] = L"";
    SendDlgItemMessageW(editor_, IDC_EDITOR_FRAMES, LB_GETTEXT, 0, reinterpret_cast<LPARAM>(text));
    return text == std::wstring(L"440.00000000");
  };
  EXPECT_TRUE(Eventually(isBack));
  for (const WPARAM command : {ID_FILE_SAVE, IDCANCEL}) SendMessageW(editor_, WM_COMMAND, command, 0);
  EXPECT_EQ(WaitForSingleObject(process_.get(), limitMs), WAIT_OBJECT_0);
}

// Edits at both ends of maps that take it some time to write.
TEST_F(Strangers, KilledWhileItSavesItLosesNoMapAndNoEdit) {
  constexpr int kFrames = 4000, kHeader = 40, kFrame = 16;  // the last two in bytes
  const std::wstring names = L"abcdefgh";
  const auto all = std::ssize(names);
  double frequency = 300.0;
  for (const DWORD delayMs : {0u, 15u, 40u}) {
    SCOPED_TRACE(delayMs);
    const Bytes old = WriteMaps(names, kFrames);
    Bytes edited = old;
    ++frequency;
    for (const int frame : {0, kFrames - 1}) memcpy(&edited.at(kHeader + frame * kFrame), &frequency, sizeof(frequency));
    const auto countOf = [&](const Bytes& bytes) {
      return std::ranges::count_if(names, [&](wchar_t name) {
        return ReadWholeFile(folder_.Path(kBank + std::wstring(1, name) + L"_wav.frq")) == bytes;
      });
    };
    Start(kFrames);
    for (WPARAM i = 0; i < names.size(); ++i) {
      SendMessageW(list_, FLM_SELECTSYLLABLE, i, 0);
      for (const int frame : {0, kFrames - 1}) {
        SendDlgItemMessageW(editor_, IDC_EDITOR_FRAMES, LB_SETSEL, FALSE, -1);
        SendDlgItemMessageW(editor_, IDC_EDITOR_FRAMES, LB_SETSEL, TRUE, frame);
        SendMessageW(editor_, WM_COMMAND, MAKEWPARAM(IDC_EDITOR_FRAMES, LBN_SELCHANGE), 0);
        SetDlgItemTextW(editor_, IDC_EDITOR_FREQUENCY, std::to_wstring(frequency).c_str());
        SendMessageW(editor_, WM_COMMAND, IDC_EDITOR_SET, 0);
      }
    }
    Sleep(1000);  // for so long edits may be in memory alone
    PostMessageW(editor_, WM_COMMAND, ID_FILE_SAVEALL, 0);
    Sleep(delayMs);
    End();

    Start(kFrames);
    const auto saved = countOf(edited);
    ASSERT_EQ(countOf(old) + saved, all) << "a map is neither";
    if (saved < all) {
      BringBack();
      PostMessageW(editor_, WM_COMMAND, ID_FILE_SAVEALL, 0);
      EXPECT_TRUE(Eventually([&] { return countOf(edited) == all; })) << countOf(edited);
    }
    End();
    std::filesystem::remove_all(folder_.Path(L"local"));
  }
}

TEST_F(Strangers, LibrariesInTheCurrentFolderAreNotLoaded) {
  wchar_t resampler[MAX_PATH] = L"";
  folder_.Path(L"vs4u.exe").copy(resampler, MAX_PATH - 1);
  folder_.Write(L"vs4u.exe");
  RegWriteValue(L"Resampler", resampler);
  Bytes project(1384 + 2 * 104);  // of the stand-in: a project of one item with two points
  for (const auto& [offset, value] : {std::pair(9, 0xAC), {8, 0x44}, {16, 1}, {292, 200}, {296, 2}}) {
    project[static_cast<std::size_t>(offset)] = static_cast<std::uint8_t>(value);
  }
  folder_.Write(L"bank\\a_wav.vs4ufrq", project);
  for (const std::wstring folder : {L"bank\\", L"program\\"}) {
    const bool isProgram = folder != kBank;
    folder_.Write(folder + L"vslib.dll", testdata::BytesAt(MARLIT_VSLIB_DOUBLE));
    folder_.Write(folder + L"checkfrq.dll", testdata::BytesAt(MARLIT_CHECK_DOUBLES "/checkfrq/checkfrq.dll"));
    Start(isProgram ? 2 : 0);
    PostMessageW(editor_, WM_COMMAND, ID_TOOL_CHECK, 0);
    HWND box = nullptr;
    ASSERT_TRUE(Eventually([&] { return (box = FindDialogOf(id_, L"Static", IDC_CHECK_LOWNOTE)); }));
    SendMessageW(box, WM_COMMAND, IDOK, 0);
    PostMessageW(editor_, WM_COMMAND, ID_VIEW_SPECTRUM, 0);
    std::wstring text;
    const auto isThrough = [&] {
      text = WindowText(GetDlgItem(Box(), kBoxText));
      return !text.empty() || FrqCtrlSender(GetDlgItem(editor_, IDC_EDITOR_TABLE)).ViewMode() == 1;
    };
    EXPECT_TRUE(Eventually(isThrough));
    EXPECT_EQ(text, isProgram ? L"" : LoadResString(IDS_CHECKLIBRARYFAILED));
    End();
  }
}

}  // namespace
