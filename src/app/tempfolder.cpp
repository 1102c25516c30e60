#include "app/tempfolder.h"

#include <windows.h>

#include "base/text.h"

void TempFolder::Make() {
  wchar_t folder[MAX_PATH + 1] = L"";
  GetTempPathW(MAX_PATH + 1, folder);
  path_ = folder + FormatText(L"marlit_%d_%d", GetCurrentProcessId(), GetCurrentThreadId());
  CreateDirectoryW(path_.c_str(), nullptr);
}

void TempFolder::Remove() const {
  if (!path_.empty()) RemoveDirectoryW(path_.c_str());
}
