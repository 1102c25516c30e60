// The waits of a user in the running program: for the next syllable, another folder, and the menu.
#include <windows.h>
#include <commctrl.h>

#include <array>
#include <vector>

#include "base/files.h"
#include "base/handle.h"
#include "frqmap/edits.h"
#include "frqmap/freq0003.h"
#include "measuring.h"
#include "resources/ids.h"
#include "rows.h"
#include "runningprogram.h"
#include "scratchfolder.h"

namespace {

constexpr int kWaves = 5000;

// Asks the list all that enables the editor's commands, each a way from thread to thread and back.
void SendAcross(HWND list) {
  for (int send = 0; send < 9; ++send) SendMessageW(list, WM_NULL, 0, 0);
}

// The way from one syllable to the other and back, each with a long map, against what none can do without: a bare list
// box that is filled, the table painted anew, and a menu's worth of sends.
class SwitchSyllables : public Work {
 public:
  SwitchSyllables() {
    for (const wchar_t* name : {L"a", L"b"}) {
      WriteWholeFile(folder_.PathOf(std::wstring(name) + L".wav"), {});
      WriteWholeFile(folder_.PathOf(std::wstring(name) + L"_wav.frq"), EncodeFreq0003(map_, FrqTypeFrq));
    }
    for (const FrqFrame& frame : map_.Frames) texts_.push_back(FrameRowText(frame.Frequency));
    program_.List().OpenFolder(folder_.PathOf(L"").c_str());
    program_.RunInEditor([&] {
      const HWND list = GetDlgItem(program_.Editor(), IDC_EDITOR_FRAMES);
      bareList_ = CreateWindowExW(0, L"LISTBOX", L"", GetWindowLongW(list, GWL_STYLE), 0, 0, 100, 200,
                                  program_.Editor(), nullptr, GetModuleHandleW(nullptr), nullptr);
    });
  }

  double Measured() override {
    back_ = !back_;
    const double ms =
        MillisecondsOf([&] { SendMessageW(program_.ListWindow(), FLM_SELECTNEIGHBOUR, back_ ? 0 : 1, 0); });
    Require(program_.List().Selection() == (back_ ? 1 : 0), "the syllable stays the same");
    Require(SendDlgItemMessageW(program_.Editor(), IDC_EDITOR_FRAMES, LB_GETCOUNT, 0, 0) == map_.FrameCount,
            "the frames are not shown");
    return ms;
  }

  double Yardstick() override {
    double ms = 0.0;
    const FrqCtrlSender table(GetDlgItem(program_.Editor(), IDC_EDITOR_TABLE));
    program_.RunInEditor([&] {
      ms = MillisecondsOf([&] {
        FillBareList();
        table.DropLayer();
        table.RepaintNow();
        SendAcross(program_.ListWindow());
      });
    });
    return ms;
  }

 protected:
  const FrqMap map_ = LongMap(5000);
  HWND bareList_ = nullptr;
  ScratchFolder folder_;
  RunningProgram program_;

  void FillBareList() const {
    SendMessageW(bareList_, WM_SETREDRAW, FALSE, 0);
    SendMessageW(bareList_, LB_RESETCONTENT, 0, 0);
    for (const std::wstring& text : texts_) {
      SendMessageW(bareList_, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
    }
    SendMessageW(bareList_, WM_SETREDRAW, TRUE, 0);
  }

 private:
  std::vector<std::wstring> texts_;
  bool back_ = false;
};

// Twelve selected frames moved by an octave, up and down in turn, from the command of the key to the paint; against as
// many rows of a bare list box, the paint of the table, and a menu's worth of sends.
class KeyOctave : public SwitchSyllables {
 public:
  // Edits would hold up the end of the program by a question.
  ~KeyOctave() override { program_.List().SetEdited(0, false); }

  double Measured() override {
    const HWND editor = program_.Editor(), list = GetDlgItem(editor, IDC_EDITOR_FRAMES);
    const FrqMap& map = *program_.Maps().Maps(0).Map;
    double ms = 0.0;
    up_ = !up_;
    program_.RunInEditor([&] {
      SendMessageW(list, LB_SETSEL, FALSE, -1);
      SendMessageW(list, LB_SELITEMRANGE, TRUE, MAKELPARAM(kFirst, kFirst + kRows - 1));
      const double before = map.Frames[kFirst].Frequency;
      ms = MillisecondsOf([&] {
        SendMessageW(editor, WM_COMMAND, up_ ? ID_FRAMES_DOUBLE : ID_FRAMES_HALVE, 0);
        UpdateWindow(list);
      });
      Require(map.Frames[kFirst].Frequency == before * (up_ ? 2.0 : 0.5), "the frames keep their octave");
    });
    return ms;
  }

