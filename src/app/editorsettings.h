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

  // The resampler of the last time or, for want of it, the host's, and its kind. The project that a plug-in file names
  // wins over both; `pluginFile` is empty for none.
  void LoadResampler(const std::wstring& pluginFile);
  // The numbers and marks. What is missing in the registry keeps its value.
  void LoadOptions();
  // With what the table shows now.
  void Save(const FrqCtrlSender& table);

  // What the user has chosen. The same path in other letters is no change.
  void ChooseResampler(const std::wstring& path);
  // Has the resampler decide the kind at work.
  void UpdateKind();

  // The one that comes with the program where nobody has named another one. The kind is the same as without any.
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
