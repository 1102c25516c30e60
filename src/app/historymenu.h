// HistoryMenu: Undo and Redo at the head of a menu, each named after the gesture that it takes back or does again.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "document/gesture.h"

// The name of a gesture in the menu, in the user's language.
std::wstring GestureName(Gesture gesture);

class HistoryMenu {
 public:
  // Puts both items, and a line below them, at the head of the menu.
  void PutInto(HMENU menu);
  // Without a gesture to undo, or to do again, the bare words stand there.
  void Show(std::optional<Gesture> undo, std::optional<Gesture> redo);

 private:
  HMENU menu_ = nullptr;
  std::optional<Gesture> undo_;  // as shown
  std::optional<Gesture> redo_;
};
