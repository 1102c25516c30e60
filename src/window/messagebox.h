// Message boxes with the program's name as their caption.
#pragma once

#include <windows.h>

#include <string>

// Gives the button that ended the box.
int ShowMessage(HWND owner, const std::wstring& text, UINT style);
