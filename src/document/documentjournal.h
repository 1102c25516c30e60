// DocumentJournal: a document tells its journal all that has to be known to bring its maps, its edited marks and its
// history back.
//
// It is told under the document's lock, in the order in which it happens: an implementation copies what it needs, waits
// for nothing and throws nothing. All that one call of the document tells belongs together.
#pragma once

#include "document/step.h"
#include "document/syllable.h"

class DocumentJournal {
 public:
  virtual ~DocumentJournal() = default;

  // Other syllables are in place; whatever was told before concerns nobody any more.
  virtual void OnOpened() = 0;
  // The file holds the entry's Map now, which is not Loaded where there is none or it could not be read.
  virtual void OnRead(int index, const SyllableEntry& entry) = 0;
  // The file holds the entry's Map now; or, if not `whole`, a save has failed that may have touched the file. The
  // entry's Stamp is that of the file.
  virtual void OnSaved(int index, const SyllableEntry& entry, bool whole) = 0;
  virtual void OnEdited(int index, bool edited) = 0;

  // A step is made, and no step can be done again any more.
  virtual void OnStep(const Step& step) = 0;
  // The next step has been undone, or done again.
  virtual void OnMoved(bool redo) = 0;
  // The entry's changes go out of all steps, and steps without another one go.
  virtual void OnDropped(int index) = 0;
  // All steps go.
  virtual void OnCleared() = 0;

  // A stroke has begun; it has ended, its step comes by OnStep if it has changed anything.
  virtual void OnStroke(bool isOpen) = 0;
  // The open stroke as it is so far. On the thread that asked for it (Document::TellStroke).
  virtual void OnStrokeSoFar(const Step& step) = 0;

  // The end of a call.
  virtual void OnUnlock() = 0;
};
