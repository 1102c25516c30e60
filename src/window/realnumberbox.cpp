#include "window/realnumberbox.h"

#include <windows.h>
#include <imm.h>

#include <iterator>

namespace {

// Both the point and the user's own sign count, on any locale.
bool IsDecimalSign(WPARAM character) {
  wchar_t sign[4] = L".";
  GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, sign, static_cast<int>(std::size(sign)));
  return character == L'.' || character == static_cast<WPARAM>(sign[0]);
}

// Control characters pass: they are backspace, and Ctrl+C, Ctrl+V and Ctrl+X as typed.
bool MayBeTyped(WPARAM character) {
  const bool control = character < 0x20;
  const bool digit = character >= L'0' && character <= L'9';
  return control || digit || IsDecimalSign(character);
}

}  // namespace

void TakeNoInputMethod(HWND box) {
  ImmAssociateContext(box, nullptr);
}

void CTextBoxRealNumberCtrl::OnBound() {
  TakeNoInputMethod(Hwnd);
}

LRESULT CTextBoxRealNumberCtrl::OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_CHAR) return Dispatch(window, message, wParam, lParam);
  return CSubclassWindow::OnMessage(window, message, wParam, lParam);
}

LRESULT CTextBoxRealNumberCtrl::OnChar(WPARAM character, UINT low, UINT high) {
  if (!MayBeTyped(character)) return 0;
  return CallPrevious(WM_CHAR, character, MAKELPARAM(low, high));
}
