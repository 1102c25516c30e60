#include "recovery/recoveryroot.h"

#include <windows.h>
#include <shlobj.h>

#include "base/path.h"
#include "base/systempath.h"

// The variable first, as whoever starts the program may have set it to another place.
std::wstring RecoveryRoot() {
  std::wstring folder = EnvironmentText(L"LOCALAPPDATA");
  if (folder.empty()) folder = KnownFolder(FOLDERID_LocalAppData);
  return folder.empty() ? folder : PathIn(folder, L"Marlit\\Recovery");
}
