#include "recovery/recoveryroot.h"

#include <windows.h>
#include <shlobj.h>

#include "base/path.h"

// The variable first, as whoever starts the program may have set it to another place.
std::wstring RecoveryRoot() {
  wchar_t folder[MAX_PATH + 1] = L"";
  const DWORD length = GetEnvironmentVariableW(L"LOCALAPPDATA", folder, MAX_PATH + 1);
  if (length == 0 || length > MAX_PATH) {
    const HRESULT result = SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, folder);
    if (result != S_OK) return {};
  }
  return PathIn(folder, L"Marlit\\Recovery");
}
