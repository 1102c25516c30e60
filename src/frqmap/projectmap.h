// Maps of the kind .vs4ufrq, which are projects of the analysis library, as the other kinds need them: without a word
// of the library itself, so that code that only handles maps is portable. Elsewhere than on Windows there is no
// library, and all of this fails.
#pragma once

#include <string>

#include "frqmap/frqmap.h"

// Whether the library can be given this path, of a file that is there or is to be made beside others.
bool CanLibraryOpen(const std::wstring& path);

// FrqMap::Load and Save for this kind. The project's data stay in the map, the file is not held open. A save needs the
// file to be there: it opens the project again, puts the map's control points into it and saves it. The frames as such
// are never saved, so that only edits that reached the project do. A save that fails, also for a point that the library
// refuses, leaves the file as it was and a reason in Disk().LastError.
int LoadVs4ufrq(FrqMap& map, const std::wstring& path);
int SaveVs4ufrq(const FrqMap& map, const std::wstring& path);

// Make the map of another kind beside a project, and a project from such a map of a wave. 0, or the library's result.
// `store` serves .mrq alone.
int MapFromProject(const std::wstring& project, FrqType kind, MrqStore* store);
int ProjectFromMap(const std::wstring& wave, FrqType kind, MrqStore* store);
