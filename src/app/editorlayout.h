// EditorLayout: where the controls of the editor window stand when its size changes, and its least size.
//
// Only the frame list, the table and the flat buttons move. The distances are those of the window as it was made.
#pragma once

#include <windows.h>

class EditorLayout {
 public:
  // The size that the window has now is its least size from here on.
  void Remember(HWND dialog);
  // The frame list grows downward, the table to the right and downward, and the flat buttons go with the bottom edge.
  void Arrange(HWND dialog, int width, int height) const;
  POINT LeastSize() const { return leastSize_; }

 private:
  POINT leastSize_{};
  int bottomMargin_ = 0;  // from the frame list to the bottom of the window
};
