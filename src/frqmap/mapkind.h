// The table of the kinds of frequency map, a row each.
//
// A kind is its number (frqtype.h), its row, its codec, and its name among the texts of both languages: whoever lists
// the kinds, names their files or reads and writes them goes by the rows.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/bytes.h"
#include "frqmap/frqmap.h"

struct MapKind {
  FrqType Type;
  std::wstring_view Extension;  // with its dot
  unsigned Name;                // string of the resources
  int Place;                    // among the kinds that users choose from

  // Pattern of the file names of the resamplers that make it; empty: all others do.
  std::wstring_view Resamplers = {};

  // Whether files are named like the wave without its extension: a.dio, and not a_wav.frq.
  bool DropsWaveExtension = false;

  // Limits of an edit [Hz], see MinFrequencyOfKind and MaxFrequencyOfKind.
  double LowestHz = FrqNoPitch;
  double HighestHz = 7902.132820097988;  // note 119, as a number, so that every platform gives the same last digit

  SampleCount NewHop = 256;  // of a map that is made anew
  double ColumnHop = 256.0;  // samples of a column of the table where no map tells them

  // Fields that a map holds of its own; the rest is derived from the curve, or comes from the wave.
  bool HoldsAverage = false;
  bool HoldsLevels = false;
  bool HoldsWaveLength = false;
  bool IsSinglePrecision = false;

  // The first bytes of a file: as much as all programs write that write this kind.
  std::string_view Beginning = {};
  std::uint32_t HeaderBytes = 0;
  std::uint32_t RecordBytes = 0;  // 0: no file of its own, so that no size tells anything
  bool HasRecordPerFrame = true;  // else the size of a file tells nothing of its frames

  // The map in the bytes of a file, the wave beside it having so many bytes; none if the file is no such map. Null for
  // a kind whose bytes are not ours to read.
  using DecodeFunction = std::optional<FrqMap>(ByteSpan file, std::int64_t waveBytes);
  DecodeFunction* Decode = nullptr;
  // The file of a map, its wave having so many samples in one channel; none if the kind cannot hold the map.
  using EncodeFunction = std::optional<Bytes>(const FrqMap& map, std::uint32_t waveSamples);
  EncodeFunction* Encode = nullptr;
  // Whether a file that cannot be decoded has all the bytes that it says it has. Null: it never has.
  bool (*IsWhole)(ByteSpan file) = nullptr;

  // Loading and saving of what is more than bytes read and decoded, and encoded and written: 0, or nonzero. `store`
  // serves .mrq alone and may be null.
  int (*Load)(FrqMap& map, const std::wstring& path, MrqStore* store) = nullptr;
  int (*Save)(const FrqMap& map, const std::wstring& path, MrqStore* store) = nullptr;
};

// In the order of their numbers, from 0 on.
std::span<const MapKind> MapKinds();
inline const std::vector<FrqType>& KindNumbers() {
  static const std::vector<FrqType> numbers = [] {
    std::vector<FrqType> each;
    for (const MapKind& kind : MapKinds()) each.push_back(kind.Type);
    return each;
  }();
  return numbers;
}

// Null for an unknown kind.
const MapKind* FindMapKind(FrqType kind);
