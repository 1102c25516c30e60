#include "window/messagebox.h"

#include "base/text.h"
#include "resources/ids.h"

int ShowMessage(HWND owner, const std::wstring& text, UINT style) {
  return MessageBoxW(owner, text.c_str(), LoadResString(IDS_NAME).c_str(), style);
}
