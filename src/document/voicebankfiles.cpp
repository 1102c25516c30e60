#include "document/voicebankfiles.h"

#include <windows.h>

#include <exception>

#include "base/filesystem.h"
#include "base/path.h"
#include "base/wordhash.h"
#include "frqmap/mapfiles.h"
#include "frqmap/mrqmap.h"
#include "frqmap/vslib.h"

namespace {

// The time of writing is left out: the store knows it of those entries alone that it has read. Frequencies count as the
// file rounds them.
std::uint64_t StampOf(const MrqEntry& entry) {
  WordHash hash;
  hash.Add(std::uint64_t{static_cast<std::uint32_t>(entry.Hop)});
  hash.Add(std::uint64_t{static_cast<std::uint32_t>(entry.Unedited)});
  hash.Add(std::uint64_t{entry.Frequencies.size()});
  for (const double frequency : entry.Frequencies) hash.Add(static_cast<double>(static_cast<float>(frequency)));
  return hash.Value();
}

std::uint64_t StampOf(const FileFacts& facts) {
  WordHash hash;
  hash.Add(static_cast<std::uint64_t>(facts.Size));
  hash.Add(static_cast<std::uint64_t>(facts.Written));
  return hash.Value();
}

}  // namespace

// The host's syllables may lie in folders that no scan has come through, and so may all syllables after a change of the
// kind.
void VoicebankFiles::EnterFolder(const std::wstring& wavePath) {
  const std::wstring folder = FolderOf(wavePath);
  if (!Store.HasFolder(folder)) Store.LoadFolder(folder);
}

// Another program may have written the file since the store read it, and then it has to be read again, since one file
// holds the maps of many syllables. After a write of our own it has not.
void VoicebankFiles::LookAtFolder(const std::wstring& wavePath, bool isOwnWrite) {
  const std::wstring folder = FolderOf(wavePath);
  const std::lock_guard locked(seenLock_);
  const FileFacts facts = Disk().FactsOf(PathIn(folder, L"desc.mrq")).value_or(FileFacts());
  const auto [seen, isNew] = seen_.try_emplace(folder);
  if (!isNew && seen->second == facts) return;
  if (!isOwnWrite) Store.LoadFolder(folder);
  seen->second = facts;
}

int VoicebankFiles::Load(FrqMap& map, const std::wstring& wavePath) {
  const FrqType kind = Kind;
  if (kind == FrqTypeMrq) EnterFolder(wavePath);
  return LoadMap(map, wavePath, kind, &Store);
}

// The code in `error` is that of the file layer. A save that fails before it touches a file leaves none.
int VoicebankFiles::Save(FrqMap& map, const std::wstring& wavePath, std::uint32_t& error) {
  try {
    const FrqType kind = Kind;
    if (kind == FrqTypeMrq) LookAtFolder(wavePath, false);
    SetLastError(ERROR_SUCCESS);
    if (SaveMap(map, wavePath, kind, &Store) == 0) {
      if (kind == FrqTypeMrq) LookAtFolder(wavePath, true);
      return 0;
    }
    error = GetLastError();
  } catch (const std::exception&) {
    error = ERROR_NOT_ENOUGH_MEMORY;  // a file is made whole in memory first
  }
  return -1;
}

// The stamp of an entry of desc.mrq is one of its content, so that its neighbours may change.
std::uint64_t VoicebankFiles::Stamp(const std::wstring& wavePath) {
  const FrqType kind = Kind;
  const std::wstring mapPath = MapPathFromWaveW(wavePath, kind);
  if (kind == FrqTypeMrq) {
    LookAtFolder(wavePath, false);
    const std::optional<MrqEntry> entry = Store.Find(MrqKey(mapPath));
    return entry ? StampOf(*entry) : 0;
  }
  const std::optional<FileFacts> facts = Disk().FactsOf(mapPath);
  return facts ? StampOf(*facts) : 0;
}

bool VoicebankFiles::Delete(const std::wstring& wavePath) {
  return DeleteMapFile(MapPathFromWaveW(wavePath, Kind), &Store, false);
}

void VoicebankFiles::DeleteAnalysis(const std::wstring& wavePath) {
  Disk().Delete(LlsmPathFromWave(wavePath));
}

// Where nothing is wrong with the file itself, the cause lies outside of it: a name that the library does not get, or
// the library's own opinion of the project.
MapFault VoicebankFiles::FaultOf(const std::wstring& wavePath) const {
  const FrqType kind = Kind;
  const std::wstring mapPath = MapPathFromWaveW(wavePath, kind);
  const MapFault fault = FindMapFault(Disk(), mapPath, kind);
  if (fault.Why != MapFault::None || kind == FrqTypeMrq) return fault;
  if (kind != FrqTypeVs4ufrq) return {MapFault::Foreign};
  if (VsHelper::Shared().Load() != 0) return {MapFault::NoLibrary};
  return {CanLibraryOpen(mapPath) ? MapFault::Foreign : MapFault::NoNarrowPath};
}
