// The analysis library vslib.dll: its loader, and a project that is open in it.
//
// The library is no piece of ours and often not there; without it every operation here fails and nothing else suffers.
// A call in which it raises an exception counts as one that it refuses, and it does not see that project again.
// It takes paths as bytes of the user's code page: a file that these cannot name is refused before anything is opened
// or written, with ERROR_BAD_PATHNAME. Results are 0, -1, or the library's own.
#pragma once

#include <windows.h>

#include <cstdint>
#include <mutex>
#include <string>

#include "frqmap/frqmap.h"
#include "frqmap/projectmap.h"
#include "frqmap/vsproject.h"

// A project that the library has open; 0 is none.
using VsHandle = std::uint32_t;

// The library and its entries, null where one is missing. Loaded once for the process and never changed from then on,
// so that a thread whose Load has succeeded may use them without a lock, and no other may.
class VsHelper {
 public:
  static VsHelper& Shared();
  virtual ~VsHelper();

  // Loads the library if it is not there yet. 0, or the system's error.
  DWORD Load();

  HMODULE Module = nullptr;
  int(WINAPI* VslibCreateProject)(VsHandle* project) = nullptr;
  int(WINAPI* VslibOpenProject)(VsHandle* project, const char* path) = nullptr;
  int(WINAPI* VslibSaveProject)(VsHandle project, const char* path) = nullptr;
  int(WINAPI* VslibDeleteProject)(VsHandle project) = nullptr;
  int(WINAPI* VslibGetProjectInfo)(VsHandle project, VsProjectInfo* info) = nullptr;
  int(WINAPI* VslibGetTrackMaxNum)(VsHandle project, std::int32_t* count) = nullptr;
  int(WINAPI* VslibGetItemMaxNum)(VsHandle project, std::int32_t* count) = nullptr;
  int(WINAPI* VslibAddItemEx)(VsHandle project, const char* wave, std::int32_t* item, std::int32_t lowestNote,
                              std::int32_t semitones, std::int32_t zero) = nullptr;
  int(WINAPI* VslibGetItemInfo)(VsHandle project, std::int32_t item, VsItemInfo* info) = nullptr;
  int(WINAPI* VslibGetCtrlPntInfoEx)(VsHandle project, std::int32_t item, std::int32_t index,
                                     VsControlPoint* point) = nullptr;
  int(WINAPI* VslibSetCtrlPntInfoEx)(VsHandle project, std::int32_t item, std::int32_t index,
                                     const VsControlPoint* point) = nullptr;
  int(WINAPI* SetPrjSaveOption)(VsHandle project, std::int32_t option) = nullptr;

 private:
  VsHelper() = default;
  void ResolveEntries();

  std::mutex loading_;
};

// A project of the library, used by one thread at a time. It is open within an operation only; the data that was read
// stays in the lists.
class CVsLib : public VsProject {
 public:
  VsHandle Handle = 0;

  CVsLib();
  virtual ~CVsLib();
  CVsLib(const CVsLib&) = delete;
  CVsLib& operator=(const CVsLib&) = delete;

  int OpenProject(const std::wstring& path);
  // Opens a project and fills the lists from it.
  int OpenAndRead(const std::wstring& path);
  int SaveProject(const std::wstring& path);
  // Does nothing if no project is open.
  void CloseProject();

  // Fill the lists from the open project, without the items and points that the library refuses to tell. A count of
  // items that it refuses counts as none; a count beyond all reason is -1.
  int ReadItems();
  int ReadControlPoints();

  // Puts the control points into the open project. Always 0: where the library refuses a point, only that item ends.
  int WriteControlPoints();
  // Whether the last WriteControlPoints had a point refused.
  bool WasPointRefused() const { return wasPointRefused_; }

  // Analyses a wave between two notes, the range being in semitones, and saves the project under its map's name: a.wav
  // gives a_wav.vs4ufrq. With `useMap` the wave's map of that kind, if it can be loaded, replaces the analysis. 1 for a
  // path without a dot; a save that fails is not told. (windows.h turns the name into CreateFileW everywhere alike.)
  int CreateFile(const std::wstring& wavePath, int lowestNote, int range, bool useMap, FrqType mapKind,
                 MrqStore* store);

  // Samples a map file onto the control points of the open project.
  int ImportMap(const std::wstring& mapPath, MrqStore* store);

  // Saves a project file as the wave's map of another kind, on a grid of 256 samples: .frq, .frc, .dio or .mrq. A save
  // that fails is not told: callers look for the file.
  int ExportMap(const std::wstring& vsPath, FrqType kind, MrqStore* store);

  // Saves a project file as pitch periods: a_wav.vs4ufrq gives a_wav.pmk.
  int ExportPmk(const std::wstring& vsPath);

 private:
  class Closer;

  template <typename Entry, typename... Arguments>
  int Call(Entry VsHelper::*entry, Arguments... arguments);
  void Begin();
  int KeepIfOpened(int result);
  int ReadProjectInfo();

  const VsHelper* library_;  // null without the library
  bool wasPointRefused_ = false;
  bool hasCrashed_ = false;  // the library, on the project at work
};
