#include "frqctrl/wavespectrum.h"

#include <exception>

#include "voicebank/waveheader.h"

void WaveSpectrum::SetWave(const wchar_t* path) {
  Path = path ? path : L"";
  Rate = 0.0;
  Forget();
}

double WaveSpectrum::SampleRate() {
  constexpr double kUsualRate = 44100.0;
  WaveHeader wave;
  if (Rate <= 0.0 && wave.Load(Path, true) == 0) Rate = wave.format.samplesPerSec;
  if (Rate <= 0.0) Rate = kUsualRate;
  return Rate;
}

void WaveSpectrum::Forget() {
  NoteSteps.reset();
  Table.Free();
}

// A table that comes out empty is asked for again with the next paint: the wave may be there by then.
void WaveSpectrum::Ensure(HWND window) {
  if (EntryCount() > 0 || Analyzing) return;
  WaveHeader wave;
  if (wave.Load(Path, false) != 0) return;
  Analyzing = true;
  try {
    AnalyzeWave(Table, {wave.format.channels, wave.format.bitsPerSample, wave.samples});
    NoteSteps.emplace(Table, wave.format.samplesPerSec);
  } catch (const std::exception& error) {
    Forget();
    MessageBoxA(GetActiveWindow(), error.what(), nullptr, MB_ICONERROR);
    InvalidateRect(window, nullptr, FALSE);  // what the box has covered
  }
  Analyzing = false;
}
