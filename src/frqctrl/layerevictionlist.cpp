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
  if (std::ranges::find(Controls, control) != Controls.end()) return;
  Controls.push_back(control);
  if (Controls.size() <= Capacity) return;
  for (std::size_t i = 0; i < EvictCount; ++i) {
    const HWND oldest = Controls.front();
    Controls.pop_front();
    FrqCtrlSender(oldest).EvictLayer();
  }
}

void LayerEvictionList::Remove(HWND control) {
  Controls.remove(control);
}
