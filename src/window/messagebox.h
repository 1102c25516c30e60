// Message boxes with the program's name as their caption.
#pragma once

#include <windows.h>

#include <string>

// The button that ended it.
int ShowMessage(HWND owner, const std::wstring& text, UINT style);
