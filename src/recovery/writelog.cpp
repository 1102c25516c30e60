#include "recovery/writelog.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "base/path.h"
#include "recovery/record.h"

namespace {

constexpr std::wstring_view kSlotName = L"write-";
constexpr std::uint32_t kUnderWay = 0x31575754;  // "TWW1"

// State, size and checksum of what follows: the change.
Bytes Encode(const FileChange& change) {
  ByteWriter body;
  WriteText(body, change.Path);
  body.Write(change.SizeBefore);
  body.Write(change.SizeAfter);
  body.Write(static_cast<std::uint32_t>(change.AfterIsUnknown));
  body.Write(static_cast<std::uint32_t>(change.Pieces.size()));
  for (const FileChange::Piece& piece : change.Pieces) {
    body.Write(piece.At);
    WriteBlock(body, piece.Before);
    WriteBlock(body, piece.After);
  }
  return Sealed(kUnderWay, body.Take());
}

std::optional<FileChange> Decode(ByteSpan record) {
  const std::optional<ByteSpan> body = Unsealed(kUnderWay, record);
  if (!body) return std::nullopt;
  ByteReader reader(*body);
  FileChange change;
  change.Path = ReadText(reader);
  change.SizeBefore = reader.Read<std::int64_t>();
  change.SizeAfter = reader.Read<std::int64_t>();
  change.AfterIsUnknown = reader.Read<std::uint32_t>() != 0;
  const auto pieces = reader.Read<std::uint32_t>();
  for (std::uint32_t i = 0; i < pieces && !reader.Failed(); ++i) {
    FileChange::Piece piece;
    piece.At = reader.Read<std::int64_t>();
    piece.Before = ReadBlock(reader);
    piece.After = ReadBlock(reader);
    change.Pieces.push_back(std::move(piece));
  }
  return reader.Failed() ? std::nullopt : std::optional(std::move(change));
}

// The bytes that stand in the place of a piece now; fewer where the file ends.
Bytes Present(FileStream& file, const FileChange::Piece& piece) {
  const auto wanted = static_cast<std::int64_t>(std::max(piece.Before.size(), piece.After.size()));
  Bytes bytes(static_cast<std::size_t>(std::clamp<std::int64_t>(file.Size() - piece.At, 0, wanted)));
  if (!bytes.empty() && !file.ReadAt(piece.At, bytes)) bytes.clear();
  return bytes;
}

bool StandsAt(const FileChange& change, FileStream& file, Bytes FileChange::Piece::*side, std::int64_t size) {
  return file.Size() == size && std::ranges::all_of(change.Pieces, [&](const FileChange::Piece& piece) {
           const Bytes present = Present(file, piece);
           const Bytes& wanted = piece.*side;
           return present.size() >= wanted.size() && std::equal(wanted.begin(), wanted.end(), present.begin());
         });
}

// Whether nothing but the change has been at the file: each byte of its pieces is an old or a new one, or a zero that
// the disk has not got to.
bool IsBrokenOff(const FileChange& change, FileStream& file) {
  const std::int64_t size = file.Size();
  const auto [least, most] = std::minmax(change.SizeBefore, change.SizeAfter);
  if (size < least || size > most) return false;
  return std::ranges::all_of(change.Pieces, [&](const FileChange::Piece& piece) {
    const Bytes present = Present(file, piece);
    for (std::size_t i = 0; i < present.size(); ++i) {
      const std::uint8_t byte = present[i];
      const bool isOld = i < piece.Before.size() && byte == piece.Before[i];
      const bool isNew = i < piece.After.size() && byte == piece.After[i];
      if (byte != 0 && !isOld && !isNew) return false;
    }
    return true;
  });
}

bool Put(const FileChange& change, FileStream& file, Bytes FileChange::Piece::*side, std::int64_t size) {
  for (const FileChange::Piece& piece : change.Pieces) {
    if (!(piece.*side).empty() && !file.WriteAt(piece.At, piece.*side)) return false;
  }
  return file.Size() == size || file.Truncate(size);
}

enum class Way { Forth, Back };

// A library has written its file within minutes. A later write is somebody else's, of which nothing is known: the bytes
// from before the library's are among the kept ones.
bool IsWrittenSince(FileSystem& files, const std::wstring& path, std::int64_t begun) {
  constexpr std::int64_t kMoment = std::int64_t{600} * 10'000'000;  // [100 ns]
  const std::optional<FileFacts> facts = files.FactsOf(path);
  return facts && facts->Written > begun + kMoment;
}

// Completes a change or takes it back. True if the file is as it was before or after it now, or is none of its business
// any more. `begun` is the time at which the change was begun.
bool Settle(FileSystem& files, const FileChange& change, Way way, std::int64_t begun) {
  // A file that is not there was never made, or somebody took it away: nothing is left to settle, unless its folder is
  // not there either, as that may come back with its disk.
  if (!files.FactsOf(change.Path)) return files.FactsOf(FolderOf(change.Path)).has_value();
  const auto file = files.Open(change.Path, FileMode::Shared);
  if (!file) return false;
  using Piece = FileChange::Piece;
  // An empty file was made for this change.
  const bool isMade = way == Way::Forth && change.SizeBefore == 0 && !change.AfterIsUnknown;
  if (!isMade && StandsAt(change, *file, &Piece::Before, change.SizeBefore)) return true;
  // Of a write by a library only the old bytes are known.
  if (change.AfterIsUnknown) {
    return IsWrittenSince(files, change.Path, begun) || Put(change, *file, &Piece::Before, change.SizeBefore);
  }
  if (StandsAt(change, *file, &Piece::After, change.SizeAfter)) return true;
  if (!IsBrokenOff(change, *file)) return true;
  if (way == Way::Forth && Put(change, *file, &Piece::After, change.SizeAfter)) return true;
  return Put(change, *file, &Piece::Before, change.SizeBefore);
}

std::int64_t TimeOf(FileSystem& files, const std::wstring& path) {
  return files.FactsOf(path).value_or(FileFacts()).Written;
}

Bytes ReadSlot(FileSystem& files, const std::wstring& path) {
  const auto file = files.Open(path, FileMode::Read);
  Bytes bytes(file ? static_cast<std::size_t>(file->Size()) : 0);
  if (!bytes.empty() && !file->ReadAt(0, bytes)) bytes.clear();
  return bytes;
}

}  // namespace

