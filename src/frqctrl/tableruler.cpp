#include "frqctrl/tableruler.h"

namespace {

constexpr int kMovesOfAHand = 2;  // a program puts the mouse at a place at once

}  // namespace

bool TableRuler::OnTick(HWND table) {
  const int before = model_.RulerY;
  POINT mouse{};
  GetCursorPos(&mouse);
  const bool isOver = WindowFromPoint(mouse) == table;
  if (mouse.x != mouse_.x || mouse.y != mouse_.y) ++moves_;
  mouse_ = mouse;
  if (!isOver) moves_ = 0;
  ScreenToClient(table, &mouse);
  const PixelRect& plot = model_.Geometry.PlotRect;
  const bool isShown = moves_ >= kMovesOfAHand && mouse.x >= plot.left && mouse.y >= plot.top && mouse.y < plot.bottom;
  model_.RulerY = isShown ? mouse.y : -1;
  return model_.RulerY != before;
}

void TableRuler::Hide() {
  model_.RulerY = -1;
  moves_ = 0;
}
