// Document: the voicebank in memory. It owns the syllables with their maps, and is the only one that writes a map,
// changes an edited mark, or copies one map over another; windows show what it tells them (documentlistener.h).
//
// Any thread may call it. One lock is held for the time of a call; what has changed is told when the outermost holder
// lets go, so that nothing is ever sent under it. Who reads a map over more than one call, as a paint does, holds the
// lock itself (std::lock_guard) and sends nothing meanwhile. A pointer to a map holds until Open puts other syllables
// in place and gives the old ones back.
//
// Sources: document.cpp is the entries and the lock, document_edits.cpp gestures, strokes and the history,
// document_files.cpp loading, saving and reloading, document_marks.cpp the marks of the check.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "document/documentfiles.h"
#include "document/documentjournal.h"
#include "document/documentlistener.h"
#include "document/gesture.h"
#include "document/recorder.h"
#include "document/syllable.h"

using SyllableEntries = std::vector<std::unique_ptr<SyllableEntry>>;

// What is known of a syllable at a moment.
struct EntryFacts {
  std::wstring Path;
  std::uint32_t FrameEstimate = 0;
  bool HasMap = false;
  bool Edited = false;
  bool Marked = false;
  bool Loaded = false;
  bool Unreadable = false;  // there is a map, and it could not be read when it was tried last
};

// What commands hang on.
struct DocumentState {
  int Entries = 0;
  int Maps = 0;    // syllables that have one
  int Edited = 0;  // syllables that are
  bool CurrentEdited = false;
  int Saved = 0;  // saves that have reached a file since the start
  std::optional<Gesture> Undo;  // what would be undone, and done again
  std::optional<Gesture> Redo;
  int UndoEntry = -1;  // the first syllable that it concerns
  int RedoEntry = -1;
  int StrokeEntry = -1;  // of an open stroke
};

// The two maps of a syllable, null for none.
struct MapPair {
  FrqMap* Map = nullptr;
  FrqMap* Saved = nullptr;
};

// What became of a step that was to be undone or done again.
struct StepResult {
  enum { Nothing, Done, Lost } What = Nothing;  // Lost: a map is no longer what it was, and its steps are dropped
  Gesture Of = Gesture::Stroke;
  int Entry = -1;           // the first syllable that it concerns
  std::vector<int> Frames;  // of that one, those that changed
  int LostEntry = -1;       // of a lost one, the first syllable that had changed; the others were done
};

class Document {
 public:
  explicit Document(DocumentFiles& files) : files_(files) {}

  // Listeners are added before a second thread runs.
  void AddListener(DocumentListener& listener) { listeners_.push_back(&listener); }

  // Who writes down what happens to the maps; null for nobody.
  void SetJournal(DocumentJournal* journal);
  // Tells the journal the open stroke as it is so far. False without one.
  bool TellStroke() const;

  // For std::lock_guard; may be taken again by the thread that holds it.
  void lock();
  void unlock();

  // Puts other syllables in place; there is none current and no history. The old ones, which their reader may need for
  // a moment yet.
  SyllableEntries Open(std::vector<FoundSyllable> found);

  // An index that is none gives empty facts, no maps, false, and changes nothing.
  DocumentState State() const;
  EntryFacts Facts(int index) const;
  MapPair Maps(int index) const;
  // The entry whose working map this is, -1 for none.
  int IndexOf(const FrqMap* map) const;
  int Current() const;
  void SetCurrent(int index);
  // False empties both maps, and the entry is no longer edited.
  void SetHasMap(int index, bool hasMap, std::uint32_t frameEstimate);
  void SetEdited(int index, bool edited, bool oneOfMany = false);

  // Loading. A map that is not there, or cannot be read, is left empty.
  enum class OnFailure { KeepSaved, EmptySaved };
  // True if the map is loaded then.
  bool EnsureLoaded(int index, OnFailure onFailure);
  // Keeps a map that somebody else has read, with the stamp that its file had before. If the entry has one already,
  // `map` becomes a copy of that.
  void Adopt(int index, std::wstring_view path, FrqMap& map, std::uint64_t stamp);
  // False, with an empty target, if no map is loaded.
  bool CopyMap(int index, FrqMap& target) const;

  // The edits go, as a gesture that can be taken back. If the file is no longer what was last read or written, the
  // history of the entry goes with them. 0, or nonzero with the map empty; `clearEdited` clears the mark also then.
  int Reload(int index, OnFailure onFailure, bool clearEdited);
  // The file counts and nothing else: no step, and none of the entry's is left.
  int ReadAfresh(int index, OnFailure onFailure, bool clearEdited);

  // 0, or nonzero with the entry still edited and the system's code in `error`, 0 where no file was touched.
  // kChangedOutside, with nothing written, where another program has given the file another content since it was read
  // or written here, and that is to be refused.
  enum class OutsideChange { Overwrite, Refuse };
  static constexpr int kChangedOutside = -2;
  int Save(int index, bool deleteAnalysis, std::uint32_t& error, OutsideChange change = OutsideChange::Overwrite);
  // The saved map becomes a copy of the working one, whatever the file holds.
  void RenewSaved(int index);
  // Deletes the map file, and with it what is in memory. False if it stayed.
  bool Remove(int index);

  // A change of one entry's map as a gesture, or as a part of the open one. `change` gives the frames that it has set.
  // Where memory does not hold the changed map beside the one before, nothing is changed, here and below.
  void Change(Gesture gesture, int index, const std::function<std::vector<int>(FrqMap&)>& change);
  // No gesture: what is no content of the map, such as the marks of a check.
  void Mark(int index, const std::function<void(FrqMap&)>& mark, bool tell);
  // Takes what the check suggests for the run of marks at a position, or ends the marks; all runs for -1. False for an
  // entry without marks.
  bool ApplyMarks(Gesture gesture, int index, SampleCount position, bool apply);
  void ApplyAllMarks(bool apply);
  bool IsAnyMarked() const;

  // A stroke is a gesture over many calls, from the press of a button to its release. Whatever else comes in between
  // ends it, so that steps stand in the order in which they began.
  void BeginStroke(Gesture gesture, int index);
  bool StrokeChange(int index, const std::function<std::vector<int>(FrqMap&)>& change);
  void EndStroke();

  StepResult Undo() { return StepBack(false); }
  StepResult Redo() { return StepBack(true); }

  // The outermost of these is the gesture; all changes made while it lives are one step. Of one thread, and short: the
  // document is locked meanwhile.
  class Scope {
   public:
    Scope(Document& document, Gesture gesture);
    ~Scope();

   private:
    const std::lock_guard<Document> locked_;
    Document& document_;
    bool outermost_;
  };

 private:
  friend class JournalReplay;

  SyllableEntry* At(int index) const;
  void Tell(EntryChange change);
  bool SetEditedMark(int index, bool edited);
  void SetUnreadable(int index, bool unreadable);
  int LoadPair(int index, OnFailure onFailure);
  void TellRead(int index, bool isClean);
  void CloseStroke();
  StepResult StepBack(bool redo);
  std::vector<int> EntriesLostTo(const Step& step, bool redo);
  void ApplyChange(const MapChange& change, bool redo, bool oneOfMany);

  mutable std::recursive_mutex mutex_;
  int depth_ = 0;  // of the thread that holds the lock
  DocumentFiles& files_;
  std::vector<DocumentListener*> listeners_;
  DocumentJournal* journal_ = nullptr;
  SyllableEntries entries_;
  int current_ = -1;
  int mapCount_ = 0;
  int editedCount_ = 0;
  int savedCount_ = 0;
  Recorder steps_;
  DocumentChanges told_;  // when the lock is let go
};
