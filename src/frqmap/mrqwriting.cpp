#include "frqmap/mrqwriting.h"

#include <algorithm>
#include <array>
#include <limits>
#include <set>
#include <unordered_map>
#include <utility>

namespace {

constexpr std::int32_t kVersion = 2;
constexpr std::int64_t kVersionAt = 4;
constexpr std::int64_t kCountAt = 8;

// The facts of a file that a writer needs.
struct Walk {
  std::optional<MrqHead> Old;         // the first entry of the name
  std::int64_t End = MrqHeaderBytes;  // of the last sound entry
  std::int32_t Entries = 0;           // sound ones
  std::optional<MrqHead> Overlong;    // the last one, if it can be read but claims more than there is
  std::vector<MrqHead> Uncounted;     // sound ones behind the count
  std::vector<MrqHead> Shadowing;     // uncounted ones whose name has come before: if counted, they would hide that one
  std::int32_t Count = 0;             // as the file says
  bool HasTwin = false;               // a second counted entry has the name
  bool IsFailed = false;              // the stream cannot be read
};

void Take(Walk& walk, const MrqHead& head) {
  ++walk.Entries;
  walk.End = head.End();
}

// An entry that is cut off by the end of the file counts if its frames are there. Any other has nothing to lose, and
// its place is free.
void TakeCut(Walk& walk, MrqScan& scan, std::int64_t size) {
  const MrqHead head = scan.Head();
  if (scan.ReadMrqEntry() && !head.IsDead()) {
    Take(walk, head);
    walk.End = size;
    walk.Overlong = head;
  } else if (walk.Old && walk.Old->Start == head.Start) {
    walk.Old.reset();
  }
}

// The uncounted entries are counted with the rest from now on, but must not take the place of those that readers find.
void SortUncounted(Walk& walk, FileStream& stream, const std::u16string& name) {
  std::set<std::u16string> names;
  MrqScan scan(stream);
  while (scan.Next()) names.insert(scan.Head().Name);
  walk.IsFailed = walk.IsFailed || scan.IsUnreadable();
  for (const MrqHead& head : walk.Uncounted) {
    if (head.IsDead()) continue;
    if (!names.insert(head.Name).second) {
      walk.Shadowing.push_back(head);
    } else if (head.Name == name) {
      walk.Old = head;
    }
  }
}

// Walks over the file, but no further than to an entry of the name that has room for `bodySize` bytes.
Walk WalkTo(FileStream& stream, const std::u16string& name, std::int64_t bodySize) {
  const std::int64_t size = stream.Size();
  MrqScan scan(stream);
  Walk walk;
  walk.Count = scan.Count();
  while (scan.Next()) {
    const MrqHead& head = scan.Head();
    if (head.Name == name) {
      walk.HasTwin = walk.Old.has_value();
      if (!walk.Old) walk.Old = head;
      if (!walk.HasTwin && head.BodySize >= bodySize) return walk;
    }
    if (head.End() > size) {
      TakeCut(walk, scan, size);
      break;
    }
    Take(walk, head);
  }
  const bool areAllThere = walk.Entries == std::max(walk.Count, 0) && !walk.Overlong;
  while (areAllThere && scan.NextUncounted()) {
    Take(walk, scan.Head());
    walk.Uncounted.push_back(scan.Head());
  }
  walk.IsFailed = scan.IsUnreadable();
  if (!walk.Uncounted.empty()) SortUncounted(walk, stream, name);
  return walk;
}

template <typename... Numbers>
bool WriteNumbers(FileStream& stream, std::int64_t position, Numbers... numbers) {
  ByteWriter writer;
  writer.Write(std::array{std::int32_t{numbers}...});
  return stream.WriteAt(position, writer.Take());
}

bool Kill(FileStream& stream, const MrqHead& head) {
  return stream.WriteAt(head.NameStart(), Bytes(head.Name.size() * 2));
}

// The size of an overlong entry becomes that of the bytes that are there.
bool MendEnd(FileStream& stream, const Walk& walk) {
  if (!walk.Overlong) return true;
  const std::int64_t start = walk.Overlong->BodyStart();
  return WriteNumbers(stream, start - 4, static_cast<std::int32_t>(walk.End - start));
}

bool KillShadowing(FileStream& stream, const Walk& walk) {
  return std::ranges::all_of(walk.Shadowing, [&](const MrqHead& head) { return Kill(stream, head); });
}

// The count is one more than the file says, also where that was too many: a reader stops at the end of the file. Where
// something else lies behind the entries, a reader would take that for one, and the count is put right instead.
std::int32_t RaisedCount(const Walk& walk, std::int64_t size) {
  const bool isHarmless = walk.Count > walk.Entries && walk.End == size && !walk.Overlong;
  return std::min((isHarmless ? walk.Count : walk.Entries), std::numeric_limits<std::int32_t>::max() - 1) + 1;
}

// The entry is written before the count that leads to it, and the old one goes last: a program that reads meanwhile
// meets no half of an entry and misses none.
std::optional<MrqHead> Append(FileStream& stream, const Walk& walk, const std::u16string& name, const Bytes& body) {
  // A file that ends within its header has no place for an entry.
  std::array<std::uint8_t, MrqHeaderBytes> header;
  if (!stream.ReadAt(0, header)) return std::nullopt;
  const std::int64_t size = stream.Size();
  const MrqHead head{walk.End, name, static_cast<std::int32_t>(body.size()), walk.Entries};
  Bytes bytes = EncodeMrqHead(head);
  bytes.insert(bytes.end(), body.begin(), body.end());
  const bool isWritten = MendEnd(stream, walk) && KillShadowing(stream, walk) && stream.WriteAt(head.Start, bytes) &&
                         WriteNumbers(stream, kVersionAt, kVersion, RaisedCount(walk, size)) &&
                         (!walk.Old || Kill(stream, *walk.Old)) && (head.End() >= size || stream.Truncate(head.End()));
  return isWritten ? std::optional(head) : std::nullopt;
}

// An old entry that is not counted has to be, with all that lie ahead of it.
bool Overwrite(FileStream& stream, const Walk& walk, const Bytes& body) {
  if (!stream.WriteAt(walk.Old->BodyStart(), body)) return false;
  if (walk.Uncounted.empty()) return WriteNumbers(stream, kVersionAt, kVersion);
  return KillShadowing(stream, walk) && WriteNumbers(stream, kVersionAt, kVersion, walk.Entries);
}

// A file that is made anew. A name that comes twice goes where a second save of it would: over the first entry if it
// fits there, else to the end, the first one becoming dead.
class Compacted {
 public:
  bool Has(const std::u16string& name) const { return places_.contains(name); }

