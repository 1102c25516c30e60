// The system's folder picker.
#pragma once

#include <windows.h>

#include <string>

// Gives 0 and the full path of the folder that the user picked, or -1.
int BrowseForFolder(HWND owner, std::wstring& out);
