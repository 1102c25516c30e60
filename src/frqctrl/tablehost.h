// TableHost: what the parts of the frequency table ask of the window that holds them.
#pragma once

#include <windows.h>

#include "frqctrl/frqctrlmessages.h"

class MapEditing;

class TableHost {
 public:
  virtual HWND Window() const = 0;
  // All writes to the map and its selection go through it.
  virtual MapEditing& Editing() = 0;

  // Paints at once: the curve alone, or with the layer built anew.
  virtual void Repaint() = 0;
  virtual void Rebuild() = 0;

  // Tells the parent, which may answer by taking the map away: nothing of a map is kept over this.
  virtual void Notify(FrqCtrlNotification code, LPARAM lParam) = 0;
  // Likewise, where the notification brings the control itself along.
  void NotifySelf(FrqCtrlNotification code) { Notify(code, reinterpret_cast<LPARAM>(Window())); }

 protected:
  ~TableHost() = default;
};
