// marlit_growth JSONFILE BANKS [NAME]: how what a user waits for in the program grows with the voicebank. BANKS holds
// the banks that marlit_growth_native has made, by their count of syllables.
#include <windows.h>
#include <commctrl.h>
#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <mutex>

#include "check/checkrun.h"
#include "growth.h"
#include "measuring.h"
#include "resources/ids.h"
#include "runningprogram.h"
#include "scratchfolder.h"
#include "thumbnailview.h"

namespace {

std::filesystem::path banks;

// The folder of what the program keeps for its next run, which goes with the object.
class LocalData {
 public:
  LocalData() { SetEnvironmentVariableW(L"LOCALAPPDATA", folder_.PathOf(L"local").c_str()); }

 private:
  ScratchFolder folder_;
};

class OfBank : public GrowingWork {
 public:
  explicit OfBank(int syllables) : syllables_(syllables), path_((banks / std::to_wstring(syllables)).wstring()) {}

 protected:
  void OpenBank() const {
    program_.List().OpenFolder(path_.c_str());
    Require(program_.List().Count() == syllables_ && program_.List().Selection() == 0, "a bank is not shown");
  }
  void ReadMaps() {
    for (int index = 0; index < syllables_; ++index) {
      Require(program_.Maps().EnsureLoaded(index, Document::OnFailure::KeepSaved), "a map cannot be read");
    }
  }
  // Marks a stretch as a check marks one that is an octave too high.
  void MarkPlaceIn(int index) {
    const auto mark = [](FrqMap& map) {
      for (std::size_t frame = 40; frame < 55; ++frame) {
        map.Frames.Own()[frame].Mark = 1;
        map.Frames.Own()[frame].SuggestedFrequency = 220.0;
      }
      map.HasMarks = true;
    };
    program_.Maps().Mark(index, mark, false);
  }
  void Command(UINT id) const { SendMessageW(program_.Editor(), WM_COMMAND, id, 0); }

  const int syllables_;
  const LocalData local_;
  RunningProgram program_{true};

 private:
  const std::wstring path_;
};

// The way from the command to the first syllable.
class OpenBankWork : public OfBank {
 public:
  using OfBank::OfBank;
  double Milliseconds() override {
    double ms = 0.0;
    program_.RunInEditor([&] { ms = MillisecondsOf([this] { OpenBank(); }); });
    return ms;
  }
};

// A check of maps in memory, by their course: the waves have no samples.
class CheckBank : public OfBank {
 public:
  explicit CheckBank(int syllables) : OfBank(syllables) {
    OpenBank();
    ReadMaps();
  }
  double Milliseconds() override {
    const double ms = MillisecondsOf([this] { program_.List().RunCheck(settings_); });
    const bool isWhole = program_.Maps().Facts(0).Marked && program_.Maps().Facts(syllables_ - 1).Marked;
    Require(isWhole, "a check has not come to its end");
    return ms;
  }

 private:
  const CheckFrqSettings settings_;
};

// A save of all maps, edited before.
class SaveBank : public OfBank {
 public:
  explicit SaveBank(int syllables) : OfBank(syllables) {
    OpenBank();
    ReadMaps();
  }
  double Milliseconds() override {
    EditAll();
    const double ms = MillisecondsOf([this] { Command(ID_FILE_SAVEALL); });
    Require(program_.Maps().State().Edited == 0, "a bank is not saved");
    return ms;
  }

 private:
  // The pitch goes up and down in turn: a map that its file holds already would not be written.
  void EditAll() {
    hz_ = hz_ > 225.0 ? 220.0 : 230.0;
    {
      const std::lock_guard all(program_.Maps());
      for (int index = 0; index < syllables_; ++index) {
        program_.Maps().Change(Gesture::Stroke, index, [this](FrqMap& map) {
          map.SetFrequency(map.PositionOf(0), hz_);
          return std::vector<int>{0};
        });
      }
    }
    SendMessageW(program_.ListWindow(), WM_NULL, 0, 0);  // behind what the list shows of it
    Require(program_.Maps().State().Edited == syllables_, "a bank is not edited");
  }

