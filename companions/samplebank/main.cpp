// make-samplebank FOLDER: writes the sample voicebank out. Exit code 0, 1 if something could not be written, 2 for a
// wrong call.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

#include "bank.h"

namespace {

// The path is told in UTF-8, because in the narrow encoding of the system it may lose characters.
int ReportFailure(const std::filesystem::path& path) {
  const std::u8string name = path.u8string();
  std::fprintf(stderr, "make-samplebank: cannot write %s\n", reinterpret_cast<const char*>(name.c_str()));
  return 1;
}

bool WriteFile(const std::filesystem::path& path, const Bytes& bytes) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  file.close();
  return !file.fail();
}

template <typename Char>
int Run(int argumentCount, Char** arguments) {
  if (argumentCount != 2) {
    std::fputs("usage: make-samplebank FOLDER\n", stderr);
    return 2;
  }
  const std::filesystem::path folder = arguments[1];
  for (const BankFile& file : MakeSampleBank()) {
    const std::filesystem::path path = folder / std::filesystem::path(file.path);
    std::error_code error;
    std::filesystem::create_directories(path.parent_path(), error);
    if (error) return ReportFailure(path.parent_path());
    if (!WriteFile(path, file.bytes)) return ReportFailure(path);
  }
  return 0;
}

}  // namespace

#ifdef _WIN32
int wmain(int argumentCount, wchar_t** arguments) {
  return Run(argumentCount, arguments);
}
#else
int main(int argumentCount, char** arguments) {
  return Run(argumentCount, arguments);
}
#endif
