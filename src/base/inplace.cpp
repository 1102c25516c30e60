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

// A change of all bytes of a file. A list of pieces in braces would copy both contents.
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

// Makes a change whose Begin the guard has been told, or takes it back, and tells the guard its End.
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

// Removes an empty file. LastError stays the reason of what failed before.
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
  // Somebody else has made the file meanwhile, or its size cannot be told. One that may be ours and cannot be removed
  // has no End: the next start looks at it.
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

// A piece that cannot be put back keeps no other piece from it.
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
