// TableTip: tells of the place under the mouse when the mouse rests over the table: pitch, time, level, and why a frame
// is marked.
//
// It lives on the ticks of the timer that the cursor has anyway, so that a move of the mouse, and a stroke above all,
// costs nothing. The delays are those of the system's tool tips. A move, a press or the wheel takes it away.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "frqctrl/tablereading.h"

// The text about a place. `samplesPerSecond`: of the recording.
std::wstring TextOf(const TableReading& reading, double samplesPerSecond);

// The note with its cents and the frequency, or that there is no pitch.
std::wstring PitchText(const std::optional<PitchReading>& pitch);
// Says why a frame is marked, and what is suggested for it.
std::wstring TextOfMark(std::uint32_t mark, const std::optional<PitchReading>& suggested);

class TableTip {
 public:
  TableTip() = default;
  TableTip(const TableTip&) = delete;
  TableTip& operator=(const TableTip&) = delete;
  ~TableTip();

  // `textAt` is asked with a point in client coordinates; empty text is none.
  void OnTick(HWND table, const std::function<std::wstring(POINT)>& textAt);
  // Hides the tip until the mouse moves again.
  void Hide();

 private:
  bool HasMoved(DWORD now);
  void Show(HWND table, POINT mouse, const std::wstring& text);
  void Place(POINT mouse) const;

  HWND tip_ = nullptr;  // made with the first text
  bool isShown_ = false;
  bool isSpent_ = true;  // told, or not to be told, since the last move
  int moves_ = 0;        // over the table, counted by ticks
  POINT mouse_{};        // at the last tick
  DWORD movedAt_ = 0;    // [ms] as GetTickCount gives it
  DWORD shownAt_ = 0;
  DWORD hiddenAt_ = 0;  // by a move
  std::wstring text_;
};
