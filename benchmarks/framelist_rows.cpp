// The frame list of a very long map, filled by the real editor, against a bare list box that is given texts made
// before.
#include <windows.h>
#include <process.h>

#include <cmath>
#include <functional>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "frqctrl/frqctrl.h"
#include "frqmap/edits.h"
#include "measuring.h"
#include "resources/ids.h"
#include "rows.h"
#include "window/flatbutton.h"

namespace {

constexpr SampleCount kFrames = 30000;
constexpr UINT kRunMessage = WM_APP;

// Settings are kept and read in a key that goes with the object, so that a run of the editor leaves no trace.
class ScratchSettings {
 public:
  ScratchSettings() {
    RegCreateKeyExW(HKEY_CURRENT_USER, kName, 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr, key_.out(),
                    nullptr);
    RegOverridePredefKey(HKEY_CURRENT_USER, key_.get());
  }
  ~ScratchSettings() {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    key_.reset();
    RegDeleteTreeW(HKEY_CURRENT_USER, kName);
  }
  ScratchSettings(const ScratchSettings&) = delete;
  ScratchSettings& operator=(const ScratchSettings&) = delete;

 private:
  static constexpr wchar_t kName[] = L"Software\\marlit_bench";
  RegistryKey key_;
};

// The editor with one more message: to run a function on its thread, where a call of its list box is a plain call.
class ScriptedEditor : public CEditorDlg {
 public:
  using CEditorDlg::CEditorDlg;

  INT_PTR OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
    if (message != kRunMessage) return CEditorDlg::OnDialogMessage(message, wParam, lParam);
    (*reinterpret_cast<const std::function<void()>*>(lParam))();
    return Answered();
  }

  void RunOnItsThread(const std::function<void()>& function) const {
    SendMessageW(Hwnd, kRunMessage, 0, reinterpret_cast<LPARAM>(&function));
  }
};

unsigned WINAPI EditorThread(void* editor) {
  static_cast<ScriptedEditor*>(editor)->Run(true);
  return 0;
}

// The editor on a thread of its own, beside a list that has no window.
class RunningEditor {
 public:
  RunningEditor() {
    RegisterControl<CFrqCtrl>();
    RegisterControl<CFlatButton>();
    list_.Editor = &editor_;
    editor_.FileList = &list_;
    editor_.LoadSettings();
    thread_.reset(reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, EditorThread, &editor_, 0, nullptr)));
    const HANDLE either[] = {editor_.ReadyEvent.get(), thread_.get()};
    Require(WaitForMultipleObjects(2, either, FALSE, INFINITE) == WAIT_OBJECT_0, "the editor does not start");
  }
  ~RunningEditor() {
    SendMessageW(editor_.Hwnd, WM_COMMAND, IDCANCEL, 0);
    WaitForSingleObject(thread_.get(), INFINITE);
  }
  RunningEditor(const RunningEditor&) = delete;
  RunningEditor& operator=(const RunningEditor&) = delete;

  const ScriptedEditor* operator->() const { return &editor_; }

 private:
  ScratchSettings settings_;
  CFileListDlg list_{L""};
  ScriptedEditor editor_{L""};
  ThreadHandle thread_;
};

FrqMap VeryLongMap() {
  FrqMap map;
  map.Create(kFrames, FrqTypeFrq);
  for (SampleCount i = 0; i < kFrames; ++i) map.SetFrequency(map.PositionOf(i), 220.0 + 5.0 * std::sin(i / 20.0));
  return map;
}

class FillFrames : public Work {
 public:
  FillFrames() {
    for (const FrqFrame& frame : map_.Frames) texts_.push_back(FrameRowText(frame.Frequency));
    const HWND editor = editor_->Hwnd;
    EditorSender(editor).SetMap(&map_, &map_);
    editor_->RunOnItsThread([&] {
      ShowWindow(editor, SW_HIDE);  // a window that is seen would paint its curve as well
      list_ = GetDlgItem(editor, IDC_EDITOR_FRAMES);
      bareList_ = CreateWindowExW(0, L"LISTBOX", L"", GetWindowLongW(list_, GWL_STYLE), 0, 0, 100, 200, editor, nullptr,
                                  GetModuleHandleW(nullptr), nullptr);
    });
  }

  double Measured() override {
    return TimedOnEditorThread(list_, [&] { EditorSender(editor_->Hwnd).RefreshMap(true); });
  }

  double Yardstick() override {
    return TimedOnEditorThread(bareList_, [&] {
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

 private:
  double TimedOnEditorThread(HWND filled, const std::function<void()>& fill) const {
    double ms = 0.0;
    editor_->RunOnItsThread([&] { ms = MillisecondsOf(fill); });
    Require(SendMessageW(filled, LB_GETCOUNT, 0, 0) == kFrames, "the frame list is not filled");
    return ms;
  }

  FrqMap map_ = VeryLongMap();
  std::vector<std::wstring> texts_;
  HWND list_ = nullptr;
  HWND bareList_ = nullptr;
  RunningEditor editor_;
};

}  // namespace

std::vector<Row> FrameListRows() {
  return {RowOf<FillFrames>("fill_frames", "ms", 1.3)};
}
