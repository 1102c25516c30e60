// One map file: its way through the codec against the bare way of its bytes to and from the disk.
#include <windows.h>

#include <cmath>
#include <cstring>

#include "base/files.h"
#include "base/handle.h"
#include "frqmap/freq0003.h"
#include "frqmap/frqmap.h"
#include "frqmap/mapfiles.h"
#include "measuring.h"
#include "rows.h"
#include "scratchfolder.h"

namespace {

constexpr SampleCount kFrames = 10000;

// A voice that wavers around 220 Hz, with a breath every hundred frames.
FrqMap LongMap() {
  FrqMap map;
  map.Create(kFrames, FrqTypeFrq);
  for (SampleCount i = 0; i < kFrames; ++i) {
    map.SetFrequency(map.PositionOf(i), i % 100 < 10 ? 0.0 : 220.0 + 5.0 * std::sin(i / 20.0));
    map.Frames.Own()[static_cast<std::size_t>(i)].Amplitude = 1000.0 + i % 500;
  }
  return map;
}

// The file of the map, and its bytes.
class MapFile : public Work {
 public:
  MapFile() { Require(WriteWholeFile(path_, bytes_), "a map cannot be written"); }

 protected:
  ScratchFolder folder_;
  std::wstring path_ = folder_.PathOf(L"a_wav.frq");
  FrqMap map_ = LongMap();
  Bytes bytes_ = EncodeFreq0003(map_, FrqTypeFrq);
};

class LoadFrq : public MapFile {
 public:
  // The file goes into a new map, as every map of a voicebank is loaded.
  double Measured() override {
    FrqMap map;
    return MillisecondsOf([&] { Require(map.Load(path_, nullptr) == 0, "a map cannot be loaded"); });
  }

  // The bytes go into new memory of the size that the frames take.
  double Yardstick() override {
    return MillisecondsOf([&] {
      Bytes memory(kFrames * sizeof(FrqFrame));
      const FileHandle file(CreateFileW(path_.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
      DWORD read = 0;
      ReadFile(file.get(), memory.data(), static_cast<DWORD>(bytes_.size()), &read, nullptr);
      Require(read == bytes_.size(), "a map cannot be read");
    });
  }
};

class SaveFrq : public MapFile {
 public:
  // The map is another one each time: one that the file holds already is not written.
  double Measured() override {
    map_.Frames.Own().front().Amplitude += 1.0;
    return MillisecondsOf([&] { Require(map_.Save(path_, nullptr) == 0, "a map cannot be saved"); });
  }

  // The bytes are made of the frames, and what is there is looked at, read and compared, as everybody must who writes
  // in place, minds a mark and puts the old bytes back where that fails.
  double Yardstick() override {
    map_.Frames.Own().back().Amplitude += 1.0;
    return MillisecondsOf([&] {
      Bytes after(bytes_.size());
      std::uint8_t* place = after.data() + after.size() % sizeof(double[2]);
      for (const FrqFrame& frame : map_.Frames) {
        std::memcpy(place, &frame.Frequency, sizeof(double[2]));
        place += sizeof(double[2]);
      }
      Require(GetFileAttributesW(path_.c_str()) != INVALID_FILE_ATTRIBUTES, "there is no map");
      Bytes before(bytes_.size());
      const FileHandle file(CreateFileW(path_.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
      DWORD read = 0, written = 0;
      ReadFile(file.get(), before.data(), static_cast<DWORD>(before.size()), &read, nullptr);
      Require(before != after, "a map is written that is there already");
      SetFilePointer(file.get(), 0, nullptr, FILE_BEGIN);
      WriteFile(file.get(), after.data(), static_cast<DWORD>(after.size()), &written, nullptr);
      Require(read == written && written == after.size(), "a map cannot be written");
    });
  }
};

}  // namespace

std::vector<Row> MapFileRows() {
  return {RowOf<LoadFrq>("load_frq", "ms", 1.2), RowOf<SaveFrq>("save_frq", "ms", 1.2)};
}
