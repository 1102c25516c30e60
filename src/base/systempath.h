// Paths that the system tells, whatever their length. The buffers of 260 that its calls are usually given would cut
// them.
#pragma once

#include <windows.h>
#include <shtypes.h>

#include <string>

// The full path of one that somebody typed or handed over. A file of exactly that name is meant where there is one,
// with any blank or dot at its end; else the system decides.
std::wstring FullPathOf(const std::wstring& path);

// The path of this program's file.
std::wstring ProgramPath();

// The path of a program or library that is loaded.
std::wstring ModulePath(HMODULE module);

// From now on a library that is loaded by its name alone comes from the program's folder or the system's, and never
// from the folder that is current, which is a voicebank from somewhere as often as not, or from one of the search path.
void SearchLibrariesBesideTheProgram();

// The folder that all temporary files share.
std::wstring TemporaryPath();

// The path of one of the system's known folders; empty if there is none.
std::wstring KnownFolder(const KNOWNFOLDERID& id);

// A variable of the environment, empty if it is not set.
std::wstring EnvironmentText(const wchar_t* name);

// The program's own folder of that name in the user's local data, whether it is there or not; empty if there is no
// place for one. The variable LOCALAPPDATA comes first, as whoever starts the program may have set it to another place.
std::wstring LocalProgramFolder(const wchar_t* name);
