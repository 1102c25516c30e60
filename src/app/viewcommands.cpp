#include "app/viewcommands.h"

#include "resources/ids.h"

namespace {

void ToggleSpectrum(const FrqCtrlSender& table) {
  table.SetViewMode(table.ViewMode() == 1 ? 0 : 1);
  table.DropLayer();
  table.RepaintNow();
}

void StepBrightness(const FrqCtrlSender& table, int step) {
  table.SetBrightness(table.Brightness() + step);
}

}  // namespace

void ChangeView(const FrqCtrlSender& table, UINT command) {
  switch (command) {
    case ID_VIEW_ZOOMIN: return table.StepZoom(false);
    case ID_VIEW_ZOOMOUT: return table.StepZoom(true);
    case ID_VIEW_FIT: return table.Fit();
    case ID_VIEW_CENTRE: return table.Centre();
    case ID_VIEW_LARGER: return table.ZoomInPlace(false);
    case ID_VIEW_SMALLER: return table.ZoomInPlace(true);
    case ID_VIEW_SPECTRUM: return ToggleSpectrum(table);
    case ID_VIEW_BRIGHTEN: return StepBrightness(table, -1);
    case ID_VIEW_DARKEN: return StepBrightness(table, 1);
    default: return table.SetColorTable(static_cast<int>(command) - ID_VIEW_COLOR_FIRST);
  }
}
