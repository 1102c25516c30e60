// CDlgBase: dialogs from a resource template.
//
// A dialog's object belongs to whoever runs it, outlives its window, and may be run again. The tips and names of its
// controls come from the resources and need no line of a dialog.
#pragma once

#include <windows.h>

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "window/controltexts.h"
#include "window/tooltips.h"
#include "window/window.h"

class CDlgBase : public CWindow {
 public:
  // The accelerators of the modeless loop, asked in this order; not owned.
  std::vector<HACCEL> Accelerators;
  // The dialog's owner; null: the active window.
  HWND ParentWindow = nullptr;

  // Runs the dialog to its end. Modal: the value that ended it. Modeless: the dialog is the whole message loop of its
  // thread, and its Result comes back when the loop has ended; -1 if no window came.
  int Run(bool modeless);

  LRESULT OnDestroy() override;
  LRESULT OnCommand(WPARAM wParam, UINT code, HWND control) override;
  LRESULT OnNotify(WPARAM wParam, NMHDR* header) override;

  // Called in the modeless loop, ahead of the accelerators; true if the key is dealt with.
  virtual bool TranslateKey(const MSG& message);
  // The dialog procedure. A dialog that answers other messages overrides it and falls through to this routing.
  virtual INT_PTR OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam);
  virtual INT_PTR OnInitDialog(LPARAM lParam) = 0;
  // `flags` is -1 where a menu was closed; for an entry that opens a submenu `item` is 0.
  virtual LRESULT OnMenuSelect(UINT item, int flags, HMENU subMenu, HMENU menu);
  virtual void OnOK();
  virtual void OnCancel();
  virtual std::unique_ptr<CDlgBase> CreateInstance() const = 0;
  virtual int GetTemplateId() const = 0;
  virtual void OnDialogEnd();

 protected:
  // The tip where the mouse is over `control`; empty for none.
  virtual std::wstring TipOf(HWND control) const;

  // Ends the dialog with a value, in whichever way it runs.
  void End(int result);

  // The dialog procedure's result for a private message: answered, with the message result 0.
  INT_PTR Answered();

  HWND Item(int id) const { return GetDlgItem(Hwnd, id); }

  bool Modeless = false;
  int Result = -1;

 private:
  void RunLoop();
  bool TranslateAccelerators(MSG& message);
  LRESULT DispatchMenuSelect(WPARAM wParam, LPARAM lParam);
  void AttachTexts();
  void FollowMouse(HWND over, UINT message);
  void NameControlsOnce();

  std::span<const ControlText> texts_;
  Tooltips tips_;
  bool isNamed_ = false;
};
