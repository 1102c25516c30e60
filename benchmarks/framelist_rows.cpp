// The frame list of a very long map, filled and changed by the real editor, against a bare list box that is given texts
// made before.
#include <windows.h>

#include <functional>

#include "base/files.h"
#include "frqmap/edits.h"
#include "frqmap/freq0003.h"
#include "measuring.h"
#include "resources/ids.h"
#include "rows.h"
#include "runningprogram.h"
#include "scratchfolder.h"

namespace {

constexpr SampleCount kFrames = 30000;

// A frame list of the editor, and a bare list box of the same look that is given texts made before.
class FrameListWork : public Work {
 public:
  FrameListWork() {
    const FrqMap map = LongMap(kFrames);
    for (const FrqFrame& frame : map.Frames) texts_.push_back(FrameRowText(frame.Frequency));
    WriteWholeFile(folder_.PathOf(L"a.wav"), {});
    WriteWholeFile(folder_.PathOf(L"a_wav.frq"), EncodeFreq0003(map, FrqTypeFrq));
    program_.List().OpenFolder(folder_.PathOf(L"").c_str());
    map_ = program_.Maps().Maps(0).Map;
    const HWND editor = program_.Editor();
    program_.RunInEditor([&] {
      ShowWindow(editor, SW_HIDE);  // a window that is seen would paint its curve as well
      list_ = GetDlgItem(editor, IDC_EDITOR_FRAMES);
      bareList_ = CreateWindowExW(0, L"LISTBOX", L"", GetWindowLongW(list_, GWL_STYLE), 0, 0, 100, 200, editor, nullptr,
                                  GetModuleHandleW(nullptr), nullptr);
    });
  }

  // Edits would hold up the end of the program by a question.
  ~FrameListWork() override { program_.List().SetEdited(0, false); }

  double Yardstick() override {
    return TimedInEditor(bareList_, [&] {
      SendMessageW(bareList_, WM_SETREDRAW, FALSE, 0);
      SendMessageW(bareList_, LB_RESETCONTENT, 0, 0);
      SendMessageW(bareList_, LB_INITSTORAGE, texts_.size(), kFrames * LPARAM{32});
      for (const std::wstring& text : texts_) {
        SendMessageW(bareList_, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
      }
      SendMessageW(bareList_, WM_SETREDRAW, TRUE, 0);
      InvalidateRect(bareList_, nullptr, TRUE);
    });
  }

 protected:
  double TimedInEditor(HWND filled, const std::function<void()>& fill) const {
    double ms = 0.0;
    program_.RunInEditor([&] { ms = MillisecondsOf(fill); });
    Require(SendMessageW(filled, LB_GETCOUNT, 0, 0) == kFrames, "the frame list is not filled");
    return ms;
  }

  const FrqMap* map_ = nullptr;  // the program's
  HWND list_ = nullptr;
  HWND bareList_ = nullptr;
  ScratchFolder folder_;
  RunningProgram program_;

 private:
  std::vector<std::wstring> texts_;
};

class FillFrames : public FrameListWork {
 public:
  double Measured() override {
    return TimedInEditor(list_, [&] { EditorSender(program_.Editor()).RefreshMap(true); });
  }
};

// All frames selected and their octave changed, up and down in turn.
class ScaleFrameList : public FrameListWork {
 public:
  double Measured() override {
    SendMessageW(list_, LB_SETSEL, TRUE, -1);
    up_ = !up_;
    const double before = map_->Frames[0].Frequency;
    const UINT button = up_ ? IDC_EDITOR_DOUBLE : IDC_EDITOR_HALVE;
    const double ms = TimedInEditor(list_, [&] { SendMessageW(program_.Editor(), WM_COMMAND, button, 0); });
    Require(map_->Frames[0].Frequency == before * (up_ ? 2.0 : 0.5), "the frames keep their octave");
    Require(SendMessageW(list_, LB_GETSELCOUNT, 0, 0) == kFrames, "the frames are not selected any more");
    return ms;
  }

 private:
  bool up_ = false;
};

}  // namespace

std::vector<Row> FrameListRows() {
  return {RowOf<FillFrames>("fill_frames", "ms", 1.3), RowOf<ScaleFrameList>("scale_frames", "ms", 1.5)};
}
