#include "base/inplace.h"

#include <algorithm>
#include <ranges>

namespace {

constexpr std::uint32_t kWriteFault = 29;  // ERROR_WRITE_FAULT, for what fails without a word

bool WritePieces(FileStream& stream, const FileChange& change) {
  for (const FileChange::Piece& piece : change.Pieces) {
    if (!piece.After.empty() && !stream.WriteAt(piece.At, piece.After)) return false;
  }
  return change.SizeAfter >= change.SizeBefore || stream.Truncate(change.SizeAfter);
}

bool Overwrite(FileSystem& files, FileStream& stream, const std::wstring& path, ByteSpan bytes) {
  const std::optional<std::int64_t> size = SizeOf(files, stream);
  if (!size) return false;
  FileChange change{path, *size, std::ssize(bytes), {{0, Bytes(static_cast<std::size_t>(*size)), {}}}};
  Bytes& before = change.Pieces.front().Before;
  if (!before.empty() && !stream.ReadAt(0, before)) return false;
  if (std::ranges::equal(before, bytes)) return true;
  if (!before.empty() && PresentGuard().Wants(path)) PresentGuard().Keep(path, before);
  change.Pieces.front().After.assign(bytes.begin(), bytes.end());
  return MakeChange(files, stream, change);
}

}  // namespace

bool WriteInPlace(FileSystem& files, const std::wstring& path, ByteSpan bytes) {
  PresentGuard().Mend(path);
  const bool wasThere = files.FactsOf(path).has_value();
  std::unique_ptr<FileStream> stream = files.Open(path, FileMode::Patch);
  if (!stream) return false;
  if (Overwrite(files, *stream, path, bytes)) return true;
  const std::uint32_t error = files.LastError();
  stream.reset();
  if (!wasThere) files.Delete(path);
  files.SetLastError(error);
  return false;
}

bool MakeChange(FileSystem& files, FileStream& stream, const FileChange& change, const std::function<bool()>& isThere) {
  PresentGuard().Begin(change);
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
