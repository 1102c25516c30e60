// CModifyFailureDlg: the bar that goes from one run of marked frames to the next, through all syllables, and keeps or
// replaces their frequencies.
//
// It runs on a thread of its own and blocks nobody: the user may edit, save and choose syllables while it is open. It
// asks for all that it does by messages to the list, which works on the maps and shows each run in the editor.
#pragma once

#include <functional>
#include <string>

#include "app/messages.h"
#include "resources/ids.h"
#include "window/sharedkeys.h"
#include "window/standingtip.h"
#include "window/templatedialog.h"

class CModifyFailureDlg : public CTemplateDlg<CModifyFailureDlg, IDD_MODIFY> {
 public:
  // The run at a sample position of a syllable is shown already: the bar is at it from now on.
  static constexpr UINT kMoveMessage = WM_APP + 0x100;  // index, sample position

  // Set before Run: the window of the list, and an event that is set when this window has come.
  HWND List = nullptr;
  HWND Commands = nullptr;  // the window whose keys act here too
  HANDLE ReadyEvent = nullptr;
  // Says which run of how many stands at a sample position of a syllable, and why. Called on the bar's thread.
  std::function<std::wstring(int index, int sample)> TextOfRun;

  LRESULT OnDestroy() override;
  LRESULT OnCommand(WPARAM wParam, UINT code, HWND control) override;
  INT_PTR OnInitDialog(LPARAM lParam) override;
  INT_PTR OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void OnDialogEnd() override;

 private:
  bool ShowNext(bool forward);
  void MoveTo(int index, int sample);
  void PressNext(bool forward, int button);
  void ShowNextOrEnd();
  void PlaceBesideWork() const;

  FileListSender ToList() const { return FileListSender(List); }

  int Index = -1;   // syllable of the run in view
  int Sample = -1;  // sample position in it
  SharedKeys keys_;
  StandingTip words_;
  bool Forward = true;  // direction of the last step, also from one opening to the next
};
