// Paths that the system tells, whatever their length. The buffers of 260 that its calls are usually given would cut
// them.
#pragma once

#include <windows.h>
#include <shtypes.h>

#include <string>

// In full, as a path that somebody typed or handed over names it. What is there under exactly that name is meant, with
// its blank or dot at the end; else it is what the system makes of it.
std::wstring FullPathOf(const std::wstring& path);

// Of this program.
std::wstring ProgramPath();

// Of a program or library that is loaded.
std::wstring ModulePath(HMODULE module);

// A library is loaded by its name alone. From now on it may come from the program's folder and the system's, and never
// from the folder that is current, which is a voicebank from somewhere as often as not, or from one of the search path.
void SearchLibrariesBesideTheProgram();

// The folder that all temporary files share.
std::wstring TemporaryPath();

// Empty if the system has no such folder.
std::wstring KnownFolder(const KNOWNFOLDERID& id);

// A variable of the environment, empty if it is not set.
std::wstring EnvironmentText(const wchar_t* name);

// The program's own folder of that name in the user's local data, whether it is there or not; empty if there is no
// place for one. The variable LOCALAPPDATA comes first, as whoever starts the program may have set it to another place.
std::wstring LocalProgramFolder(const wchar_t* name);
