// TableLayer: the lower level of the table's picture, a bitmap that is kept until it is dropped, so that a stroke of
// the mouse costs one copy and one curve.
//
// Among thousands of tables, as thumbnails are, a list holds down how many of them keep one.
#pragma once

#include <windows.h>

#include <functional>

#include "base/handle.h"
#include "frqctrl/pixelbitmap.h"

class LayerEvictionList;

class TableLayer {
 public:
  explicit operator bool() const { return static_cast<bool>(dc_); }

  // The memory of the bitmap stays for the next layer, which is built at the next paint as a rule.
  void Drop() { dc_.reset(); }
  // Drops the layer with its memory.
  void GiveUp();

  // Builds the layer as large as the client area, by drawing into a context compatible with `dc` that has its font.
  // False, with no layer, where the system has no memory for it.
  bool Build(HDC dc, const RECT& client, const std::function<void(HDC, PixelBitmap&)>& draw);
  void CopyTo(HDC dc, const RECT& client) const;

  // The list that is told who has a layer; not owned, null for none. A pointer to no living list is not taken.
  void SetList(LayerEvictionList* list);
  // Other controls may drop theirs in answer.
  void Enter(HWND control) const;
  void Leave(HWND control) const;

 private:
  MemoryDc dc_;          // null: no layer
  PixelBitmap picture_;  // selected into dc_ only while in use
  LayerEvictionList* list_ = nullptr;
};
