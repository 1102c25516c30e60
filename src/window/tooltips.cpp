#include "window/tooltips.h"

#include "window/tipwindow.h"

namespace {

constexpr int kWidestText = 320;  // pixels, before it is broken into lines

void SendTool(HWND tip, UINT message, HWND dialog, HWND control, wchar_t* text) {
  TTTOOLINFOW tool{};
  tool.cbSize = TTTOOLINFOW_V1_SIZE;
  tool.uFlags = TTF_IDISHWND;
  tool.hwnd = dialog;
  tool.uId = reinterpret_cast<UINT_PTR>(control);
  tool.lpszText = text;
  SendMessageW(tip, message, 0, reinterpret_cast<LPARAM>(&tool));
}

}  // namespace

void Tooltips::Attach(HWND dialog) {
  dialog_ = dialog;
  tip_ = control_ = nullptr;
  text_.clear();
  GetCursorPos(&mouse_);
}

bool Tooltips::HasMoved() {
  const POINT before = mouse_;
  GetCursorPos(&mouse_);
  return mouse_.x != before.x || mouse_.y != before.y;
}

void Tooltips::Follow(HWND control, UINT message, const std::wstring& text) {
  if (text.empty() && text_.empty()) return;  // as over the table, where moves are many
  const bool isMove = message == WM_MOUSEMOVE;
  if (isMove && (!HasMoved() || IsMouseButtonDown())) return;
  if (isMove && (control != control_ || text != text_)) return Tell(control, text);
  if (!tip_ || text_.empty()) return;
  MSG relayed{control_, message, 0, 0, 0, mouse_};
  SendMessageW(tip_, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&relayed));
}

// Nothing is relayed yet: a mouse that a program puts there asks for nothing, and a user who moves it moves on. There
// is one tool at a time: another text in the same control, as from row to row of a list, is another tool.
void Tooltips::Tell(HWND control, const std::wstring& text) {
  if (tip_ && !text_.empty()) SendTool(tip_, TTM_DELTOOLW, dialog_, control_, nullptr);
  control_ = control;
  text_ = text;
  if (text_.empty()) return;
  if (!tip_) tip_ = CreateTipWindow(dialog_, kWidestText);
  SendTool(tip_, TTM_ADDTOOLW, dialog_, control_, text_.data());
}
