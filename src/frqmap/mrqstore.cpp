#include "frqmap/mrqstore.h"

#include <shlwapi.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <mutex>
#include <string_view>
#include <utility>

#include "frqmap/mrqstream.h"

namespace {

using Lock = std::lock_guard<CriticalSection>;
using PathBuffer = std::array<wchar_t, MAX_PATH>;

// Empty if the path becomes too long.
std::wstring Combined(const std::wstring& folder, const std::wstring& name) {
  PathBuffer path{};
  return PathCombineW(path.data(), folder.c_str(), name.c_str()) ? path.data() : L"";
}

std::wstring MrqPathIn(const std::wstring& folder) {
  return Combined(folder, L"desc.mrq");
}

std::wstring MrqPathOf(const std::wstring& key) {
  std::wstring folder = key;
  PathRemoveFileSpecW(folder.data());
  return MrqPathIn(folder.c_str());
}

// The name in the file; what stands behind a last dot of the key is lost on the way.
std::u16string NameOf(const std::wstring& key) {
  PathBuffer name{};
  lstrcpynW(name.data(), PathFindFileNameW(key.c_str()), static_cast<int>(name.size()));
  PathRenameExtensionW(name.data(), L".wav");
  const std::wstring_view wide(name.data());
  return std::u16string(wide.begin(), wide.end());
}

// Empty if the path becomes too long.
std::wstring KeyOf(const std::wstring& folder, const std::u16string& name) {
  std::wstring key = Combined(folder, std::wstring(name.begin(), name.end()));
  PathRemoveExtensionW(key.data());
  return key.c_str();
}

// A key that ends like a name with an extension names the file itself that is deleted here.
void DeleteAnalysisOf(const std::wstring& key) {
  PathBuffer path{};
  lstrcpynW(path.data(), key.c_str(), static_cast<int>(path.size()));
  PathAddExtensionW(path.data(), L".wav.llsm");
  DeleteFileW(path.data());
}

}  // namespace

std::int32_t MrqStore::PresentTime() {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(_time64(nullptr)));
}

int MrqStore::LoadFolder(const std::wstring& folder) {
  if (std::optional<MrqFile> file = OpenMrqFile(MrqPathIn(folder), MrqMode::Read)) {
    ReadAllMrqEntries(*file, [&](const std::u16string& name, MrqEntry&& entry) {
      const std::wstring key = KeyOf(folder, name);
      if (!key.empty()) SetEntry(key, std::move(entry));
    });
  }
  EnterFolder(folder);
  return 0;
}

int MrqStore::AddFolder(const std::wstring& folder) {
  if (HasFolder(folder) || !OpenMrqFile(MrqPathIn(folder), MrqMode::Create)) return -1;
  EnterFolder(folder);
  return 0;
}

bool MrqStore::HasFolder(const std::wstring& folder) const {
  const Lock lock(FoldersLock);
  return std::ranges::find(Folders, folder) != Folders.end();
}

void MrqStore::EnterFolder(const std::wstring& folder) {
  const Lock lock(FoldersLock);
  if (!HasFolder(folder)) Folders.push_back(folder);
}

std::optional<MrqEntry> MrqStore::Find(const std::wstring& key) const {
  const Lock lock(EntriesLock);
  const auto found = Entries.find(key);
  return found == Entries.end() ? std::nullopt : std::optional(found->second);
}

int MrqStore::SetEntry(const std::wstring& key, MrqEntry entry) {
  const Lock lock(EntriesLock);
  Entries.insert_or_assign(key, std::move(entry));
  return 0;
}

int MrqStore::WriteEntry(const std::wstring& key) {
  const std::optional<MrqEntry> entry = Find(key);
  return entry ? Write(key, *entry) : -1;
}

int MrqStore::SaveEntry(const std::wstring& key, const MrqEntry& entry) {
  SetEntry(key, entry);
  return Write(key, entry);
}

int MrqStore::Write(const std::wstring& key, const MrqEntry& entry) {
  const Lock lock(FileLock);
  std::optional<MrqFile> file = OpenMrqFile(MrqPathOf(key), MrqMode::Patch);
  return file && WriteMrqEntry(*file, NameOf(key), entry, Now()) ? 0 : -1;
}

int MrqStore::RemoveEntry(const std::wstring& key) {
  {
    const Lock lock(EntriesLock);
    Entries.erase(key);
  }
  KillInFile(key);
  DeleteAnalysisOf(key);
  return 0;
}

void MrqStore::KillInFile(const std::wstring& key) {
  const Lock lock(FileLock);
  std::optional<MrqFile> file = OpenMrqFile(MrqPathOf(key), MrqMode::Patch);
  if (!file) return;
  if (const std::optional<MrqHead> head = FindMrqEntry(*file, NameOf(key))) KillMrqEntry(*file, *head);
}

void MrqStore::Reload() {
  {
    const Lock lock(EntriesLock);
    Entries.clear();
  }
  const Lock lock(FoldersLock);
  for (const std::wstring& folder : Folders) LoadFolder(folder);
}

void MrqStore::Clear() {
  {
    const Lock lock(EntriesLock);
    Entries.clear();
  }
  const Lock lock(FoldersLock);
  Folders.clear();
}

void MrqStore::CompactFiles() {
  const Lock folders(FoldersLock);
  for (const std::wstring& folder : Folders) {
    const Lock file(FileLock);
    CompactMrqFile(MrqPathIn(folder), Now());
  }
}
