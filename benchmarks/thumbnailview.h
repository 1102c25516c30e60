// The window of the thumbnails, from the command that opens it to what is drawn in it.
#pragma once

#include <windows.h>

#include <algorithm>
#include <vector>

#include "runningprogram.h"

class ThumbnailView {
 public:
  explicit ThumbnailView(const RunningProgram& program) : program_(program) {}

  void Open() const { SendMessageW(program_.ListWindow(), FLM_SHOWTHUMBNAIL, TRUE, 0); }
  void Close() const {
    PostMessageW(Window(), WM_COMMAND, IDCANCEL, 0);
    while (Window()) Sleep(1);
  }
  HWND Window() const { return program_.List().ThumbnailWindow(); }
  std::vector<HWND> InView() const {
    std::vector<HWND> controls;
    const HWND window = Window();
    if (!IsWindowVisible(window)) return controls;
    for (HWND control = nullptr; (control = FindWindowExW(window, control, kClass, nullptr));) {
      if (IsWindowVisible(control)) controls.push_back(control);
    }
    return controls;
  }
  void WaitForPictures() const {
    const auto isPainted = [](HWND control) { return !GetUpdateRect(control, nullptr, FALSE); };
    for (;;) {
      const std::vector<HWND> controls = InView();
      if (!controls.empty() && std::ranges::all_of(controls, isPainted)) return;
    }
  }
  // The first in view is the first of the list.
  void WaitForCurves() const {
    const int last = static_cast<int>(InView().size()) - 1;
    const FrqMap* const map = program_.Maps().Maps(last).Map;
    while (!map->Loaded) Sleep(0);
    SendMessageW(Window(), WM_NULL, 0, 0);  // behind the paint
  }

  static constexpr wchar_t kClass[] = L"FrequencyTableControl";

 private:
  const RunningProgram& program_;
};
