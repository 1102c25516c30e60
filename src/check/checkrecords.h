// The three records that cross the border to the check library, byte for byte, and its one entry point.
//
// The program makes them from a map and takes the marks back; the library that comes along reads them. Both sides
// include this file, and any other check library has to keep to it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

class FrqMap;

// The user's settings for the voicebank; also a value in the registry.
struct CheckFrqSettings {
  std::int32_t Size = 24;       // of this record
  std::int32_t LowNote = 60;    // lowest and highest note of the syllables; 60 is C4
  std::int32_t HighNote = 107;  //
  std::int32_t HasPitchTransition = 0;
  std::int32_t LargeTransitionAtBeginning = 0;
  std::int32_t LargeTransitionAtEnd = 0;
};
static_assert(sizeof(CheckFrqSettings) == 24 && offsetof(CheckFrqSettings, LowNote) == 4 &&
              offsetof(CheckFrqSettings, HighNote) == 8 && offsetof(CheckFrqSettings, HasPitchTransition) == 12 &&
              offsetof(CheckFrqSettings, LargeTransitionAtBeginning) == 16 &&
              offsetof(CheckFrqSettings, LargeTransitionAtEnd) == 20);

struct CheckFrame {
  std::uint8_t NoPitch;  // 1 where Frequency is at most FrqNoPitch
  std::uint8_t Unused1[7];
  double Frequency;           // [Hz]
  double Amplitude;           // level in units of 16-bit samples
  std::int32_t Mark;          // out: nonzero where the frame failed
  std::uint8_t Unused2[4];    //
  double SuggestedFrequency;  // out: [Hz] that the frame should have, 0.0 where that is not known
};
static_assert(sizeof(CheckFrame) == 40 && offsetof(CheckFrame, Frequency) == 8 &&
              offsetof(CheckFrame, Amplitude) == 16 && offsetof(CheckFrame, Mark) == 24 &&
              offsetof(CheckFrame, SuggestedFrequency) == 32);

struct CheckFrameRecord {
  double Average;         // [Hz] as the map has it
  char16_t MapPath[260];  // null-terminated
  std::int32_t FrameCount;
  std::uint8_t Unused1[4];
  std::int32_t Hop;  // samples per frame
  std::uint8_t Unused2[4];
  CheckFrame Frames[1];  // FrameCount of them, and one more that lies unused
};
static_assert(sizeof(CheckFrameRecord) == 584 && offsetof(CheckFrameRecord, MapPath) == 8 &&
              offsetof(CheckFrameRecord, FrameCount) == 528 && offsetof(CheckFrameRecord, Hop) == 536 &&
              offsetof(CheckFrameRecord, Frames) == 544);

// First and last frame of a stretch that sounds.
struct CheckRegion {
  std::int32_t First;
  std::int32_t Last;
};
struct CheckRegionRecord {
  std::uint32_t RegionCount;
  CheckRegion Regions[1];  // RegionCount of them, and one more that lies unused
};
static_assert(sizeof(CheckRegionRecord) == 12 && sizeof(CheckRegion) == 8 && offsetof(CheckRegionRecord, Regions) == 4);

// The entry point CheckFrequencyMap of checkfrq.dll, with the calling convention of C. `regions` may be null. A
// negative result ends the whole run, and the marks of this map do not count. The library writes the out fields alone
// and keeps nothing.
using CheckFrequencyMapEntry = std::int32_t (*)(const CheckFrqSettings* settings, CheckFrameRecord* frames,
                                                const CheckRegionRecord* regions);

struct CheckRecordDeleter {
  void operator()(void* record) const { std::free(record); }
};
template <typename Record>
using CheckRecordPtr = std::unique_ptr<Record, CheckRecordDeleter>;

// The records of a loaded map; null without memory. `mapPath` is cut where the record ends. MakeCheckRegions finds the
// sound regions of the map anew.
CheckRecordPtr<CheckFrameRecord> MakeCheckFrames(const FrqMap& map, std::wstring_view mapPath);
CheckRecordPtr<CheckRegionRecord> MakeCheckRegions(const FrqMap& map);

// Replaces the marks of the map that `record` was made from by those in it. Gives the number of marked frames.
int TakeCheckResults(const CheckFrameRecord& record, FrqMap& map);
