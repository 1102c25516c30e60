#include "base/stagedstream.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::uint32_t kEndOfFile = 38;  // ERROR_HANDLE_EOF

std::ptrdiff_t Offset(std::int64_t bytes) {
  return static_cast<std::ptrdiff_t>(bytes);
}

}  // namespace

bool StagedStream::ReadAt(std::int64_t position, std::span<std::uint8_t> into) {
  if (!IsOpen() || position < 0 || position > size_ || std::ssize(into) > size_ - position) {
    files_.SetLastError(kEndOfFile);
    return false;
  }
  const std::int64_t end = position + std::ssize(into);
  const std::int64_t shown = std::clamp<std::int64_t>(shown_ - position, 0, std::ssize(into));
  if (shown > 0 && !under_.ReadAt(position, into.first(static_cast<std::size_t>(shown)))) return false;
  std::fill(into.begin() + Offset(shown), into.end(), std::uint8_t{0});
  for (const Piece& piece : pieces_) {
    const std::int64_t from = std::max(position, piece.At), to = std::min(end, piece.End());
    if (from >= to) continue;
    std::copy(piece.Content.begin() + Offset(from - piece.At), piece.Content.begin() + Offset(to - piece.At),
              into.begin() + Offset(from - position));
  }
  return true;
}

// The pieces that touch the new bytes become one piece with them, in the place of the first such piece.
bool StagedStream::WriteAt(std::int64_t position, ByteSpan bytes) {
  if (!IsOpen()) return false;
  if (position > size_ && !WriteAt(size_, Bytes(static_cast<std::size_t>(position - size_)))) return false;
  Piece joined{position, Bytes(bytes.begin(), bytes.end())};
  const std::int64_t end = joined.End();
  const auto touches = [&](const Piece& piece) { return piece.At <= end && piece.End() >= position; };
  for (const Piece& piece : pieces_) {
    if (touches(piece)) joined = Joined(piece, joined);
  }
  const auto first = std::ranges::find_if(pieces_, touches);
  if (first == pieces_.end()) {
    pieces_.push_back(std::move(joined));
  } else {
    pieces_.erase(std::remove_if(first + 1, pieces_.end(), touches), pieces_.end());
    *first = std::move(joined);
  }
  size_ = std::max(size_, end);
  return true;
}

// Both pieces as one. Where they overlap, the bytes of `above` count.
StagedStream::Piece StagedStream::Joined(const Piece& below, const Piece& above) {
  Piece joined{std::min(below.At, above.At), {}};
  joined.Content.resize(static_cast<std::size_t>(std::max(below.End(), above.End()) - joined.At));
  for (const Piece* const piece : {&below, &above}) {
    std::ranges::copy(piece->Content, joined.Content.begin() + Offset(piece->At - joined.At));
  }
  return joined;
}

bool StagedStream::Truncate(std::int64_t size) {
  if (!IsOpen()) return false;
  size_ = std::min(size_, size);
  shown_ = std::min(shown_, size_);
  std::erase_if(pieces_, [&](const Piece& piece) { return piece.At >= size_; });
  for (Piece& piece : pieces_) {
    piece.Content.resize(static_cast<std::size_t>(std::min(piece.End(), size_) - piece.At));
  }
  return true;
}

bool StagedStream::Commit(const std::function<bool()>& isThere) {
  if (!IsOpen()) return false;
  const std::optional<FileChange> change = Change();
  if (!change) return false;
  if (change->Pieces.empty()) return !isThere || isThere();
  return MakeChange(files_, under_, *change, isThere);
}

// The change from the file to the stream's content; none if the old bytes cannot be read.
std::optional<FileChange> StagedStream::Change() {
  FileChange change{path_, *sizeUnder_, size_, {}};
  for (const Piece& piece : pieces_) {
    if (!AddPiece(change, piece.At, piece.Content)) return std::nullopt;
  }
  // The bytes that are cut off at the end are a piece of their own.
  if (size_ < *sizeUnder_) {
    Bytes cut(static_cast<std::size_t>(*sizeUnder_ - size_));
    if (!under_.ReadAt(size_, cut)) return std::nullopt;
    change.Pieces.push_back({size_, std::move(cut), {}});
  }
  return change;
}

bool StagedStream::AddPiece(FileChange& change, std::int64_t at, Bytes after) {
  const std::int64_t old = std::clamp<std::int64_t>(*sizeUnder_ - at, 0, std::ssize(after));
  Bytes before(static_cast<std::size_t>(old));
  if (old > 0 && !under_.ReadAt(at, before)) return false;
  if (before != after) change.Pieces.push_back({at, std::move(before), std::move(after)});
  return true;
}
