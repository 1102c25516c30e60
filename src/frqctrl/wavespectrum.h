// WaveSpectrum: the spectrum of the recording behind the curve. It is analysed late, when a paint first needs it, and
// kept until another wave is set.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "frqctrl/spectrum.h"
#include "frqctrl/spectrumbands.h"

class WaveSpectrum {
 public:
  // Forgets what there was. The path is cut where a path of the system ends; null is none.
  void SetWave(const wchar_t* path);

  // Analyses the wave if nothing is known of it, which may take seconds. A failure for want of memory is told in a box,
  // and `window` is painted again then.
  void Ensure(HWND window);
  // The window can be painted in the middle of Ensure, under its box.
  bool IsAnalyzing() const { return analyzing_; }

  // Samples per second of the wave, read once and without its samples; that of most recordings where it cannot be read.
  double SampleRate();

  std::size_t EntryCount() const { return table_.size(); }
  // To be called while there are entries.
  SpectrumSteps& Steps() { return *noteSteps_; }

 private:
  void Forget();

  std::wstring path_;
  double rate_ = 0.0;                       // 0 until it is needed
  SpectrumTable table_;                     // empty until it is needed
  std::optional<SpectrumSteps> noteSteps_;  // of Table
  bool analyzing_ = false;
};