WriteLog::Slot* WriteLog::Take(const std::wstring& target) {
  const std::lock_guard lock(mutex_);
  auto slot = std::ranges::find_if(slots_, [](const auto& known) { return !known->IsTaken; });
  if (slot == slots_.end()) {
    const std::wstring path = PathIn(folder_, std::wstring(kSlotName) + std::to_wstring(slots_.size() + 1));
    auto file = files_.Open(path, FileMode::Patch);
    if (!file) return nullptr;
    slots_.push_back(std::make_unique<Slot>(Slot{.Path = path, .File = std::move(file)}));
    slot = std::prev(slots_.end());
  }
  (*slot)->IsTaken = true;
  (*slot)->Target = target;
  // A slot that this thread has left open before stays taken.
  taken_[std::this_thread::get_id()] = slot->get();
  return slot->get();
}

// Marks a slot as free. One that cannot be written on the disk stays taken.
bool WriteLog::LetGo(Slot& slot) {
  ByteWriter none;
  none.Write(std::uint32_t{0});
  if (slot.File->WriteAt(0, none.Take())) slot.IsTaken = false;
  return !slot.IsTaken;
}

void WriteLog::Begin(const FileChange& change) {
  const std::uint32_t error = files_.LastError();
  if (Slot* const slot = Take(change.Path); slot && !slot->File->WriteAt(0, Encode(change))) End();
  files_.SetLastError(error);
}

void WriteLog::End() {
  const std::uint32_t error = files_.LastError();
  const std::lock_guard lock(mutex_);
  const auto taken = taken_.find(std::this_thread::get_id());
  if (taken == taken_.end()) return;
  LetGo(*taken->second);
  taken_.erase(taken);
  files_.SetLastError(error);
}

// A change of the file by another thread that is under way was not left unfinished: that thread has the file locked.
void WriteLog::TakeBackLeft(const std::wstring& path) {
  const std::uint32_t error = files_.LastError();
  const std::lock_guard lock(mutex_);
  taken_.erase(std::this_thread::get_id());
  for (const auto& slot : slots_) {
    const bool isUnderWay = std::ranges::any_of(taken_, [&](const auto& taken) { return taken.second == slot.get(); });
    if (!slot->IsTaken || isUnderWay || slot->Target != path) continue;
    const std::optional<FileChange> change = Decode(ReadSlot(files_, slot->Path));
    if (!change || Settle(files_, *change, Way::Back, TimeOf(files_, slot->Path))) LetGo(*slot);
  }
  files_.SetLastError(error);
}

bool WriteLog::Close() {
  const std::lock_guard lock(mutex_);
  bool isAll = true;
  for (const auto& slot : slots_) {
    slot->File.reset();
    if (slot->IsTaken || !files_.Delete(slot->Path)) isAll = false;
  }
  slots_.clear();
  taken_.clear();
  return isAll;
}

bool WriteLog::Mend(FileSystem& files, const std::wstring& folder) {
  bool isAll = true;
  for (const std::wstring& name : files.List(folder)) {
    if (!IsSlot(name)) continue;
    const std::wstring path = PathIn(folder, name);
    const std::optional<FileChange> change = Decode(ReadSlot(files, path));
    if (!change || Settle(files, *change, Way::Forth, TimeOf(files, path))) {
      files.Delete(path);
    } else {
      isAll = false;
    }
  }
  return isAll;
}

bool WriteLog::IsSlot(const std::wstring& name) {
  return name.starts_with(kSlotName);
}
