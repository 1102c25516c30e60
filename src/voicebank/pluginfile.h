// The plug-in file that the host hands over as the program's argument.
#pragma once

#include <string>

// Whether a file is a plug-in file of the host. None is recognised yet, so every file is taken for a wave.
bool IsPluginFile(const std::wstring& path);
