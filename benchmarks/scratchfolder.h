// A folder of a benchmark's own in the folder for temporary files, gone with the object.
#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <system_error>

class ScratchFolder {
 public:
  ScratchFolder() {
    std::error_code error;
    const std::wstring name = L"marlit_bench_" + std::to_wstring(GetCurrentProcessId());
    path_ = std::filesystem::temp_directory_path(error) / name;
    std::filesystem::create_directories(path_, error);
  }
  ~ScratchFolder() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  std::wstring PathOf(const std::wstring& name) const { return (path_ / name).wstring(); }

 private:
  std::filesystem::path path_;
};
