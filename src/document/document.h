// Document: the voicebank in memory. It owns the syllables with their maps, and is the only one that writes a map,
// changes an edited mark, or copies one map over another; windows show what it tells them (documentlistener.h).
//
// Any thread may call it. One lock is held for the time of a call; changes are told when the outermost holder lets go,
// so that nothing is ever sent under it. A reader of a map over more than one call, as a paint is, holds the lock
// itself (std::lock_guard) and sends nothing meanwhile. A pointer to a map holds until Open puts other syllables in
// place and gives the old ones back.
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

// The facts of a syllable at a moment.
struct EntryFacts {
  std::wstring Path;
  std::uint32_t FrameEstimate = 0;
  bool HasMap = false;
  bool Edited = false;
  bool Marked = false;
  bool Loaded = false;
  bool Unreadable = false;  // there is a map, and it could not be read when it was tried last
};

// The state of a document that decides which commands are enabled.
struct DocumentState {
  int Entries = 0;
  int Maps = 0;    // syllables that have a map
  int Edited = 0;  // syllables that are edited
  bool CurrentEdited = false;
  int Saved = 0;  // saves that have reached a file since the start
  std::optional<Gesture> Undo;  // the gestures that would be undone and done again
  std::optional<Gesture> Redo;
  int UndoEntry = -1;  // the first syllable that the gesture concerns
  int RedoEntry = -1;
  int StrokeEntry = -1;  // of an open stroke
};

// The two maps of a syllable, null for none.
struct MapPair {
  FrqMap* Map = nullptr;
  FrqMap* Saved = nullptr;
};

// The result of undoing a step or doing it again.
struct StepResult {
  enum { Nothing, Done, Lost } What = Nothing;  // Lost: a map is no longer what it was, and its steps are dropped
  Gesture Of = Gesture::Stroke;
  int Entry = -1;           // the first syllable that it concerns
  std::vector<int> Frames;  // of that syllable, those that changed
  int LostEntry = -1;       // of a lost step, the first syllable that had changed; the others were done
};

class Document {
 public:
  explicit Document(DocumentFiles& files) : files_(files) {}

  // Listeners are added before a second thread runs.
  void AddListener(DocumentListener& listener) { listeners_.push_back(&listener); }

  // Sets the journal that is told of all changes to the maps; null for none.
  void SetJournal(DocumentJournal* journal);
  // Tells the journal the open stroke as it is so far. False without one.
  bool TellStroke() const;

  // The lock, for std::lock_guard; the thread that holds it may take it again.
  void lock();
  void unlock();

  // Puts other syllables in place; there is none current and no history then. Gives the old ones, which a reader may
  // need for a moment yet.
  SyllableEntries Open(std::vector<FoundSyllable> found);

  // Here and below, an index of no syllable gives empty facts, no maps, false, and changes nothing.
  DocumentState State() const;
  EntryFacts Facts(int index) const;
  MapPair Maps(int index) const;
  // The entry whose working map this is, -1 for none.
  int IndexOf(const FrqMap* map) const;
  int Current() const;
  void SetCurrent(int index);
  // With `hasMap` false both maps become empty, and the entry is no longer edited.
  void SetHasMap(int index, bool hasMap, std::uint32_t frameEstimate);
  void SetEdited(int index, bool edited, bool oneOfMany = false);

  // Loading. A map that is not there, or cannot be read, is left empty.
  enum class OnFailure { KeepSaved, EmptySaved };
  // Loads the map if it is not loaded. True if it is loaded then.
  bool EnsureLoaded(int index, OnFailure onFailure);
  // Keeps a map that somebody else has read, with the stamp that its file had before. If the entry has one already,
  // `map` becomes a copy of that.
  void Adopt(int index, std::wstring_view path, FrqMap& map, std::uint64_t stamp);
  // Copies the map to `target`. False, with an empty target, if no map is loaded.
  bool CopyMap(int index, FrqMap& target) const;

  // Reads the map again: its edits go, as a gesture that can be taken back. If the file has another content than was
  // last read or written, the history of the entry goes with them. 0, or nonzero with the map empty; `clearEdited`
  // clears the edited mark also then.
  int Reload(int index, OnFailure onFailure, bool clearEdited);
  // Reads the map again without a step, and drops all steps of the entry. Results are those of Reload.
  int ReadAfresh(int index, OnFailure onFailure, bool clearEdited);

  // Saves the map. 0, or nonzero with the entry still edited and the system's code in `error`, 0 where no file was
  // touched. kChangedOutside, with nothing written, where another program has given the file another content since it
  // was read or written here, and `change` is to refuse that.
  enum class OutsideChange { Overwrite, Refuse };
  static constexpr int kChangedOutside = -2;
  int Save(int index, bool deleteAnalysis, std::uint32_t& error, OutsideChange change = OutsideChange::Overwrite);
  // The saved map becomes a copy of the working one, whatever the file holds.
  void RenewSaved(int index);
  // Deletes the map file, and with it the maps in memory. False if the file stayed.
  bool Remove(int index);

  // Changes one entry's map as a gesture, or as a part of the open one. `change` gives the frames that it has set.
  // Where memory does not hold the changed map beside the one before, nothing is changed, here and below.
  void Change(Gesture gesture, int index, const std::function<std::vector<int>(FrqMap&)>& change);
  // Changes what is no content of the map, such as the marks of a check, without a gesture.
  void Mark(int index, const std::function<void(FrqMap&)>& mark, bool tell);
  // Takes the check's suggestions for the run of marks at a position, or ends its marks; all runs for -1. False for an
  // entry without marks.
  bool ApplyMarks(Gesture gesture, int index, SampleCount position, bool apply);
  void ApplyAllMarks(bool apply);
  bool IsAnyMarked() const;

  // A stroke is a gesture over many calls, from the press of a button to its release. Any other gesture in between ends
  // it, so that steps stand in the order in which they began.
  void BeginStroke(Gesture gesture, int index);
  bool StrokeChange(int index, const std::function<std::vector<int>(FrqMap&)>& change);
  void EndStroke();

  StepResult Undo() { return StepBack(false); }
  StepResult Redo() { return StepBack(true); }

  // A gesture in a scope: all changes made while the outermost Scope lives are one step. It belongs to one thread and
  // is short, because the document is locked meanwhile.
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
  int depth_ = 0;  // how many times the thread that holds the lock has taken it
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
