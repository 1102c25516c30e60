#include "frqctrl/wavespectrum.h"

#include <exception>

#include "voicebank/waveheader.h"

void WaveSpectrum::SetWave(const wchar_t* path) {
  path_ = path ? path : L"";
  rate_ = 0.0;
  Forget();
}

double WaveSpectrum::SampleRate() {
  constexpr double kUsualRate = 44100.0;
  WaveHeader wave;
  if (rate_ <= 0.0 && wave.Load(path_, true) == 0) rate_ = wave.format.samplesPerSec;
  if (rate_ <= 0.0) rate_ = kUsualRate;
  return rate_;
}

void WaveSpectrum::Forget() {
  noteSteps_.reset();
  table_.Free();
}

// A table that comes out empty is asked for again with the next paint: the wave may be there by then.
void WaveSpectrum::Ensure(HWND window) {
  if (EntryCount() > 0 || analyzing_) return;
  WaveHeader wave;
  if (wave.Load(path_, false) != 0) return;
  analyzing_ = true;
  try {
    AnalyzeWave(table_, {wave.format.channels, wave.format.bitsPerSample, wave.samples});
    noteSteps_.emplace(table_, wave.format.samplesPerSec);
  } catch (const std::exception& error) {
    Forget();
    MessageBoxA(GetActiveWindow(), error.what(), nullptr, MB_ICONERROR);
    InvalidateRect(window, nullptr, FALSE);  // what the box has covered
  }
  analyzing_ = false;
}
