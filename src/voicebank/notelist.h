// UtauCommon::NOTE and NOTELIST: the sections of the file that the host hands to a plug-in, and of its project files,
// which share one grammar. Portable but for NOTELIST::Load.
#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <string>

#include "voicebank/textlines.h"

namespace UtauCommon {

// The types of sections, by their names.
enum NoteType : std::int32_t {
  NoteTypeOther = 0,  // no name, or one that is not known
  NoteTypeVersion = 1,
  NoteTypeSetting = 2,
  NoteTypePrev = 3,
  NoteTypeNumbered = 4,  // "#0012"
  NoteTypeNext = 5,
  NoteTypeTrackEnd = 6,
  NoteTypeInsert = 7,
  NoteTypeDelete = 8,
};

// One section: its key=value lines.
class NOTE {
 public:
  std::map<std::wstring, std::wstring> entries;  // the section's own name stands under the key "[]"
  std::int32_t position = 0;                     // lengths of the counted notes before this one, if it is counted
  std::int32_t index = 0;                        // running number of a counted note, 0 for the others
  NOTE* prev = nullptr;
  NOTE* next = nullptr;

  NoteType GetType() const;
  // Whether the section takes time in the song and has a number, as all notes do, also the inserted ones and those on
  // either side of the selection.
  bool IsCounted() const;

  // Empty if there is no such key.
  std::wstring GetValue(const std::wstring& key) const;
  std::wstring GetLyric() const { return GetValue(L"Lyric"); }
  std::wstring GetAlias() const { return GetValue(L"@alias"); }
  // The length in ticks, a quarter note being 480; 0 for a text that is no number.
  std::int32_t GetLength() const;
};

class NOTELIST {
 public:
  NOTELIST() = default;
  NOTELIST(const NOTELIST&) = delete;  // the notes are linked to each other
  NOTELIST& operator=(const NOTELIST&) = delete;

  std::list<NOTE> notes;  // in the order of the file
  std::wstring path;      // of the file that was loaded last

  // Always 0: a file that cannot be read leaves an empty list.
  int Load(const std::wstring& file);
  // Replaces the content by these lines.
  void Parse(const LineSource& next);
  void Clear() { notes.clear(); }

  // The first section of the kind; null if there is none.
  const NOTE* FindSetting() const { return FindFirst(NoteTypeSetting); }
  const NOTE* FindFirstNumbered() const { return FindFirst(NoteTypeNumbered); }
  // A value of the settings, empty if there are none.
  std::wstring GetSetting(const std::wstring& key) const;
  std::wstring GetVoiceDir() const { return GetSetting(L"VoiceDir"); }

 private:
  const NOTE* FindFirst(NoteType type) const;
  void ReadSections(const LineSource& next);
  void SetPositions();
  void LinkAndNumber();
};

}  // namespace UtauCommon