  double hz_ = 0.0;
};

// The way from the command to the last curve in view.
class ShowThumbnails : public OfBank {
 public:
  using OfBank::OfBank;
  double Milliseconds() override {
    OpenBank();  // has no maps in memory
    const double ms = MillisecondsOf([this] {
      view_.Open();
      view_.WaitForPictures();
      view_.WaitForCurves();
    });
    Require(view_.InView().size() > 4, "there are too few thumbnails in view");
    view_.Close();
    return ms;
  }

 private:
  const ThumbnailView view_{program_};
};

// The list of the check's suggestions, from its command to its first lines, a place in each map.
class ListMarks : public OfBank {
 public:
  explicit ListMarks(int syllables) : OfBank(syllables) {
    OpenBank();
    ReadMaps();
    for (int index = 0; index < syllables; ++index) MarkPlaceIn(index);
  }
  double Milliseconds() override {
    HWND dialog = nullptr;
    const double ms = MillisecondsOf([&] {
      PostMessageW(program_.Editor(), WM_COMMAND, ID_TOOL_SUGGESTIONS, 0);
      while (!(dialog = Dialog())) Sleep(0);
      const HWND list = GetDlgItem(dialog, IDC_SUGGESTIONS_LIST);
      while (!IsWindowVisible(list) || GetUpdateRect(list, nullptr, FALSE)) Sleep(0);
      SendMessageW(dialog, WM_NULL, 0, 0);
    });
    const LRESULT lines = SendDlgItemMessageW(dialog, IDC_SUGGESTIONS_LIST, LVM_GETITEMCOUNT, 0, 0);
    Require(lines == syllables_, "not all marks are listed");
    PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    while (IsWindow(dialog)) Sleep(1);
    SendMessageW(program_.Editor(), WM_NULL, 0, 0);
    return ms;
  }

 private:
  HWND Dialog() const {
    HWND found = nullptr;
    const DWORD thread = GetWindowThreadProcessId(program_.Editor(), nullptr);
    EnumThreadWindows(thread, TakeDialog, reinterpret_cast<LPARAM>(&found));
    return found;
  }
  static BOOL CALLBACK TakeDialog(HWND window, LPARAM found) {
    if (!GetDlgItem(window, IDC_SUGGESTIONS_LIST)) return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
  }
};

// The way to the only marked place, in the last map, from the first one.
class NextMark : public OfBank {
 public:
  explicit NextMark(int syllables) : OfBank(syllables) {
    OpenBank();
    ReadMaps();
    MarkPlaceIn(syllables - 1);
  }
  double Milliseconds() override {
    program_.List().SelectSyllable(0);
    const double ms = MillisecondsOf([this] { Command(ID_GO_NEXTMARK); });
    Require(program_.List().State().SelectedIndex == syllables_ - 1, "the mark is not found");
    return ms;
  }
};

template <typename T>
GrowthRow RowOfBank(const char* name) {
  return {name, "syllables", kGrowingSyllables, [](int syllables) { return std::make_unique<T>(syllables); }};
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 3) {
    std::fprintf(stderr, "usage: marlit_growth JSONFILE BANKS [NAME]\n");
    return 2;
  }
  // The table is read on the host system, which ends its lines without a carriage return.
  _setmode(_fileno(stdout), _O_BINARY);
  banks = std::filesystem::absolute(arguments[2]);
  InitCommonControls();
  return MeasureGrowth({RowOfBank<OpenBankWork>("growth_open"), RowOfBank<CheckBank>("growth_check"),
                        RowOfBank<SaveBank>("growth_save"), RowOfBank<ShowThumbnails>("growth_thumbnails"),
                        RowOfBank<ListMarks>("growth_marks"), RowOfBank<NextMark>("growth_next_mark")},
                       count > 3 ? arguments[3] : "", arguments[1]);
}
