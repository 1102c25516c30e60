#include "frqctrl/tabletip.h"

#include <algorithm>
#include <utility>

#include "base/notename.h"
#include "base/text.h"
#include "frqmap/checkmark.h"
#include "resources/ids.h"
#include "window/tipwindow.h"

namespace {

constexpr int kWidestText = 400;  // pixels, before it is broken into lines
constexpr int kBelowMouse = 20;   // clear of the cursors, of which the pencil points to its lower left
constexpr int kBesideMouse = 20;

// A mouse that is put there at once, by a program or with a window that comes up under it, asks for nothing.
constexpr int kMovesOfAHand = 2;

// The system's own delays for tool tips are made of this one.
struct Delays {
  DWORD First = GetDoubleClickTime();
  DWORD Again = First / 5;  // while the mouse goes from place to place
  DWORD Shown = First * 10;
};

TTTOOLINFOW ToolOf(HWND tip, std::wstring& text) {
  return TrackedTool(GetWindow(tip, GW_OWNER), text);
}

std::wstring Format(UINT id, auto... values) {
  return FormatText(LoadResString(id).c_str(), values...);
}

}  // namespace

// Notes beyond those that have a name are told in hertz alone.
std::wstring PitchText(const std::optional<PitchReading>& pitch) {
  if (!pitch) return LoadResString(IDS_READ_NOPITCH);
  const std::wstring name = NoteNameFromNumber(pitch->Note);
  if (name.empty()) return FormatText(L"%.2f Hz", pitch->Hz);
  return Format(IDS_READ_PITCH, Format(IDS_READ_NOTE, name.c_str(), pitch->Cents).c_str(), pitch->Hz);
}

std::wstring TextOfMark(std::uint32_t mark, const std::optional<PitchReading>& suggested) {
  const auto reason = static_cast<std::int32_t>(mark) - CheckMarkFactor;
  const bool isKnown = reason >= 0 && reason <= CheckMarkLast - CheckMarkFactor;
  std::wstring text = LoadResString(isKnown ? IDS_READ_MARK_FIRST + static_cast<UINT>(reason) : IDS_READ_MARKED);
  if (suggested) text += Format(IDS_READ_SUGGESTED, PitchText(suggested).c_str());
  return text;
}

std::wstring TextOf(const TableReading& reading, double samplesPerSecond) {
  std::wstring text = Format(IDS_READ_POINTER, PitchText(reading.Pointer).c_str());
  if (!reading.Frame) return text;
  const FrameReading& frame = *reading.Frame;
  const double seconds = std::max(frame.Position, 0) / samplesPerSecond;
  text += L"\n" + Format(IDS_READ_FRAME, frame.Frame, seconds, PitchText(frame.Pitch).c_str());
  if (frame.Level) text += Format(IDS_READ_LEVEL, *frame.Level);
  if (frame.Mark != 0) text += L"\n" + TextOfMark(frame.Mark, frame.Suggested);
  return text;
}

TableTip::~TableTip() {
  if (tip_) DestroyWindow(tip_);
}

bool TableTip::HasMoved(DWORD now) {
  const POINT before = mouse_;
  GetCursorPos(&mouse_);
  if (mouse_.x == before.x && mouse_.y == before.y) return false;
  movedAt_ = now;
  return true;
}

void TableTip::OnTick(HWND table, const std::function<std::wstring(POINT)>& textAt) {
  const Delays delays;
  const DWORD now = GetTickCount();
  if (HasMoved(now)) {
    if (isShown_) hiddenAt_ = now;
    Hide();
    moves_ = WindowFromPoint(mouse_) == table ? moves_ + 1 : 0;
    isSpent_ = moves_ < kMovesOfAHand || IsMouseButtonDown();
    return;
  }
  if (isShown_ && now - shownAt_ > delays.Shown) Hide();
  if (!isShown_ && (isSpent_ || now - movedAt_ < (now - hiddenAt_ < delays.First ? delays.Again : delays.First)))
    return;
  isSpent_ = true;
  if (WindowFromPoint(mouse_) != table) return Hide();
  POINT point = mouse_;
  ScreenToClient(table, &point);
  const std::wstring text = textAt(point);
  // A change under a resting mouse, as by a step back, is told anew.
  if (text.empty()) return Hide();
  if (!isShown_ || text != text_) Show(table, mouse_, text);
}

void TableTip::Hide() {
  isSpent_ = true;
  if (!std::exchange(isShown_, false)) return;
  TTTOOLINFOW tool = ToolOf(tip_, text_);
  SendMessageW(tip_, TTM_TRACKACTIVATE, FALSE, reinterpret_cast<LPARAM>(&tool));
}

void TableTip::Show(HWND table, POINT mouse, const std::wstring& text) {
  text_ = text;
  if (!tip_) tip_ = CreateTrackedTip(table, kWidestText, text_);
  if (!tip_) return;
  TTTOOLINFOW tool = ToolOf(tip_, text_);
  SendMessageW(tip_, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
  Place(mouse);
  SendMessageW(tip_, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
  if (!std::exchange(isShown_, true)) shownAt_ = GetTickCount();
}

// The tip is below the mouse, or above it where the screen ends: under it, it would take the mouse from the table.
void TableTip::Place(POINT mouse) const {
  std::wstring none;
  const TTTOOLINFOW tool = ToolOf(tip_, none);
  const auto size = static_cast<DWORD>(SendMessageW(tip_, TTM_GETBUBBLESIZE, 0, reinterpret_cast<LPARAM>(&tool)));
  MONITORINFO monitor{};
  monitor.cbSize = sizeof(monitor);
  GetMonitorInfoW(MonitorFromPoint(mouse, MONITOR_DEFAULTTONEAREST), &monitor);
  const int x = std::min<int>(mouse.x + kBesideMouse, monitor.rcWork.right - LOWORD(size));
  const int below = mouse.y + kBelowMouse;
  const int y = below + HIWORD(size) > monitor.rcWork.bottom ? mouse.y - kBelowMouse - HIWORD(size) : below;
  SendMessageW(tip_, TTM_TRACKPOSITION, 0, MAKELPARAM(x, y));
}
