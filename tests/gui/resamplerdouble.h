// The program with a resampler that does what the test says, see doubles/resampler.
#pragma once

#include <algorithm>
#include <sstream>

#include "base/path.h"
#include "frqmap/mapfiles.h"
#include "frqmap/mrqstore.h"
#include "gui/program.h"

struct DoubleTest : ProgramTest {
  ~DoubleTest() override { Leave(); }  // while the script is there

  // Copies the resampler under a name, which decides its family, and makes it the user's.
  void Install(const std::wstring& name, DWORD workers = 1) {
    std::filesystem::create_directories(Bank());
    std::filesystem::create_directories(folder_.Path(L"program"));
    std::filesystem::copy_file(MARLIT_RESAMPLER_DOUBLE, folder_.Path(L"program\\" + name),
                               std::filesystem::copy_options::overwrite_existing);
    Choose(folder_.Path(L"program\\" + name), workers);
    FrqMap map;
    map.Create(2, FrqTypeFrq);
    map.SetFrequency(0, 440.0);
    folder_.Write(L"program\\map", EncodeFreq0003(map, FrqTypeFrq));
  }
  static void Choose(const std::wstring& resampler, DWORD workers) {
    wchar_t path[MAX_PATH] = L"";
    lstrcpynW(path, resampler.c_str(), MAX_PATH);
    RegWriteValue(L"Resampler", path);
    RegWriteValue(L"CreateFrqMaxCount", workers);
  }
  // The script of every run: "MILLISECONDS EXITCODE WHAT".
  void Script(const wchar_t* script) const { script_.Set(script); }

  std::wstring Bank() const { return folder_.Path(L"bank"); }
  std::wstring Wave(const std::wstring& name) const { return Bank() + L"\\" + name + L".wav"; }
  bool HasFile(const std::wstring& name) const { return FileExists(Bank() + L"\\" + name); }

  // Lines of calls.txt; forgets them.
  std::vector<std::wstring> TakeCalls() const {
    const std::wstring file = folder_.Path(L"program\\calls.txt");
    const Bytes bytes = ReadWholeFile(file).value_or(Bytes());
    DeleteFileW(file.c_str());
    std::wistringstream text(std::wstring(reinterpret_cast<const wchar_t*>(bytes.data()), bytes.size() / 2));
    std::vector<std::wstring> lines;
    for (std::wstring line; std::getline(text, line);) lines.push_back(line);
    return lines;
  }
  static std::ptrdiff_t Starts(const std::vector<std::wstring>& calls) {
    return std::ranges::count_if(calls, [](const std::wstring& line) { return line[0] == L'+'; });
  }
  // Scratch folders of this process.
  static std::vector<std::wstring> Scratches() {
    const std::wstring temp = std::filesystem::temp_directory_path().wstring();
    const std::wstring start = L"marlit_" + std::to_wstring(GetCurrentProcessId()) + L"_";
    std::vector<std::wstring> folders;
    for (const std::wstring& name : NamesIn(temp)) {
      if (name.starts_with(start)) folders.push_back(PathIn(temp, name));
    }
    return folders;
  }
  static int MostAtOnce(const std::vector<std::wstring>& calls) {
    int running = 0, most = 0;
    for (const std::wstring& line : calls) most = std::max(most, running += line[0] == L'+' ? 1 : -1);
    return most;
  }

 private:
  const ScratchVariable script_{L"MARLIT_DOUBLE"};
};
