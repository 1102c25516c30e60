#include "frqmap/mrqstore.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "base/path.h"
#include "base/utf16.h"

namespace {

using Lock = std::lock_guard<std::recursive_mutex>;

// The path of a folder's file; empty if it becomes too long.
std::wstring MrqPathIn(const std::wstring& folder) {
  return PathSeenFrom(folder, L"desc.mrq");
}

std::wstring MrqPathOf(const std::wstring& key) {
  return MrqPathIn(FolderOf(key));
}

// The name in the file; the part of the key behind its last dot is lost on the way.
std::u16string NameOf(const std::wstring& key) {
  return Utf16Of(PathWithExtension(FileNameOf(key), L".wav"));
}

// The key of an entry; empty if the path becomes too long, or if the name leads out of the folder: a wave elsewhere
// must not be changed because of this file. Some writers let a zero end the name.
std::wstring KeyOf(const std::wstring& folder, const std::u16string& name) {
  if (!IsPlainMrqName(name)) return {};
  return PathWithoutExtension(PathSeenFrom(folder, WideOf(name.substr(0, name.find(u'\0')))));
}

}  // namespace

std::int32_t MrqStore::PresentTime() {
  const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
  return static_cast<std::int32_t>(std::chrono::floor<std::chrono::seconds>(sinceEpoch).count());
}

int MrqStore::LoadFolder(const std::wstring& folder) {
  if (const auto file = OpenMrqFile(files_, MrqPathIn(folder))) {
    ReadAllMrqEntries(*file, [&](const std::u16string& name, MrqEntry&& entry) {
      const std::wstring key = KeyOf(folder, name);
      if (!key.empty()) SetEntry(key, std::move(entry));
    });
  }
  EnterFolder(folder);
  return 0;
}

int MrqStore::AddFolder(const std::wstring& folder) {
  if (HasFolder(folder)) return -1;
  // The header of a new file comes with its first entry.
  const std::wstring path = MrqPathIn(folder);
  if (!files_.Open(path, FileMode::Read) && !files_.Open(path, FileMode::Patch)) return -1;
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
  return SaveMrqEntry(files_, MrqPathOf(key), NameOf(key), entry, now_()) ? 0 : -1;
}

bool MrqStore::Remove(const std::wstring& key) {
  bool isGone = false;
  {
    const Lock lock(FileLock);
    isGone = RemoveMrqEntry(files_, MrqPathOf(key), NameOf(key));
  }
  if (isGone) {
    const Lock lock(EntriesLock);
    Entries.erase(key);
  }
  // The analysis goes by the wave's whole name: a name that is cut or has another extension is another file's.
  files_.Delete(key + L".wav.llsm");
  return isGone;
}

int MrqStore::RemoveEntry(const std::wstring& key) {
  Remove(key);
  return 0;
}

bool MrqStore::KeepEntry(const std::wstring& key) const {
  return KeepMrqEntry(files_, MrqPathOf(key), NameOf(key));
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

bool MrqStore::CompactFiles() {
  bool areAllWell = true;
  const Lock folders(FoldersLock);
  for (const std::wstring& folder : Folders) {
    const Lock file(FileLock);
    areAllWell = CompactMrqFile(MrqPathIn(folder), now_(), files_) != 0 && areAllWell;
  }
  return areAllWell;
}
