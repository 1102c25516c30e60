// The file that the host hands over as the program's argument when it starts the program as a plug-in.
#pragma once

#include <string>

// Whether a file begins as the host's plug-in files do: with the section of its version or of its settings. Anything
// else, also with a mark or a blank ahead, is a plain file to the program.
bool IsPluginFile(const std::wstring& path);

// Overwrites the plug-in file, which is all that the host is told on leaving: it is empty if nothing was saved, and
// holds a word that is no note if something was. A file that cannot be written is left alone.
void AnswerHost(const std::wstring& path, bool saved);
