// Gesture: a change that a user would take back at once, by which a menu names it.
#pragma once

#include <cstdint>

// Gestures in the order of their names in the string table.
enum class Gesture : std::uint8_t {
  Stroke,
  Erase,
  DragKey,
  Flatten,
  SetFrequency,
  Triple,
  Double,
  Unvoice,
  Halve,
  Third,
  Interpolate,
  KeyFromSelection,
  TypeKey,
  ReloadSelection,
  Reload,
  ReloadAll,
  Modify,
  Ignore,
  ModifyAll,
  IgnoreAll,
  PasteCurve,
  PasteShape,
  Reread,
};

inline constexpr int kGestureCount = static_cast<int>(Gesture::Reread) + 1;
