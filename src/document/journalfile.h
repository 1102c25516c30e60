// The file of a journal: a frame for each call of a document that has told it anything; a frame that is not whole does
// not count.
//
// A frame is a head of 24 bytes (magic, size of what follows, time, checksum) and its records; the first frame holds
// the JournalHead. The checksum covers the place of the frame and the first frame as well, so that bytes of an older
// file that the disk brings up again behind a torn end are no frames of this one.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "base/filesystem.h"
#include "document/journalrecord.h"

// A frame in the making: room for its head, then what is written to it.
ByteWriter NewFrame();
// The length of a frame without records.
inline constexpr std::size_t kFrameHead = 24;

// JournalFile: the file that is being written, used by one thread.
class JournalFile {
 public:
  static constexpr std::int64_t kMostBytes = std::int64_t{256} << 20;

  JournalFile(FileSystem& files, std::wstring path) : files_(files), path_(std::move(path)) {}

  // Deletes the file. It is made anew with the first frame that is appended; `head` is the frame of its head.
  void Begin(Bytes head);
  // Appends a frame of that time, written through. False if that failed; a file that would become too large is deleted.
  bool Append(Bytes frame, std::int64_t time);
  void Close() { stream_.reset(); }
  void Remove();

 private:
  bool Open();
  bool Write(Bytes& frame, std::int64_t time);

  FileSystem& files_;
  const std::wstring path_;
  Bytes head_;
  std::unique_ptr<FileStream> stream_;
  std::int64_t end_ = 0;
  std::uint64_t seed_ = 0;  // of all checksums but the head's; it is that one's value
};

struct JournalContent {
  JournalHead Head;
  std::int64_t Time = 0;             // [s since 1970] of the last frame
  std::vector<std::wstring> Edited;  // full paths of the waves whose maps had edits
  std::vector<JournalRecord> Records;
};

// The content of a journal; none if there is no file, or nothing of it but its head. All from the first frame on that
// is not whole is left out. Throws std::bad_alloc.
std::optional<JournalContent> ReadJournal(FileSystem& files, const std::wstring& path);
