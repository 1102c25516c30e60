// A file that is changed in memory first: what is written to it is seen by whoever reads it here, and reaches the file
// as one change or not at all.
//
// It serves a change of one thing in a file that takes reads and writes in several places.
#pragma once

#include "base/inplace.h"

class StagedStream : public FileStream {
 public:
  // `under` and `files` outlive this; nobody else writes the file meanwhile.
  StagedStream(FileSystem& files, FileStream& under, std::wstring path)
      : files_(files), under_(under), path_(std::move(path)), sizeUnder_(SizeOf(files, under)) {}

  // Whether the file's length could be read. Without it nothing is read, written or committed.
  bool IsOpen() const { return sizeUnder_.has_value(); }

  std::int64_t Size() const override { return size_; }
  bool ReadAt(std::int64_t position, std::span<std::uint8_t> into) override;
  // A write behind the end puts zeros ahead of it, up to `position`.
  bool WriteAt(std::int64_t position, ByteSpan bytes) override;
  bool Truncate(std::int64_t size) override;

  // Makes the change, in the order of the writes, see MakeChange; a write that overlaps or continues an earlier one
  // goes along with that. Nothing is written where nothing differs, and then `isThere` is asked all the same.
  bool Commit(const std::function<bool()>& isThere = {});

 private:
  struct Piece {
    std::int64_t At = 0;
    Bytes Content;

    std::int64_t End() const { return At + std::ssize(Content); }
  };

  static Piece Joined(const Piece& below, const Piece& above);
  std::optional<FileChange> Change();
  bool AddPiece(FileChange& change, std::int64_t at, Bytes after);

  FileSystem& files_;
  FileStream& under_;
  const std::wstring path_;
  const std::optional<std::int64_t> sizeUnder_;
  std::int64_t size_ = sizeUnder_.value_or(0);
  std::int64_t shown_ = size_;  // how far the file under this shows through
  std::vector<Piece> pieces_;   // none overlaps or touches another
};