  double Yardstick() override {
    const FrqCtrlSender table(GetDlgItem(program_.Editor(), IDC_EDITOR_TABLE));
    double ms = 0.0;
    program_.RunInEditor([&] {
      if (SendMessageW(bareList_, LB_GETCOUNT, 0, 0) == 0) SwitchSyllables::FillBareList();
      ms = MillisecondsOf([&] {
        for (WPARAM row = kFirst; row < kFirst + kRows; ++row) {
          SendMessageW(bareList_, LB_DELETESTRING, row, 0);
          SendMessageW(bareList_, LB_INSERTSTRING, row, reinterpret_cast<LPARAM>(L"220.00000000"));
        }
        UpdateWindow(bareList_);
        table.RepaintNow();
        SendAcross(program_.ListWindow());
      });
    });
    return ms;
  }

 private:
  static constexpr int kFirst = 100, kRows = 12;
  bool up_ = false;
};

// The menu's state in a large voicebank, against as many sends from thread to thread as it takes.
class RefreshState : public Work {
 public:
  explicit RefreshState(const std::wstring& voicebank) { program_.List().OpenFolder(voicebank.c_str()); }

  double Measured() override {
    return Timed([&] { EditorSender(program_.Editor()).UpdateState(); });
  }

  double Yardstick() override {
    return Timed([&] { SendAcross(program_.ListWindow()); });
  }

 private:
  double Timed(const std::function<void()>& work) const {
    double ms = 0.0;
    program_.RunInEditor([&] { ms = MillisecondsOf(work); });
    return ms;
  }

  RunningProgram program_;
};

// A large voicebank from the command to its first syllable, against a bare pass over the folder and a bare list view.
class OpenVoicebank : public Work {
 public:
  OpenVoicebank(const std::wstring& voicebank, int waves) : voicebank_(voicebank), waves_(waves) {
    program_.RunInEditor([&] {
      bareView_ = CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | LVS_REPORT, 0, 0, 300, 300, program_.Editor(),
                                  nullptr, GetModuleHandleW(nullptr), nullptr);
      LVCOLUMNW column{};
      for (int i = 0; i < 4; ++i) ListView_InsertColumn(bareView_, i, &column);
    });
  }

  double Measured() override {
    double ms = 0.0;
    program_.RunInEditor([&] { ms = MillisecondsOf([&] { program_.List().OpenFolder(voicebank_.c_str()); }); });
    Require(program_.List().Count() == waves_ && program_.List().Selection() == 0, "the voicebank is not shown");
    return ms;
  }

  double Yardstick() override {
    double ms = 0.0;
    program_.RunInEditor([&] {
      ms = MillisecondsOf([&] {
        PassOver();
        FillView();
      });
    });
    return ms;
  }

 private:
  void PassOver() const {
    WIN32_FIND_DATAW item;
    const FindHandle find(FindFirstFileW((voicebank_ + L"\\*.*").c_str(), &item));
    while (FindNextFileW(find.get(), &item)) {
    }
  }
  void FillView() const {
    SendMessageW(bareView_, WM_SETREDRAW, FALSE, 0);
    ListView_DeleteAllItems(bareView_);
    ListView_SetItemCount(bareView_, waves_);
    std::wstring name = L"_あかさ0001.wav";
    std::array<wchar_t, 2> mark{L"*"};
    for (int row = 0; row < waves_; ++row) {
      LVITEMW item{};
      item.mask = LVIF_TEXT | LVIF_PARAM;
      item.iItem = row;
      item.pszText = name.data();
      ListView_InsertItem(bareView_, &item);
      ListView_SetItemText(bareView_, row, 1, mark.data());
    }
    SendMessageW(bareView_, WM_SETREDRAW, TRUE, 0);
  }

  std::wstring voicebank_;
  int waves_;
  HWND bareView_ = nullptr;
  RunningProgram program_;
};

}  // namespace

std::vector<Row> EditorRows(const std::wstring& voicebank) {
  return {RowOf<SwitchSyllables>("switch_syllables", "ms", 2.0),
          RowOf<KeyOctave>("key_octave", "ms", 1.5),
          {"update_state", "ms", 2.0, [voicebank] { return std::make_unique<RefreshState>(voicebank); }},
          {"open_voicebank", "ms", 1.3, [voicebank] { return std::make_unique<OpenVoicebank>(voicebank, kWaves); }},
          {"open_voicebank_20000", "ms", 1.3,
           [voicebank] { return std::make_unique<OpenVoicebank>(voicebank + L"-20000", 20000); }}};
}
