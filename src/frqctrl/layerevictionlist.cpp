#include "frqctrl/layerevictionlist.h"

#include <algorithm>

#include "frqctrl/frqctrlmessages.h"

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
