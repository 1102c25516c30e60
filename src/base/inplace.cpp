#include "base/inplace.h"

#include <algorithm>
#include <ranges>
#include <utility>

#include "base/scratchbytes.h"

namespace {

constexpr std::uint32_t kWriteFault = 29;  // ERROR_WRITE_FAULT, for what fails without a word

bool WritePieces(FileStream& stream, const FileChange& change) {
  for (const FileChange::Piece& piece : change.Pieces) {
    if (!piece.After.empty() && !stream.WriteAt(piece.At, piece.After)) return false;
  }
  return change.SizeAfter >= change.SizeBefore || stream.Truncate(change.SizeAfter);
}

// Not by a list of pieces in braces, which would copy both contents.
FileChange WholeChange(const std::wstring& path, Bytes before, Bytes after) {
  FileChange change{path, std::ssize(before), std::ssize(after), {}};
  change.Pieces.push_back({0, std::move(before), std::move(after)});
  return change;
}

bool Overwrite(FileSystem& files, FileStream& stream, const std::wstring& path, Bytes bytes) {
  const std::optional<std::int64_t> size = SizeOf(files, stream);
  if (!size) return false;
  ScratchBytes present;
  Bytes& before = present.Content;
  before.resize(static_cast<std::size_t>(*size));
  if (!before.empty() && !stream.ReadAt(0, before)) return false;
  if (before == bytes) return true;
  if (!before.empty() && PresentGuard().Wants(path)) PresentGuard().Keep(path, before);
  FileChange change = WholeChange(path, std::move(before), std::move(bytes));
  const bool isMade = MakeChange(files, stream, change);
  before = std::move(change.Pieces.front().Before);
  return isMade;
}

// The rest of a change whose Begin the guard has been told.
bool CarryOut(FileSystem& files, FileStream& stream, const FileChange& change, const std::function<bool()>& isThere) {
  files.SetLastError(0);
  if (WritePieces(stream, change) && (!isThere || isThere())) {
    PresentGuard().End();
    return true;
  }
  const std::uint32_t error = files.LastError();
  if (TakeBack(stream, change)) PresentGuard().End();
  files.SetLastError(error != 0 ? error : kWriteFault);
  return false;
}

// An empty file; what failed before stays the reason.
bool RemoveEmpty(FileSystem& files, const std::wstring& path) {
  const std::uint32_t error = files.LastError();
  const std::optional<FileFacts> facts = files.FactsOf(path);
  const bool isGone = facts && facts->Size == 0 && files.Delete(path);
  files.SetLastError(error);
  return isGone;
}

// The guard is told before the file is made: an empty one that is found at the next start would else be a map that
// nobody can read, and that looks like one that is there.
bool WriteNew(FileSystem& files, const std::wstring& path, Bytes bytes) {
  FileChange change = WholeChange(path, {}, std::move(bytes));
  PresentGuard().Begin(change);
  std::unique_ptr<FileStream> stream = files.Open(path, FileMode::Patch);
  const std::optional<std::int64_t> size = stream ? SizeOf(files, *stream) : std::nullopt;
  if (size == 0) {
    if (CarryOut(files, *stream, change, {})) return true;
    stream.reset();
    RemoveEmpty(files, path);
    return false;
  }
  // Somebody else was quicker, or nobody knows: the next start looks at what cannot be removed.
  const bool isOpen = stream != nullptr;
  if (isOpen && !size) stream.reset();
  if (!isOpen || size || RemoveEmpty(files, path)) PresentGuard().End();
  return stream && Overwrite(files, *stream, path, std::move(change.Pieces.front().After));
}

}  // namespace

bool WriteInPlace(FileSystem& files, const std::wstring& path, Bytes bytes) {
  PresentGuard().Mend(path);
  if (!files.FactsOf(path)) return WriteNew(files, path, std::move(bytes));
  const std::unique_ptr<FileStream> stream = files.Open(path, FileMode::Patch);
  return stream && Overwrite(files, *stream, path, std::move(bytes));
}

bool MakeChange(FileSystem& files, FileStream& stream, const FileChange& change, const std::function<bool()>& isThere) {
  PresentGuard().Begin(change);
  return CarryOut(files, stream, change, isThere);
}

// One piece that resists keeps no other one from being put back.
bool TakeBack(FileStream& stream, const FileChange& change) {
  bool isBack = true;
  for (const FileChange::Piece& piece : change.Pieces) {
    isBack = (piece.Before.empty() || stream.WriteAt(piece.At, piece.Before)) && isBack;
  }
  return stream.Truncate(change.SizeBefore) && isBack;
}

std::optional<std::int64_t> SizeOf(FileSystem& files, const FileStream& stream) {
  files.SetLastError(0);
  const std::int64_t size = stream.Size();
  return size > 0 || files.LastError() == 0 ? std::optional(size) : std::nullopt;
}
