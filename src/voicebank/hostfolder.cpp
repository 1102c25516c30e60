#include "voicebank/hostfolder.h"

#include <windows.h>
#include <shlobj.h>
#include <shlwapi.h>

#include "base/path.h"
#include "base/systempath.h"

std::wstring AssociatedHostFolder() {
  std::wstring path(kLongestPath, L'\0');
  DWORD size = kLongestPath;
  const HRESULT found = AssocQueryStringW(ASSOCF_NOTRUNCATE, ASSOCSTR_EXECUTABLE, L".ust", L"open", path.data(), &size);
  return FAILED(found) ? std::wstring() : FolderOf(path.c_str());
}

std::wstring FindHostFolder() {
  const std::wstring associated = AssociatedHostFolder();
  return associated.empty() ? PathIn(KnownFolder(FOLDERID_ProgramFiles), L"UTAU") : associated;
}
