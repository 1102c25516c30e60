// The program is killed while it saves, and started again: every map is the old or the new one, and no edit is gone. It
// runs in a process of its own, over maps that take it some time to write.
#include <cstring>
#include <filesystem>
#include <tuple>
#include <utility>

#include "gui/program.h"
#include "native/testdata.h"

namespace {

constexpr int kSyllables = 8, kFrames = 4000;
constexpr std::size_t kHeader = 40, kFrame = 16;  // bytes

struct Killed : testing::Test {
  Killed() {
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\UTAU Plugin");
    FrqMap map;
    map.Create(kFrames, FrqTypeFrq);
    for (FrqFrame& frame : map.Frames.Own()) frame.Frequency = 220.0;
    old_ = EncodeFreq0003(map, FrqTypeFrq);
    for (int i = 0; i < kSyllables; ++i) folder_.Write(FileOf(i, L".wav"), SecondOfSilence());
  }
  ~Killed() override {
    Kill();
    limitMs = usualMs_;
  }

  static std::wstring FileOf(int index, const wchar_t* ending) {
    return L"bank\\" + std::wstring(1, static_cast<wchar_t>(L'a' + index)) + ending;
  }
  // As saved with the edits: its first and its last frame are others.
  static Bytes Edited(Bytes map, double frequency) {
    for (const std::size_t frame : {0, kFrames - 1}) {
      memcpy(&map[kHeader + frame * kFrame], &frequency, sizeof(frequency));
    }
    return map;
  }
  // How many maps are these bytes.
  int CountOf(const Bytes& bytes) const {
    int count = 0;
    for (int i = 0; i < kSyllables; ++i) count += ReadWholeFile(folder_.Path(FileOf(i, L"_wav.frq"))) == bytes;
    return count;
  }

  void Start() {
    const std::wstring line = L"\"" MARLIT_PROGRAM "\" \"" + folder_.Path(L"bank") + L"\"";
    std::tie(process_, id_) = StartProgram(line, nullptr);
    ASSERT_TRUE(Eventually([this] {
      editor_ = FindDialogOf(id_, WC_LISTBOXW, IDC_EDITOR_FRAMES);
      list_ = FindDialogOf(id_, WC_LISTVIEWW, IDC_LIST_FILES);
      return editor_ && list_ && SendDlgItemMessageW(list_, IDC_LIST_FILES, LVM_GETITEMCOUNT, 0, 0) == kSyllables;
    }));
  }
  void Kill() {
    if (!process_) return;
    TerminateProcess(process_.get(), 1);
    WaitForSingleObject(process_.get(), limitMs);
    process_.reset();
  }
  void EditAll(double frequency) const {
    for (int i = 0; i < kSyllables; ++i) {
      SendMessageW(list_, FLM_SELECTSYLLABLE, static_cast<WPARAM>(i), 0);
      for (const int frame : {0, kFrames - 1}) {
        SendDlgItemMessageW(editor_, IDC_EDITOR_FRAMES, LB_SETSEL, FALSE, -1);
        SendDlgItemMessageW(editor_, IDC_EDITOR_FRAMES, LB_SETSEL, TRUE, frame);
        SendMessageW(editor_, WM_COMMAND, MAKEWPARAM(IDC_EDITOR_FRAMES, LBN_SELCHANGE), 0);
        SetDlgItemTextW(editor_, IDC_EDITOR_FREQUENCY, std::to_wstring(frequency).c_str());
        SendMessageW(editor_, WM_COMMAND, IDC_EDITOR_SET, 0);
      }
    }
  }
  void SaveAll() const { PostMessageW(editor_, WM_COMMAND, ID_FILE_SAVEALL, 0); }
  // Answers the question for the edits that were left with Yes.
  bool BringBack() const {
    HWND box = nullptr;
    return Eventually([&] { return (box = FindDialogOf(id_, L"Static", 0xFFFF, editor_)) != nullptr; }) &&
           PostMessageW(box, WM_COMMAND, IDYES, 0) && Eventually([&] { return !IsWindow(box); });
  }

  const ScratchFolder folder_;
  const std::wstring local_ = folder_.Path(L"local");
  const ScratchVariable localData_{L"LOCALAPPDATA", local_};
  const UINT usualMs_ = std::exchange(limitMs, 20'000);
  Bytes old_;
  UniqueHandle<KernelTraits> process_;
  DWORD id_ = 0;
  HWND editor_ = nullptr, list_ = nullptr;
};

TEST_F(Killed, WhileItSavesItLosesNothing) {
  int partly = 0;
  double frequency = 300.0;
  for (const DWORD delayMs : {0u, 15u, 40u}) {
    SCOPED_TRACE(delayMs);
    const Bytes edited = Edited(old_, ++frequency);
    for (int i = 0; i < kSyllables; ++i) folder_.Write(FileOf(i, L"_wav.frq"), old_);
    Start();
    EditAll(frequency);
    Sleep(1000);  // for so long edits may be in memory alone
    SaveAll();
    Sleep(delayMs);
    Kill();

    Start();
    const int saved = CountOf(edited);
    partly += saved > 0 && saved < kSyllables;
    ASSERT_EQ(CountOf(old_) + saved, kSyllables) << "a map is neither";
    if (saved < kSyllables) {
      ASSERT_TRUE(BringBack());
      SaveAll();
      EXPECT_TRUE(Eventually([&] { return CountOf(edited) == kSyllables; })) << CountOf(edited);
    }
    Kill();
    std::filesystem::remove_all(local_);
  }
  RecordProperty("partly", partly);
}

}  // namespace
