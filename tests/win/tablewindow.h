// The frequency table control in a real window, with an example map, and pictures of what it shows.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <utility>
#include <vector>

#include "base/note.h"
#include "frqctrl/frqctrl.h"
#include "resources/ids.h"

inline constexpr int kFrameCount = 60;

// A picture in memory that can be drawn into and read, with the same colours on every screen.
struct Picture {
  Picture(int width, int height) : Width(width), Height(height), Dc(CreateCompatibleDC(nullptr)) {
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(info.bmiHeader), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    Section.reset(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, nullptr, nullptr, 0));
    SelectObject(Dc.get(), Section.get());
  }
  COLORREF At(int x, int y) const { return GetPixel(Dc.get(), x, y); }

  int Width, Height;
  Bitmap Section;
  MemoryDc Dc;  // goes first, as the section is selected into it
};

// Voiced but for two gaps with a lone frame between them, frames 32 to 37 without voice though with a pitch, and marks
// with and without a suggestion.
inline FrqMap ExampleMap() {
  FrqMap map;
  map.Create(kFrameCount, FrqTypeFrq);
  map.Loaded = map.HasMarks = true;
  map.Average = NoteToHz(52.37);
  for (int i = 0; i < kFrameCount; ++i) {
    FrqFrame& frame = map.Frames.Own()[static_cast<std::size_t>(i)];
    const bool gap = i == 20 || i == 22;
    frame.Frequency = gap ? 55.0 : NoteToHz(50.2 + 6.0 * std::sin(i * 0.4));
    frame.Voiced = !gap && (i < 32 || i > 37);
    frame.Amplitude = 137.0 * i;
    frame.Mark = i % 9 < 3 ? 1 : 0;
    frame.SuggestedFrequency = i % 9 == 2 ? 0.0 : NoteToHz(57.31);
  }
  return map;
}

// Messages to the parent, the last at the end.
inline std::vector<std::pair<WPARAM, LPARAM>> told;

// The parent's answer.
inline std::function<void()> answer;

inline LRESULT CALLBACK ParentProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_COMMAND) {
    told.emplace_back(wParam, lParam);
    if (answer) answer();
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

struct FrqCtrlTest : testing::Test {
  static void SetUpTestSuite() { RegisterControl<CFrqCtrl>(); }
  FrqCtrlTest() {
    SetWindowLongPtrW(parent_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(ParentProc));
    told.clear();
    ShowWindow(GetDlgItem(control_, IDC_TABLE_VIEW), SW_HIDE);  // it stands over the picture
  }
  ~FrqCtrlTest() override {
    answer = nullptr;
    DestroyWindow(parent_);
  }

  static HWND MakeWindow(const wchar_t* windowClass, DWORD style, int x, int width, HWND parent, INT_PTR id) {
    return CreateWindowW(windowClass, L"", WS_VISIBLE | style, x, 0, width, 330, parent, reinterpret_cast<HMENU>(id),
                         nullptr, nullptr);
  }
  LRESULT Send(UINT message, int wParam, LPARAM lParam = 0) {
    return SendMessageW(control_, message, static_cast<WPARAM>(wParam), lParam);
  }
  void Show(const FrqMap* reference, FrqMap* map) {
    control.SetMaps(reference, map);
    control.RepaintNow();
  }
  // The client area as it stands on the screen.
  Picture Shown() {
    RECT client{};
    GetClientRect(control_, &client);
    Picture picture(client.right, client.bottom);
    const HDC dc = GetDC(control_);
    BitBlt(picture.Dc.get(), 0, 0, client.right, client.bottom, dc, 0, 0, SRCCOPY);
    ReleaseDC(control_, dc);
    return picture;
  }
  int StripWidth() {
    SIZE size{};
    GetTextExtentPoint32W(Picture(1, 1).Dc.get(), L"C0", 2, &size);
    return size.cx;
  }
  FrqMap map_ = ExampleMap();
  FrqMap reference_ = ExampleMap();
  HWND parent_ = MakeWindow(L"STATIC", WS_POPUP, 0, 640, nullptr, 0);
  HWND control_ = MakeWindow(L"FrequencyTableControl", WS_CHILD | WS_HSCROLL | WS_VSCROLL, 0, 500, parent_, 1001);
  HWND sibling_ = MakeWindow(L"STATIC", WS_CHILD, 520, 100, parent_, 1004);
  const FrqCtrlSender control{control_};
};
