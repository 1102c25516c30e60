#include "document/history.h"

#include <utility>

void History::Add(Step step) {
  ClearUndone();
  const std::size_t bytes = step.Bytes();
  done_.push_back(std::move(step));
  bytes_ += bytes;
  while (bytes_ > kMostBytes) {
    bytes_ -= done_.front().Bytes();
    done_.pop_front();
  }
}

void History::MoveToUndone() {
  undone_.push_back(std::move(done_.back()));
  done_.pop_back();
}

void History::MoveToDone() {
  done_.push_back(std::move(undone_.back()));
  undone_.pop_back();
}

void History::DropEntry(int entry) {
  DropEntryIn(done_, entry);
  DropEntryIn(undone_, entry);
}

void History::DropEntryIn(Steps& steps, int entry) {
  for (Step& step : steps) {
    const std::size_t before = step.Bytes();
    if (std::erase_if(step.Maps, [entry](const MapChange& change) { return change.Entry() == entry; }) == 0) continue;
    bytes_ -= before;
    if (!step.Maps.empty()) bytes_ += step.Bytes();
  }
  std::erase_if(steps, [](const Step& step) { return step.Maps.empty(); });
}

void History::Clear() {
  done_.clear();
  undone_.clear();
  bytes_ = 0;
}

void History::ClearUndone() {
  for (const Step& step : undone_) bytes_ -= step.Bytes();
  undone_.clear();
}
