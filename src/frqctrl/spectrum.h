// The spectrum behind the curve: magnitudes of a wave, taken every 512 samples. Plain arithmetic without a window; the
// control paints it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "base/bytes.h"
#include "frqctrl/fft.h"

inline constexpr std::size_t SpectrumFrameLength = kTransformLength;  // samples in a frame
inline constexpr std::size_t SpectrumHop = 512;                       // samples between the centres of two frames
inline constexpr std::size_t SpectrumBins = kTransformBins;           // magnitudes kept of a frame
inline constexpr std::size_t SpectrumMinSamples = 2048;               // per channel; a shorter wave has no spectrum
// 1 / 0.46, and not the 1 / 0.54 that would give a sine its level back: users know the picture as this makes it.
inline constexpr double SpectrumWindowGain = 2.1739130434782608;

// Magnitudes of frames, in units of full scale; entry j is that of the samples around j * SpectrumHop. Empty stands for
// "not computed" and for "nothing to show" alike.
//
// Memory comes in pieces of 64 entries: a growing table copies nothing, and none has to be large where the address
// space is 32 bits wide and full of holes.
class SpectrumTable {
 public:
  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }

  // SpectrumBins magnitudes.
  double* operator[](std::size_t entry) { return EntryOf(entry); }
  const double* operator[](std::size_t entry) const { return EntryOf(entry); }

  // Adds entries at the end, of any content. If memory runs out the table is freed and std::bad_alloc thrown.
  void Extend(std::size_t count);

  // Clear keeps the memory for the next wave, Free does not.
  void Clear() { size_ = 0; }
  void Free();

 private:
  static constexpr std::size_t kPiece = 64;

  // Aligned as the transform wants it.
  struct alignas(64) Piece {
    double Entries[kPiece][SpectrumBins];
  };

  double* EntryOf(std::size_t entry) const { return pieces_[entry / kPiece]->Entries[entry % kPiece]; }

  std::vector<std::unique_ptr<Piece>> pieces_;
  std::size_t size_ = 0;
};

// The part of a wave that is analysed, in the terms of its header.
struct SpectrumWave {
  unsigned Channels = 1;
  unsigned BitsPerSample = 16;
  ByteSpan Data;  // all of it, even beyond the last whole sample
};

// Means of the analysis. The result is the same for any number of threads; between paths it differs in the last digits.
struct SpectrumMeans {
  FftPath Path = FastestFft();
  unsigned Threads = 0;  // 0: as many as there are cores and work is for
};

// Fills the table anew and returns 0, or -1 for samples of other than 16 bits. The table is empty then, as it is for a
// wave that is too short. Of two channels the left one is analysed; more are read as if they were one.
// Throws std::bad_alloc, with the table freed, if memory runs out; the caller tells the user of it.
int AnalyzeWave(SpectrumTable& table, const SpectrumWave& wave, const SpectrumMeans& means = {});

// The periodic Hamming window of 2,048 factors, 0.54 - 0.46 cos(2 pi i / 2048). Gives SpectrumWindowGain as its gain.
std::vector<double> MakeAnalysisWindow(double& gain);

// Appends the magnitudes of 2,048 samples; each is multiplied by its factor of `window`, `gain`, 1 / 32768 for full
// scale and 1 / 2048 for the length.
void AnalyzeFrame(SpectrumTable& table, const std::int16_t* samples, const double* window, double gain);
