// What a journal holds brought back into a document: maps, edited marks and history as they were when it broke off.
//
// Apart from the document, whose friend it is: it goes through what happened once more, with values that are known,
// where the document itself would look at what it changes.
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
    Unreadable,  // the map cannot be read, or memory does not hold what was done to it
    Changed,     // somebody else has written the map meanwhile
  };
  struct Untouched {
    std::wstring Path;  // of the wave
    Reason Why;
  };

  int Recovered = 0;              // syllables that are edited again
  std::vector<Untouched> Others;  // those that were edited and are left as their files have them
};

class JournalReplay {
 public:
  // The document has just opened the folder of the journal, with the same kind of maps, and nobody has edited yet.
  explicit JournalReplay(Document& document) : document_(document) {}

  // All of it under the document's lock, as one call. The document's own journal is told it as if it happened now.
  RestoreReport Run(JournalContent content);

  // The waves of the edited syllables whose maps are as the journal has left them. `stampOf`: of the map of a wave;
  // `imageOf`: its ImageHash, asked where the stamp is another one.
  using NumberOf = std::function<std::uint64_t(const std::wstring& wave)>;
  static std::vector<std::wstring> UnchangedOf(const JournalContent& content, const NumberOf& stampOf,
                                               const NumberOf& imageOf);

 private:
  struct Syllable {
    int Index = -1;  // here; beyond all of them where it is none of them
    std::wstring Path = {};
    // As the file was read or saved last, or as saves have left it that failed since; it must have one of them.
    std::vector<std::uint64_t> Stamps = {};
    std::uint64_t Image = 0;  // as read or saved last, 0 if it could not be read
    bool WasEdited = false;   // at the end
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
  std::map<int, Syllable*> byIndex_;   // by that here
  std::optional<Step> stroke_;         // that was open
  RestoreReport report_;
};
