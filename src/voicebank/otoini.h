// UtauCommon::OTOINI: the syllables of a voicebank with their aliases, by which the host's notes find their waves.
// Portable but for OTOINI::Load.
#pragma once

#include <list>
#include <string>
#include <unordered_map>

#include "voicebank/notelist.h"
#include "voicebank/textlines.h"

namespace UtauCommon {

// One line of oto.ini: wave=alias,offset,consonant,cutoff,preutterance,overlap
struct OTOENTRY {
  std::wstring subfolder;  // of the voicebank; empty for the voicebank's own folder
  std::wstring wave;
  std::wstring alias;
  double offset = 0.0;  // [ms], like all that follow
  double consonant = 0.0;
  double cutoff = 0.0;
  double preutterance = 0.0;
  double overlap = 0.0;
};

class OTOINI {
 public:
  OTOINI() = default;
  OTOINI(const OTOINI&) = delete;
  OTOINI& operator=(const OTOINI&) = delete;

  std::list<OTOENTRY> entries;  // in the order of reading; duplicates are kept, the first one is found
  std::wstring baseFolder;      // the voicebank
  std::wstring fileName;        // "oto.ini" unless Load was given a file
  std::wstring path;            // of the voicebank's own file, read or not

  // Reads the file of a voicebank, given its folder or the file itself, and those of the folders directly in it. -1 if
  // the voicebank's own cannot be read.
  int Load(const std::wstring& folderOrFile);
  // Adds the entries of one file, to a million in all. A line that is none is dropped.
  void Parse(const LineSource& next, const std::wstring& subfolder);
  // Adds an entry behind those that are there.
  void Add(OTOENTRY entry);
  void Clear();

  // The entry with that alias, or else with that name of its wave in the voicebank, without extension; null for an
  // unknown or empty text.
  const OTOENTRY* Find(const std::wstring& text) const;
  // The full path of the wave that Find finds, empty for none. The wave need not exist.
  std::wstring ResolveWavePath(const std::wstring& text) const;

 private:
  // A hundred times a large voicebank: what goes beyond it is no voicebank, and would take the memory.
  static constexpr std::size_t kMostEntries = 1000000;

  int ReadFile(const std::wstring& file, const std::wstring& subfolder);

  // The first entry of each alias, and of each name of a wave without its extension. A host file asks for every note.
  std::unordered_map<std::wstring, const OTOENTRY*> byAlias_;
  std::unordered_map<std::wstring, const OTOENTRY*> byName_;
};

}  // namespace UtauCommon

// The wave of a note, by its alias, or its lyric if it has none.
std::wstring ResolveNoteWavePath(const UtauCommon::NOTE& note, const UtauCommon::OTOINI& otoIni);
