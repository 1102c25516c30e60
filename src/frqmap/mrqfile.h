// desc.mrq: the one file that holds all maps of a folder for its family of resamplers, an entry for each wave.
//
// Little-endian, without padding: "mrq " (tested by nobody), version (i32), entry count (i32, dead ones included). Then
// the entries: name length in UTF-16 units (i32), the wave's file name, body size (i32), body. A body is frame count,
// sample rate, hop (i32 each), a frequency [Hz] per frame (f32, 0.0 without pitch), and the two i32 `Timestamp` and
// `Unedited`, which other writers leave out. The body size alone leads to the next entry: a shorter map in the place of
// a longer one leaves stale bytes behind itself. A name whose first unit is zero marks a dead entry.
//
// Files of thousands of entries are searched head by head. All of this works on a stream, which is a file or a block of
// memory. mrqwriting.h tells how such a file is written.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "base/bytes.h"
#include "base/filesystem.h"
#include "frqmap/frqtype.h"

struct MrqEntry {
  std::int32_t Hop = 0;                     // samples per frame, as the file says
  std::int32_t SampleRate = FrqSampleRate;  // always this in what we write
  std::vector<double> Frequencies;          // [Hz] one per frame, 0.0 where it has no pitch
  std::int32_t Timestamp = 0;               // low 32 bits of the time of the last writing, from the file alone
  std::int32_t Unedited = 0;                // 1 if the map was not modified when it was saved
};

// A file in memory.
class MrqImage : public FileStream {
 public:
  Bytes Content;

  explicit MrqImage(Bytes content) : Content(std::move(content)) {}
  std::int64_t Size() const override { return static_cast<std::int64_t>(Content.size()); }
  bool ReadAt(std::int64_t position, std::span<std::uint8_t> into) override;
  bool WriteAt(std::int64_t position, ByteSpan bytes) override;
  bool Truncate(std::int64_t size) override;
};

// An entry as its head tells it.
struct MrqHead {
  std::int64_t Start = 0;  // position in the file
  std::u16string Name;     // as it lies there; never empty
  std::int32_t BodySize = 0;
  std::int32_t Ahead = 0;  // entries ahead of it

  bool IsDead() const { return Name.front() == u'\0'; }
  std::int64_t NameStart() const { return Start + 4; }
  std::int64_t BodyStart() const { return Start + 8 + 2 * static_cast<std::int64_t>(Name.size()); }
  std::int64_t End() const { return BodyStart() + BodySize; }
};

// Walks over the heads. The file is read in large blocks; bodies that reach beyond a block are stepped over.
class MrqScan {
 public:
  explicit MrqScan(FileStream& stream);
  // Begins at an entry that an earlier scan has come to.
  MrqScan(FileStream& stream, const MrqHead& from);

  // Goes to the next entry, or the first. False behind the last one, and where the file ends too early or holds
  // nonsense, which HasFailed tells then; a file of less than its header has failed from the start.
  bool Next();
  bool HasFailed() const { return failed_; }
  const MrqHead& Head() const { return head_; }

  // Goes to the entry behind the last one that is counted; false if none is there that is whole, and dead or readable.
  // Comes after a Next that was false without a failure, or with a count below 0.
  bool NextUncounted();
  // The entry count of the header.
  std::int32_t Count() const { return count_; }
  // Whether the system refused to read what the file has. Such a failure says nothing about the file.
  bool IsUnreadable() const { return isUnreadable_; }

  // The entry of the head; none if it has no frames, or if they end behind its body or the file.
  std::optional<MrqEntry> ReadMrqEntry();

 private:
  bool ReadHead();
  bool Read(std::int64_t position, std::span<std::uint8_t> into);
  // The bytes there, good until the next call; empty if the file ends earlier. No more than a block.
  ByteSpan Window(std::int64_t position, std::int64_t size);

  FileStream& stream_;
  const std::int64_t size_;
  std::int64_t next_;
  std::int32_t count_ = 0;
  std::int32_t ahead_ = 0;  // entries
  bool failed_ = false;
  bool isUnreadable_ = false;
  MrqHead head_;
  Bytes block_;
  std::int64_t blockStart_ = 0;
};

// Bytes of a file's header.
inline constexpr std::int64_t MrqHeaderBytes = 12;
// The header of a file without entries.
Bytes EmptyMrqFile();

// The first entry of exactly that name.
std::optional<MrqHead> FindMrqEntry(FileStream& stream, const std::u16string& name);

// Gives every live entry that can be read, in their order. False if the end of the file came first.
bool ReadAllMrqEntries(FileStream& stream, const std::function<void(const std::u16string&, MrqEntry&&)>& take);

// A body as it lies in a file, with a trailer. `timestamp` is the present time; that of the entry does not count.
Bytes EncodeMrqBody(const MrqEntry& entry, std::int32_t timestamp);
// The bytes of an entry ahead of its body.
Bytes EncodeMrqHead(const MrqHead& head);

// The only entry of a piece of a file, its head included; none if it cannot be read or is dead.
std::optional<MrqEntry> DecodeMrqEntry(ByteSpan entry);
