#include "frqctrl/layerevictionlist.h"

#include <algorithm>
#include <mutex>
#include <set>

#include "frqctrl/frqctrlmessages.h"

namespace {

std::mutex listsLock;
std::set<const LayerEvictionList*> lists;  // the lists that live

}  // namespace

LayerEvictionList::LayerEvictionList() {
  const std::lock_guard locked(listsLock);
  lists.insert(this);
}

LayerEvictionList::~LayerEvictionList() {
  const std::lock_guard locked(listsLock);
  lists.erase(this);
}

bool LayerEvictionList::IsOne(const LayerEvictionList* list) {
  const std::lock_guard locked(listsLock);
  return lists.contains(list);
}

void LayerEvictionList::Add(HWND control) {
  if (std::ranges::find(controls_, control) != controls_.end()) return;
  controls_.push_back(control);
  if (controls_.size() <= Capacity) return;
  for (std::size_t i = 0; i < EvictCount; ++i) {
    const HWND oldest = controls_.front();
    controls_.pop_front();
    FrqCtrlSender(oldest).EvictLayer();
  }
}

void LayerEvictionList::Remove(HWND control) {
  controls_.remove(control);
}
