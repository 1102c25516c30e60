#include "frqctrl/tableruler.h"

namespace {

constexpr int kMovesOfAHand = 2;  // a program puts the mouse at a place at once

}  // namespace

bool TableRuler::OnTick(HWND table) {
  const int before = Model.RulerY;
  POINT mouse{};
  GetCursorPos(&mouse);
  const bool isOver = WindowFromPoint(mouse) == table;
  if (mouse.x != Mouse.x || mouse.y != Mouse.y) ++Moves;
  Mouse = mouse;
  if (!isOver) Moves = 0;
  ScreenToClient(table, &mouse);
  const PixelRect& plot = Model.Geometry.PlotRect;
  const bool isShown = Moves >= kMovesOfAHand && mouse.x >= plot.left && mouse.y >= plot.top && mouse.y < plot.bottom;
  Model.RulerY = isShown ? mouse.y : -1;
  return Model.RulerY != before;
}

void TableRuler::Hide() {
  Model.RulerY = -1;
  Moves = 0;
}