  // `was` is the head of the entry in the old file.
  void Put(const MrqHead& was, const Bytes& body, const MrqKeeping& keep) {
    const auto [place, isNew] = places_.try_emplace(was.Name, Place{was, {}});
    if (!isNew && keep) keep(std::exchange(place->second.Was, was));
    MrqHead& is = place->second.Is;
    if (isNew || is.BodySize < std::ssize(body)) {
      if (!isNew) Kill(image_, is);
      is = {image_.Size(), was.Name, static_cast<std::int32_t>(body.size()), count_++};
      image_.WriteAt(is.Start, EncodeMrqHead(is));
    }
    image_.WriteAt(is.BodyStart(), body);
  }

  Bytes Take() {
    WriteNumbers(image_, kCountAt, count_);
    return std::move(image_.Content);
  }

 private:
  struct Place {
    MrqHead Was;
    MrqHead Is;
  };

  MrqImage image_{EmptyMrqFile()};
  std::int32_t count_ = 0;
  std::unordered_map<std::u16string, Place> places_;
};

}  // namespace

std::optional<MrqHead> PutMrqEntry(FileStream& stream, const std::u16string& name, const Bytes& body,
                                   const MrqKeeping& keep) {
  const Walk walk = WalkTo(stream, name, std::ssize(body));
  if (walk.IsFailed) return std::nullopt;
  if (walk.Old && keep) keep(*walk.Old);
  if (!walk.Old || walk.Old->BodySize < std::ssize(body)) return Append(stream, walk, name, body);
  return Overwrite(stream, walk, body) ? walk.Old : std::nullopt;
}

bool WriteMrqEntry(FileStream& stream, const std::u16string& name, const MrqEntry& entry, std::int32_t timestamp) {
  return PutMrqEntry(stream, name, EncodeMrqBody(entry, timestamp)).has_value();
}

bool KillMrqEntries(FileStream& stream, const std::u16string& name, const MrqKeeping& keep) {
  const Walk walk = WalkTo(stream, name, std::numeric_limits<std::int64_t>::max());
  if (walk.IsFailed) return false;
  if (walk.Old && keep) keep(*walk.Old);
  if (walk.Old && !Kill(stream, *walk.Old)) return false;
  for (const MrqHead& head : walk.Shadowing) {
    if (head.Name == name && !Kill(stream, head)) return false;
  }
  return !walk.HasTwin;
}

int CompactMrqEntries(FileStream& stream, std::int32_t timestamp, const MrqKeeping& keep) {
  std::array<std::uint8_t, 4> version;
  if (!stream.ReadAt(kVersionAt, version)) return 0;
  if (ByteReader(version).Read<std::int32_t>() > kVersion) return -1;

  Compacted compacted;
  MrqScan scan(stream);
  const auto take = [&] {
    if (scan.Head().IsDead()) return true;
    const std::optional<MrqEntry> entry = scan.ReadMrqEntry();
    if (entry) compacted.Put(scan.Head(), EncodeMrqBody(*entry, timestamp), keep);
    return entry.has_value();
  };
  while (scan.Next()) {
    if (!take()) return 0;
  }
  if (scan.HasFailed()) return 0;
  while (scan.NextUncounted()) {
    if (!compacted.Has(scan.Head().Name)) take();
  }
  if (scan.IsUnreadable()) return 0;
  const Bytes file = compacted.Take();
  return stream.WriteAt(0, file) && stream.Truncate(std::ssize(file)) ? 1 : 0;
}
