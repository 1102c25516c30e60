#include "driver/mapfiles.h"

#include <windows.h>

#include <cstring>
#include <fstream>

#include "base/handle.h"
#include "samplebank/bank.h"

namespace {

constexpr std::size_t kAverageAt = 12, kHeadSize = 40, kFrameSize = 16;  // a frame: frequency, amplitude

double NumberAt(const Bytes& bytes, std::size_t at) {
  double number = 0.0;
  if (at + sizeof(number) <= bytes.size()) std::memcpy(&number, &bytes[at], sizeof(number));
  return number;
}

}  // namespace

Bytes ReadFile(const std::filesystem::path& file) {
  constexpr DWORD kAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const FileHandle handle(CreateFileW(file.c_str(), GENERIC_READ, kAll, nullptr, OPEN_EXISTING, 0, nullptr));
  Bytes bytes(handle ? GetFileSize(handle.get(), nullptr) : 0);
  DWORD read = 0;
  if (handle) ReadFile(handle.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr);
  bytes.resize(read);
  return bytes;
}

void WriteFile(const std::filesystem::path& file, const Bytes& bytes) {
  std::ofstream(file, std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

Files FilesIn(const std::filesystem::path& folder) {
  Files files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (!entry.is_regular_file()) continue;
    files[entry.path().lexically_relative(folder).generic_wstring()] = ReadFile(entry.path());
  }
  return files;
}

std::wstring ChangedFiles(const Files& before, const Files& after) {
  Files all = before;
  all.insert(after.begin(), after.end());
  std::wstring changed;
  for (const auto& [name, bytes] : all) {
    const auto was = before.find(name), is = after.find(name);
    if (was != before.end() && is != after.end() && was->second == is->second) continue;
    changed += (changed.empty() ? L"" : L" ") + name;
  }
  return changed;
}

void WriteSampleBank(const std::filesystem::path& folder) {
  for (const BankFile& file : MakeSampleBank()) {
    const std::filesystem::path path = folder / std::filesystem::path(file.path);
    std::filesystem::create_directories(path.parent_path());
    WriteFile(path, file.bytes);
  }
}

std::wstring MapNameOf(const std::wstring& wave) {
  return wave.substr(0, wave.size() - 4) + L"_wav.frq";
}

bool MapsAreThere(const std::filesystem::path& folder) {
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    const std::filesystem::path& wave = entry.path();
    if (wave.extension() != L".wav") continue;
    if (!std::filesystem::exists(wave.parent_path() / MapNameOf(wave.filename().wstring()))) return false;
  }
  return true;
}

bool EveryWaveHasAMap(const Files& files) {
  int waves = 0;
  for (const auto& [name, bytes] : files) {
    if (!name.ends_with(L".wav")) continue;
    ++waves;
    const auto map = files.find(MapNameOf(name));
    if (map == files.end() || FrequenciesOf(map->second).empty()) return false;
  }
  return waves > 0;
}

std::vector<double> FrequenciesOf(const Bytes& map) {
  std::vector<double> frequencies;
  for (std::size_t at = kHeadSize; at + kFrameSize <= map.size(); at += kFrameSize) {
    frequencies.push_back(NumberAt(map, at));
  }
  return frequencies;
}

double FrequencyOf(const Bytes& map, std::size_t frame) {
  return NumberAt(map, kHeadSize + kFrameSize * frame);
}

double AverageOf(const Bytes& map) {
  return NumberAt(map, kAverageAt);
}

bool OnlyFramesChanged(const Bytes& before, const Bytes& after, std::size_t first, std::size_t last) {
  if (before.size() != after.size() || before == after) return false;
  for (std::size_t at = 0; at < before.size(); ++at) {
    if (before[at] == after[at]) continue;
    const std::size_t behindHead = at - kHeadSize, frame = behindHead / kFrameSize;
    const bool isFrequency = at >= kHeadSize && behindHead % kFrameSize < sizeof(double);
    if (!isFrequency || frame < first || frame > last) return false;
  }
  return true;
}

void ScaleFrames(const std::filesystem::path& file, std::size_t first, std::size_t count, double factor) {
  Bytes map = ReadFile(file);
  for (std::size_t frame = first; frame < first + count; ++frame) {
    const double scaled = factor * FrequencyOf(map, frame);
    std::memcpy(&map.at(kHeadSize + kFrameSize * frame), &scaled, sizeof(scaled));
  }
  WriteFile(file, map);
}
