// LayerEvictionList: holds down the number of layers that the thumbnails keep.
//
// Used on the thread of its thumbnails.
#pragma once

#include <windows.h>

#include <cstddef>
#include <list>

class LayerEvictionList {
 public:
  LayerEvictionList();
  ~LayerEvictionList();
  LayerEvictionList(const LayerEvictionList&) = delete;
  LayerEvictionList& operator=(const LayerEvictionList&) = delete;

  // Whether a pointer leads to a list that lives. Any thread may ask, of any pointer: it is not followed.
  static bool IsOne(const LayerEvictionList* list);

  // Enters a control that has built its layer, if it is not in the list; the order is that of the first arrival. Once
  // there are more than Capacity, the oldest EvictCount drop theirs. A control on the screen builds it again with its
  // next paint.
  void Add(HWND control);
  // Takes out a control that goes; one that is not in the list does nothing.
  void Remove(HWND control);

  std::size_t Count() const { return controls_.size(); }

  static constexpr std::size_t Capacity = 1000;
  static constexpr std::size_t EvictCount = 100;

 private:
  std::list<HWND> controls_;
};
