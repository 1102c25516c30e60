// The steps of a document, the done ones and the undone ones, within a limit of memory.
//
// It knows steps and no maps: to change a map by a step is the document's business.
#pragma once

#include <cstddef>
#include <deque>
#include <map>

#include "document/step.h"

class History {
 public:
  static constexpr std::size_t kMostBytes = std::size_t{64} << 20;

  // Adds a step; none can be done again any more then. Where the history exceeds the limit the oldest steps go; a
  // single step beyond it leaves none. Throws std::bad_alloc.
  void Add(Step step);

  // The step that is undone next, or done again next; null without one.
  const Step* NextUndo() const { return done_.empty() ? nullptr : &done_.back(); }
  const Step* NextRedo() const { return undone_.empty() ? nullptr : &undone_.back(); }
  // The next step has been undone, or done again. Throws std::bad_alloc.
  void MoveToUndone();
  void MoveToDone();

  // Takes an entry out of all steps; a step without another one goes. False if it was in none.
  bool DropEntry(int entry);
  void Clear();

  std::size_t Bytes() const { return bytes_; }

 private:
  using Steps = std::deque<Step>;

  void DropEntryIn(Steps& steps, int entry);
  void ClearUndone();
  void Count(const Step& step, int sign);

  Steps done_;    // the latest at the end
  Steps undone_;  // the one undone last at the end
  std::map<int, int> changes_;  // number of each entry's changes in all steps: most entries are in none
  std::size_t bytes_ = 0;
};
