// The screen as a person sees it at a moment, pictures of it or of a piece of it as PNG files, and where on it
// windows are.
#pragma once

#include <windows.h>

#include <cstdint>
#include <filesystem>
#include <vector>

struct Screen {
  SIZE Size{};
  std::vector<std::uint32_t> Pixels;  // row by row from the top

  static Screen Now();
  // The screen when it has stayed the same for a moment; as it is then, where it never does.
  static Screen AtRest();
  // Cut to a rectangle.
  void Save(const std::filesystem::path& file, RECT cut) const;
  void Save(const std::filesystem::path& file) const { Save(file, {0, 0, Size.cx, Size.cy}); }
};

// As many pixels as these are at 96 dots per inch.
int Pixels(int at96);

RECT RectOf(HWND window);
// A place in a window, in pixels of 96 dots per inch from its corner, and in its middle.
POINT PlaceIn(HWND window, int x, int y);
POINT MiddleOf(HWND window);
