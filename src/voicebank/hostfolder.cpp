#include "voicebank/hostfolder.h"

#include <windows.h>
#include <shlobj.h>
#include <shlwapi.h>

std::wstring AssociatedHostFolder() {
  wchar_t path[MAX_PATH + 16] = L"";
  DWORD size = ARRAYSIZE(path);
  const HRESULT found = AssocQueryStringW(ASSOCF_NOTRUNCATE, ASSOCSTR_EXECUTABLE, L".ust", L"open", path, &size);
  if (FAILED(found) || path[0] == 0) return {};
  PathRemoveFileSpecW(path);
  return path;
}

std::wstring FindHostFolder() {
  const std::wstring associated = AssociatedHostFolder();
  if (!associated.empty()) return associated;
  wchar_t programs[MAX_PATH] = L"";
  SHGetFolderPathW(nullptr, CSIDL_PROGRAM_FILES, nullptr, SHGFP_TYPE_CURRENT, programs);
  PathAppendW(programs, L"UTAU");
  return programs;
}
