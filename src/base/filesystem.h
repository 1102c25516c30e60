// Files as an interface: what the program does to files that must not be lost, so that tests keep theirs in memory and
// have them fail, write short, or die at any call.
//
// Every call that fails leaves its reason in LastError of its file system. A stream is used by one thread at a time, a
// file system by any number.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/bytes.h"

// An open file. It is open as long as this is there.
class FileStream {
 public:
  virtual ~FileStream() = default;
  virtual std::int64_t Size() const = 0;
  // Fills all of `into` or fails.
  virtual bool ReadAt(std::int64_t position, std::span<std::uint8_t> into) = 0;
  // Grows a file that is too small. A write that fails may have written a part.
  virtual bool WriteAt(std::int64_t position, ByteSpan bytes) = 0;
  // Cuts off all that lies behind `size`.
  virtual bool Truncate(std::int64_t size) = 0;
};

enum class FileMode {
  Read,    // a file that is there, whatever others do with it
  Patch,   // reads and writes a file that is there or is made, empty; others may have it open, and one that lets nobody
           // write is waited for some seconds. On Windows a write that has come back outlasts the power
  Shared,  // as Patch, for a file that several programs write: locked against those that open it so, which wait for
           // some seconds and then fail
  Own,     // as Patch, and nobody else opens it so meanwhile: a running program shows by such a file that it lives
};

struct FileFacts {
  std::int64_t Size = 0;
  std::int64_t Written = 0;  // time of the last write, in units of the system's own
  bool IsFolder = false;

  bool operator==(const FileFacts&) const = default;
};

class FileSystem {
 public:
  virtual ~FileSystem() = default;
  // Null if the file cannot be opened in that mode.
  virtual std::unique_ptr<FileStream> Open(const std::wstring& path, FileMode mode) = 0;
  // Size and time of a file or folder; none if there is nothing of that name.
  virtual std::optional<FileFacts> FactsOf(const std::wstring& path) = 0;
  virtual bool Delete(const std::wstring& path) = 0;
  // Names of the files and folders in a folder, without a path and in no order.
  virtual std::vector<std::wstring> List(const std::wstring& folder) = 0;
  // Makes the folders above it too. True also if the folder is there already.
  virtual bool MakeFolder(const std::wstring& path) = 0;
  // Removes an empty folder; any other stays.
  virtual bool RemoveFolder(const std::wstring& path) = 0;

  // The code of Windows for what failed last on this thread, in this file system or a stream of it.
  virtual std::uint32_t LastError() const = 0;
  virtual void SetLastError(std::uint32_t error) = 0;
};

// The files of the machine.
FileSystem& Disk();
