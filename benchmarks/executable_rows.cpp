// The program as users copy it: one file, which is to stay small.
#include <windows.h>

#include <array>
#include <filesystem>
#include <system_error>

#include "measuring.h"
#include "rows.h"

namespace {

constexpr double kMegabyte = 1024.0 * 1024.0;
constexpr double kSmallMegabytes = 3.0;

// The folder of this very program, which is that of all we build.
std::filesystem::path ProgramFolder() {
  std::array<wchar_t, MAX_PATH> path{};
  GetModuleFileNameW(nullptr, path.data(), MAX_PATH);
  return std::filesystem::path(path.data()).parent_path();
}

class ProgramSize : public Work {
 public:
  double Measured() override {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(ProgramFolder() / "marlit.exe", error);
    Require(!error, "marlit.exe is not there");
    return static_cast<double>(size) / kMegabyte;
  }
  double Yardstick() override { return kSmallMegabytes; }
};

}  // namespace

std::vector<Row> ExecutableRows() {
  return {RowOf<ProgramSize>("program_size", "MB", 1.0)};
}
