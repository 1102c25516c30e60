// EditorSettings: what the editor keeps in the registry, and the resampler, which decides the kind of map at work.
//
// It knows no window: the values are read before there is one, and the editor carries them where they count.
#pragma once

#include <windows.h>

#include <string>

#include "frqctrl/frqctrlmessages.h"
#include "frqmap/frqtype.h"

class EditorSettings {
 public:
  EditorSettings();

  // Takes the resampler of the last time or, for want of it, the host's, and its kind. The project that a plug-in file
  // names wins over both; `pluginFile` is empty for none.
  void LoadResampler(const std::wstring& pluginFile);
  // Reads the numbers and marks. A value that the registry lacks stays as it is.
  void LoadOptions();
  // Writes the settings, and what the table shows now.
  void Save(const FrqCtrlSender& table);

  // Takes over the user's choice. The same path in other letters is no change.
  void ChooseResampler(const std::wstring& path);
  // Has the resampler decide the kind at work.
  void UpdateKind();

  // The resampler that comes with the program, where nobody has named another one. The kind stays that of no resampler.
  std::wstring ResamplerInUse() const;

  std::wstring ResamplerPath;  // as it is named; empty for none
  ::FrqType FrqType = FrqTypeFrq;  // the kind at work
  DWORD MaxParallelCount;          // most creations that run at once
  bool AutoDeleteLlsm = true;      // delete a syllable's .llsm file when its map is saved
  int ViewMode = 0;                // the table's start values
  int Brightness = 0;
  int Color = 0;

 private:
  bool resamplerChanged_ = false;  // since the start, so that it must be written back
};
