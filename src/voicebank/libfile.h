// LibReadFile: the reader of every text file of a voicebank and of the host. The whole file is taken in one read, its
// encoding is decided once, and lines are handed out as wide text.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "base/bytes.h"
#include "base/handle.h"
#include "voicebank/textlines.h"

// A file that is open, and that nobody else may open meanwhile.
class LibFile {
 public:
  LibFile() = default;
  virtual ~LibFile() = default;
  LibFile(const LibFile&) = delete;
  LibFile& operator=(const LibFile&) = delete;

  // Closes what was open before. 0 or the system's error code.
  virtual DWORD Open(const std::wstring& path);
  virtual void Close();

  bool Failed() const { return failed_; }

 protected:
  FileHandle handle_;
  bool failed_ = false;
};

class LibReadFile : public LibFile {
 public:
  explicit LibReadFile(CharsetRule rule) : charsetRule_(rule) {}

  // A file beyond 16 MiB fails as well: its lines, once read, take many times its size, in a process of 32 bits.
  DWORD Open(const std::wstring& path) override;
  void Close() override;

  TextEncoding Encoding() const { return encoding_; }

  // Gives the next line; false behind the last one, and at once if the file could not be read.
  bool ReadLine(std::wstring& line);

 private:
  const CharsetRule charsetRule_;
  TextEncoding encoding_ = TextEncoding::ShiftJis;
  Bytes buffer_;
  std::string_view rest_;  // of the buffer, from the next line on
};

// Opens a file and hands its lines to `parse`. False, without a call, if it cannot be read.
bool ParseTextFile(const std::wstring& path, CharsetRule rule, const std::function<void(const LineSource&)>& parse);
