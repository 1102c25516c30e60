// JournalReplay brings the content of a journal back into a document: maps, edited marks and history as they were when
// it broke off.
//
// It stands apart from the document, whose friend it is: it goes through the changes once more with values that are
// known, where the document itself would look at the maps before it changes them.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "document/document.h"
#include "document/journalfile.h"

struct RestoreReport {
  enum class Reason {
    Gone,        // there is no such syllable here, or no map of it
    Unreadable,  // the map cannot be read, or memory does not hold its changes
    Changed,     // somebody else has written the map meanwhile
  };
  struct Untouched {
    std::wstring Path;  // of the wave
    Reason Why;
  };

  int Recovered = 0;              // syllables that are edited again
  std::vector<Untouched> Others;  // syllables that were edited and are left as their files have them
};

class JournalReplay {
 public:
  // `document` has just opened the folder of the journal, with the same kind of maps, and nobody has edited yet.
  explicit JournalReplay(Document& document) : document_(document) {}

  // Runs under the document's lock as one call. The document's own journal is told it all as if it happened now.
  RestoreReport Run(JournalContent content);

  // The waves of the edited syllables whose maps are as the journal has left them. `stampOf` gives the stamp of a
  // wave's map, `imageOf` its ImageHash, which is asked for where the stamp is another one.
  using NumberOf = std::function<std::uint64_t(const std::wstring& wave)>;
  static std::vector<std::wstring> UnchangedOf(const JournalContent& content, const NumberOf& stampOf,
                                               const NumberOf& imageOf);

 private:
  struct Syllable {
    int Index = -1;  // in the document; beyond all of its own for a syllable that is not there
    std::wstring Path = {};
    // Stamps of the file as it was read or saved last, and as failed saves have left it since; it must have one of
    // them.
    std::vector<std::uint64_t> Stamps = {};
    std::uint64_t Image = 0;  // of the file as read or saved last, 0 if it could not be read
    bool WasEdited = false;   // at the end of the journal
    bool IsLoaded = false;
    bool IsFitting = true;    // all changes are of a map of its size
  };

  static std::map<int, Syllable> Collect(const std::vector<JournalRecord>& records);
  void Place();
  void Load();
  void Apply(JournalRecord& record);
  void ApplyRead(Syllable& syllable);
  void ApplySaved(Syllable& syllable, bool whole);
  void ApplyStep(Step step);
  void ApplyMove(bool redo);
  void ApplyChange(const MapChange& change, bool redo);
  void Settle();
  std::optional<RestoreReport::Reason> ReasonAgainst(const Syllable& syllable);
  void LeaveAlone(int index);

  Document& document_;
  std::map<int, Syllable> syllables_;  // by their index in the journal
  std::map<int, Syllable*> byIndex_;   // by their index in the document
  std::optional<Step> stroke_;         // the one that was open
  RestoreReport report_;
};
