// PreviewPanel: the group of controls around Play in the editor window, and the preview that it starts and stops.
//
// It runs on the thread of its window. Each press tells it what is to be heard; it keeps no map.
#pragma once

#include <windows.h>

#include <string>

#include "app/shownmap.h"
#include "resampler/preview.h"

class MrqStore;

// The sound to be heard, looked at while the button's handler runs, which copies what the preview needs.
struct PreviewSource {
  const std::wstring& WavePath;
  const ShownMap& Map;  // none: there is nothing to be heard
  ::FrqType Kind;
  const std::wstring ResamplerPath;
  MrqStore& Store;
  const std::wstring Fault;  // why the map cannot be read; empty if it can
};

class PreviewPanel {
 public:
  // Sets the controls as they stand at first.
  void Prepare(HWND dialog);
  // The folder is for scratch files.
  void SetFolder(const std::wstring& folder) { preview_.SetFolder(folder); }
  void ClearFolder() const { preview_.ClearFolder(); }
  // Ends what runs, and leaves nothing in the folder that can be deleted.
  void Close();

  // The input of a preview, as the controls stand.
  PreviewInput CollectInput(const PreviewSource& source) const;
  // Stops a preview that runs, as the button would.
  void Stop();
  // The same button stops what it began.
  void OnPlayPressed(const PreviewSource& source);
  // The end of a preview has been posted, or somebody else has posted the number.
  void OnToldDone(FrqType kind);
  void OnDirectPressed() const;
  // A scroll bar of the window was moved, this panel's or another.
  void OnScrolled(HWND scrollBar) const;

 private:
  void OnDone(FrqType kind);
  void TellOfEnd() const;
  HWND Item(int id) const { return GetDlgItem(dialog_, id); }
  int PitchShift() const;

  HWND dialog_ = nullptr;
  CPreview preview_;
  std::wstring resampler_, fault_;  // of the preview that was begun last
};
