// Balloon: a word to the user without a box: a tool tip in the shape of a balloon at the place that it is about, which
// goes by itself after some seconds, or with the user's next key or click.
//
// A thread shows one at a time, in whichever of its windows: what was said before goes. It never takes the focus, and a
// screen reader says it, as the system tells of each tool tip that comes.
#pragma once

#include <windows.h>

#include <string>

class Balloon {
 public:
  // Shows a balloon at the middle of a window of this thread; it goes with the window that `place` belongs to. Without
  // a title the program's name is the title.
  static void Show(HWND place, const std::wstring& text, const std::wstring& title = {});
  static void Hide();
  // Whether a balloon of this thread stands.
  static bool IsShown();
};
