// FramePane: the frames of the map in the editor window: the frame list, the two boxes beside it, the flat buttons below
// it, and what the frequency table tells of the mouse.
//
// It runs on the main thread. Its edits are gestures of the document, which tells what has changed; the controls show
// what they are told (Show), but for what only the gesture itself knows, such as which box keeps its text.
#pragma once

#include <windows.h>

#include <functional>
#include <vector>

#include "app/framelist.h"
#include "app/shownmap.h"
#include "document/document.h"
#include "frqctrl/frqctrlmessages.h"

class FramePane {
 public:
  FramePane(Document& document, ShownMap& map) : document_(document), map_(map) {}

  // The dialog with the controls, once it has come.
  void Attach(HWND dialog);

  // The kind at work decides the limits of an edit.
  void SetKind(FrqType kind);

  // Shows everything anew: the key, the rows, the limits of the table.
  void ShowFrames();
  // Shows what the document tells of the map that is shown.
  void Show(const EntryChange& change);
  // Shows the map as if it had never been shown.
  void ShowAnew();
  // Selects the run of marks between two sample positions alone, a few columns in from the left.
  void ShowMarks(SampleCount first, SampleCount last);
  // Selects these frames and no others, in the list and in the table, and brings them into view.
  void ShowPlace(const std::vector<int>& frames);

  // Takes what the boxes, buttons, the frame list and the table tell. True if it is one of theirs.
  bool OnControl(UINT id, UINT code, LPARAM detail);
  void SelectAllFrames();
  void ReloadSelection();
  // The rows are in ascending order.
  std::vector<int> SelectedRows() const { return Frames().SelectedRows(); }
  // Gives these frames these frequencies [Hz], within the limits of the kind at work. No gesture where nothing differs.
  void SetFrequencies(Gesture gesture, const std::vector<int>& rows, std::vector<double> hz);
  // Shows a key that has waited for the message at work to be done with.
  void OnShowKey();

  // The sample position of the frame that the user is at, -1 without one.
  SampleCount Position() const;
  int SelectedCount() const { return Frames().SelectedCount(); }
  FrqCtrlSender Table() const;

  // This message to the dialog itself calls OnShowKey.
  static constexpr UINT kShowKeyMessage = WM_APP + 0x100;

 private:
  HWND Item(int id) const { return GetDlgItem(dialog_, id); }
  FrameList Frames() const;
  double Clamp(double hz) const;
  void ShowKey();
  void ShowKeySoon();
  void ShowReplaced();
  void RefreshFrequencyBox() const;
  void EnableBoxes() const;
  void AskForFrames(UINT button) const;
  void Edit(Gesture gesture, const std::function<std::vector<int>(FrqMap&)>& change);

  void OnFrameListSelChange();
  void OnSetFrequency();
  void OnKeyEdited();
  void OnFlatButton(UINT id);
  void ScaleSelection(Gesture gesture, double factor);
  void InterpolateSelection();
  void KeyFromSelection();
  void OnTableNotification(UINT code, int frame);
  void OnTableFrameChanged(int frame);

  Document& document_;
  ShownMap& map_;
  HWND dialog_ = nullptr;
  FrqType kind_ = FrqTypeFrq;
  bool showingKey_ = false;  // ShowKey writes the key box: no edit of the user's
  bool keyIsLate_ = false;   // a kShowKeyMessage is on its way
  bool typingKey_ = false;   // the key box keeps what was typed into it
  bool keepsRows_ = false;   // a map that was read again keeps its rows and their selection
};
