// The real windows on threads of their own, as the program runs them, with settings that leave no trace.
#pragma once

#include <windows.h>
#include <process.h>

#include <cmath>
#include <functional>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "frqctrl/frqctrl.h"
#include "measuring.h"
#include "window/flatbutton.h"

// Settings are kept and read in a key that goes with the object.
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

  static constexpr UINT kRunMessage = WM_APP;
};

class RunningProgram {
 public:
  // `keeps`: edits and maps are kept for the next run, as users have it, in the folder of the environment.
  explicit RunningProgram(bool keeps = false) : keeps_(keeps) {
    if (keeps_) voicebank_.Run.Start();
    RegisterControl<CFrqCtrl>();
    RegisterControl<CFlatButton>();
    list_.Editor = &editor_;
    editor_.FileList = &list_;
    editor_.LoadSettings();
    editorThread_ = Begin(Run<ScriptedEditor, true>, &editor_);
    const HANDLE either[] = {editor_.ReadyEvent.get(), editorThread_.get()};
    Require(WaitForMultipleObjects(2, either, FALSE, INFINITE) == WAIT_OBJECT_0, "the editor does not start");
    listThread_ = Begin(Run<CFileListDlg, false>, &list_);
    while (!list_.Hwnd) Sleep(1);
    SendMessageW(list_.Hwnd, WM_NULL, 0, 0);  // served when its start is done
  }
  ~RunningProgram() {
    SendMessageW(editor_.Hwnd, WM_COMMAND, IDCANCEL, 0);
    const HANDLE both[] = {editorThread_.get(), listThread_.get()};
    WaitForMultipleObjects(2, both, TRUE, INFINITE);
    list_.Windows.EndThreads();
    if (keeps_) voicebank_.Run.End();
  }
  RunningProgram(const RunningProgram&) = delete;
  RunningProgram& operator=(const RunningProgram&) = delete;

  HWND Editor() const { return editor_.Hwnd; }
  FileListSender List() const { return FileListSender(list_.Hwnd); }
  HWND ListWindow() const { return list_.Hwnd; }
  Document& Maps() { return voicebank_.Maps; }
  const Document& Maps() const { return voicebank_.Maps; }

  void RunInEditor(const std::function<void()>& function) const {
    SendMessageW(editor_.Hwnd, ScriptedEditor::kRunMessage, 0, reinterpret_cast<LPARAM>(&function));
  }

 private:
  template <typename Dialog, bool modeless>
  static unsigned WINAPI Run(void* dialog) {
    static_cast<Dialog*>(dialog)->Run(modeless);
    return 0;
  }
  static ThreadHandle Begin(unsigned(WINAPI* thread)(void*), void* argument) {
    return ThreadHandle(reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, thread, argument, 0, nullptr)));
  }

  const bool keeps_;
  ScratchSettings settings_;
  Voicebank voicebank_;
  CFileListDlg list_{L"", voicebank_};
  ScriptedEditor editor_{L"", voicebank_};
  ThreadHandle editorThread_;
  ThreadHandle listThread_;
};

// A loaded map with pitch everywhere.
inline FrqMap LongMap(SampleCount frames) {
  FrqMap map;
  map.Create(frames, FrqTypeFrq);
  for (SampleCount i = 0; i < frames; ++i) map.SetFrequency(map.PositionOf(i), 220.0 + 5.0 * std::sin(i / 20.0));
  map.Loaded = true;
  return map;
}
