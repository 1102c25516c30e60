// COptionVs4ufrqDlg: the settings of an analysis by the library, asked before it makes maps: the range of notes, and
// whether a .frq replaces the analysis.
#pragma once

#include <string>

#include "resampler/noterange.h"
#include "resources/ids.h"
#include "window/templatedialog.h"

class COptionVs4ufrqDlg : public CTemplateDlg<COptionVs4ufrqDlg, IDD_OPTIONVS4UFRQ> {
 public:
  // The values that the user settled on.
  bool UseFrq = true;
  int Offset = 24;  // lowest note
  int Range = 84;   // semitones

  INT_PTR OnInitDialog(LPARAM lParam) override;
  LRESULT OnCommand(WPARAM wParam, UINT code, HWND control) override;
  void OnOK() override;

 private:
  void ReadSettings();
  void WriteSettings() const;
  void FillPresets();
  void FillNoteBoxes();
  void EnableCustomBoxes();
  int SelectedPreset() const;
  NoteRange CustomBoxes() const;

  // These are kept in the registry, together with UseFrq.
  int preset_ = 0;
  int CustomOffset = 24;
  int CustomRange = 84;
};
