#include "document/history.h"

#include <utility>

void History::Add(Step step) {
  ClearUndone();
  done_.push_back(std::move(step));
  Count(done_.back(), 1);
  while (bytes_ > kMostBytes) {
    Count(done_.front(), -1);
    done_.pop_front();
  }
}

void History::Count(const Step& step, int sign) {
  bytes_ += static_cast<std::size_t>(sign) * step.Bytes();
  for (const MapChange& change : step.Maps) {
    const auto count = changes_.try_emplace(change.Entry()).first;
    if ((count->second += sign) == 0) changes_.erase(count);
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

bool History::DropEntry(int entry) {
  if (!changes_.contains(entry)) return false;
  DropEntryIn(done_, entry);
  DropEntryIn(undone_, entry);
  changes_.erase(entry);
  return true;
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
  changes_.clear();
  bytes_ = 0;
}

void History::ClearUndone() {
  for (const Step& step : undone_) Count(step, -1);
  undone_.clear();
}
