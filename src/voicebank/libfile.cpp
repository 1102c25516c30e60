#include "voicebank/libfile.h"

#include <cwchar>

#include "base/path.h"
#include "base/text.h"

namespace {

constexpr LONGLONG kLargestText = LONGLONG{16} << 20;
constexpr UINT kShiftJis = 932;

}  // namespace

DWORD LibFile::Open(const std::wstring& path) {
  Close();
  handle_.reset(
      CreateFileW(ApiPath(path).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  failed_ = !handle_;
  return failed_ ? GetLastError() : ERROR_SUCCESS;
}

void LibFile::Close() {
  handle_.reset();
  failed_ = false;
}

DWORD LibReadFile::Open(const std::wstring& path) {
  if (const DWORD error = LibFile::Open(path)) return error;
  LARGE_INTEGER size{};
  DWORD read = 0;
  failed_ = !GetFileSizeEx(handle_.get(), &size);
  if (failed_) return GetLastError();
  failed_ = size.QuadPart > kLargestText;
  if (failed_) return ERROR_FILE_TOO_LARGE;
  buffer_.resize(static_cast<std::size_t>(size.QuadPart));
  failed_ = !ReadFile(handle_.get(), buffer_.data(), static_cast<DWORD>(buffer_.size()), &read, nullptr);
  if (failed_) return GetLastError();
  const std::string_view file(reinterpret_cast<const char*>(buffer_.data()), read);
  encoding_ = DetectEncoding(file, charsetRule_);
  rest_ = SkipByteOrderMark(file);
  return ERROR_SUCCESS;
}

void LibReadFile::Close() {
  LibFile::Close();
  rest_ = {};
  buffer_ = {};
}

bool LibReadFile::ReadLine(std::wstring& line) {
  std::string_view bytes;
  if (!CutLine(rest_, bytes)) return false;
  line = Widen(bytes, encoding_ == TextEncoding::Utf8 ? CP_UTF8 : kShiftJis);
  line.resize(std::wcslen(line.c_str()));  // half a character may have become a zero
  return true;
}

bool ParseTextFile(const std::wstring& path, CharsetRule rule, const std::function<void(const LineSource&)>& parse) {
  LibReadFile file(rule);
  if (file.Open(path) != ERROR_SUCCESS) return false;
  parse([&file](std::wstring& line) { return file.ReadLine(line); });
  return true;
}
