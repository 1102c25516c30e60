// SharedKeys: accelerators of another window that also act in a dialog of this thread.
//
// A modal dialog runs in the system's own message loop, which translates no accelerators. A hook of its thread looks at
// the keys that come by, and posts what they stand for to the window that owns the commands.
#pragma once

#include <windows.h>

#include <vector>

class SharedKeys {
 public:
  SharedKeys() = default;
  ~SharedKeys() { Stop(); }
  SharedKeys(const SharedKeys&) = delete;
  SharedKeys& operator=(const SharedKeys&) = delete;

  // To be called on the thread of `window`, once it is there and before it goes. `accelerators` is a resource of this
  // program. A target gets no command that is grey in its menu, and none while it takes no input, as under a box.
  void Start(HWND window, HWND target, int accelerators);
  void Stop();

 private:
  static LRESULT CALLBACK Filter(int code, WPARAM wParam, LPARAM lParam);
  bool Take(const MSG& message) const;

  HWND window_ = nullptr;
  HWND target_ = nullptr;
  HHOOK hook_ = nullptr;
  std::vector<ACCEL> keys_;
};
