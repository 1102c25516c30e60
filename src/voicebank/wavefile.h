// Wave and AIFF files as bytes: their format and samples. Portable; opening a file is WaveHeader's.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "base/bytes.h"

// The first seven fields of a wave's "fmt " chunk, as they lie in the file.
struct WaveFormat {
  std::uint16_t formatTag = 0;
  std::uint16_t channels = 1;
  std::uint32_t samplesPerSec = 44100;
  std::uint32_t avgBytesPerSec = 0;
  std::uint16_t blockAlign = 0;
  std::uint16_t bitsPerSample = 16;
  std::uint16_t extraSize = 0;
};

struct DecodedWave {
  WaveFormat format;
  std::uint32_t dataSize = 0;  // bytes of sound, also where the samples were not asked for
  std::vector<std::uint8_t> samples;
  std::vector<std::uint8_t> extension;  // bytes of the format behind those fields
};

// Bytes that are read here and there: of a large file often nothing but the head is wanted.
class ByteSource {
 public:
  virtual ~ByteSource() = default;
  // Reads up to `size` bytes, and gives how many were there.
  virtual std::size_t ReadAt(std::int64_t position, void* target, std::size_t size) = 0;
  virtual std::int64_t Size() const = 0;
};

// A RIFF wave, of any format. Its chunks are walked as the system's multimedia functions walk them: to the end of the
// file whatever the outer chunk claims, with a byte of padding behind an odd one. None for anything else, for a format
// cut short, and if the samples are asked for and are not all there.
std::optional<DecodedWave> DecodeWav(ByteSource& file, bool headerOnly);

// An AIFF file with its samples, those of 16 bits turned to little-endian. None unless its form, its format of 18 bytes
// and its sound are all there.
//
// Users rely on three oddities: the rate is the top of the mantissa alone, so that 22050 Hz read as 44100; only as many
// samples are turned as there are frames, which is half of a stereo file; and no chunk is padded to an even size.
//
// Sound that the file cuts short is filled up with silence, but not beyond twice the size of the file or 1 MiB, so that
// no claim of a short file takes the memory.
std::optional<DecodedWave> DecodeAiff(ByteSpan file);
