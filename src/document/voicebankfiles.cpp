#include "document/voicebankfiles.h"

#include <windows.h>

#include <exception>

#include "base/path.h"
#include "frqmap/mapfiles.h"

// The host's syllables may lie in folders that no scan has come through, and so may all of them behind a change of the
// kind.
int VoicebankFiles::Load(FrqMap& map, const std::wstring& wavePath) {
  const FrqType kind = Kind;
  if (kind == FrqTypeMrq) {
    const std::wstring folder = FolderOf(wavePath);
    if (!Store.HasFolder(folder)) Store.LoadFolder(folder);
  }
  return LoadMap(map, wavePath, kind, &Store);
}

// The code is what the file layer left behind. A save that fails before it touches a file leaves none.
int VoicebankFiles::Save(FrqMap& map, const std::wstring& wavePath, std::uint32_t& error) {
  SetLastError(ERROR_SUCCESS);
  try {
    if (SaveMap(map, wavePath, Kind, &Store) == 0) return 0;
    error = GetLastError();
  } catch (const std::exception&) {
    error = ERROR_NOT_ENOUGH_MEMORY;  // a file is made whole in memory first
  }
  return -1;
}

bool VoicebankFiles::Delete(const std::wstring& wavePath) {
  return DeleteMapFile(MapPathFromWaveW(wavePath, Kind), &Store, false);
}

void VoicebankFiles::DeleteAnalysis(const std::wstring& wavePath) {
  DeleteFileW(LlsmPathFromWave(wavePath).c_str());
}
