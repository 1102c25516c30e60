#include "window/dialogbase.h"

#include <algorithm>

#include "base/text.h"
#include "window/accessiblenames.h"

namespace {

constexpr wchar_t kDialogProperty[] = L"{97C9657A-B5C4-4eae-BE4C-AD2144ACD85E}";

INT_PTR CALLBACK DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  // The message comes once from the system. Any program may send it again, with anything for an object.
  if (message == WM_INITDIALOG && !GetPropW(window, kDialogProperty)) {
    auto* const created = reinterpret_cast<CDlgBase*>(lParam);
    created->Hwnd = window;
    SetPropW(window, kDialogProperty, created);
  }
  auto* const dialog = static_cast<CDlgBase*>(GetPropW(window, kDialogProperty));
  return dialog ? dialog->OnDialogMessage(message, wParam, lParam) : 0;
}

}  // namespace

int CDlgBase::Run(bool modeless) {
  const HWND owner = ParentWindow ? ParentWindow : GetActiveWindow();
  const HINSTANCE module = GetModuleHandleW(nullptr);
  const wchar_t* const dialogTemplate = MAKEINTRESOURCEW(GetTemplateId());
  const auto self = reinterpret_cast<LPARAM>(this);
  Modeless = modeless;
  if (!modeless) {
    const auto result = static_cast<int>(DialogBoxParamW(module, dialogTemplate, owner, DialogProc, self));
    OnDialogEnd();
    return result;
  }
  const HWND window = CreateDialogParamW(module, dialogTemplate, owner, DialogProc, self);
  if (!window) return -1;
  ShowWindow(window, SW_SHOW);
  RunLoop();
  OnDialogEnd();
  return Result;
}

void CDlgBase::RunLoop() {
  MSG message;
  for (;;) {
    const BOOL got = GetMessageW(&message, nullptr, 0, 0);
    if (got == 0 || got == -1) return;
    if (TranslateKey(message) || TranslateAccelerators(message)) continue;
    if (IsDialogMessageW(Hwnd, &message)) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

bool CDlgBase::TranslateAccelerators(MSG& message) {
  const bool isTaken = std::ranges::any_of(
      Accelerators, [&](HACCEL table) { return TranslateAcceleratorW(Hwnd, table, &message) != 0; });
  // Where the system does not see the key that was pressed with Alt, it opens the menu when Alt is let go.
  if (isTaken && message.message == WM_SYSKEYDOWN) {
    DefWindowProcW(Hwnd, WM_SYSKEYDOWN, message.wParam, message.lParam);
  }
  return isTaken;
}

bool CDlgBase::TranslateKey(const MSG&) {
  return false;
}

INT_PTR CDlgBase::OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      if (lParam != reinterpret_cast<LPARAM>(this)) return 0;
      AttachTexts();
      return OnInitDialog(lParam);
    case WM_SETCURSOR: FollowMouse(reinterpret_cast<HWND>(wParam), HIWORD(lParam)); return 0;
    case WM_GETOBJECT: NameControlsOnce(); return 0;
    case WM_MENUSELECT: DispatchMenuSelect(wParam, lParam); return 1;
    case WM_DESTROY:
    case WM_SIZE:
    case WM_ACTIVATE:
    case WM_GETMINMAXINFO:
    case WM_NOTIFY:
    case WM_COMMAND:
    case WM_HSCROLL:
    case WM_VSCROLL:
    case WM_MOUSEWHEEL:
    case WM_ENTERSIZEMOVE:
    case WM_EXITSIZEMOVE:
    case WM_DROPFILES: Dispatch(Hwnd, message, wParam, lParam); return 1;
    default: return 0;
  }
}

LRESULT CDlgBase::DispatchMenuSelect(WPARAM wParam, LPARAM lParam) {
  const auto menu = reinterpret_cast<HMENU>(lParam);
  const UINT item = LOWORD(wParam);
  const int flags = HIWORD(wParam) == 0xFFFF ? -1 : HIWORD(wParam);
  const bool opensSubMenu = flags != -1 && (flags & MF_POPUP);
  if (opensSubMenu) return OnMenuSelect(0, flags, GetSubMenu(menu, static_cast<int>(item)), menu);
  return OnMenuSelect(item, flags, nullptr, menu);
}

void CDlgBase::AttachTexts() {
  texts_ = ControlTextsOf(GetTemplateId());
  tips_.Attach(Hwnd);
  isNamed_ = false;
}

void CDlgBase::FollowMouse(HWND over, UINT message) {
  tips_.Follow(over, message, TipOf(over));
}

void CDlgBase::NameControlsOnce() {
  if (!isNamed_) NameControls(Hwnd, texts_);
  isNamed_ = true;
}

// A part of a control, such as the box of a list that drops down, tells what its control does.
std::wstring CDlgBase::TipOf(HWND control) const {
  if (!IsChild(Hwnd, control)) return {};
  const ControlText* text = ControlTextOf(texts_, GetDlgCtrlID(control));
  if (!text) text = ControlTextOf(texts_, GetDlgCtrlID(GetParent(control)));
  return text && text->Tip ? LoadResString(text->Tip) : std::wstring();
}

LRESULT CDlgBase::OnDestroy() {
  if (Modeless) PostQuitMessage(Result);
  return 0;
}

LRESULT CDlgBase::OnCommand(WPARAM wParam, UINT, HWND) {
  if (LOWORD(wParam) == IDOK) OnOK();
  if (LOWORD(wParam) == IDCANCEL) OnCancel();
  return 0;
}

LRESULT CDlgBase::OnNotify(WPARAM, NMHDR*) {
  return 1;
}
LRESULT CDlgBase::OnMenuSelect(UINT, int, HMENU, HMENU) {
  return 1;
}
void CDlgBase::OnOK() {
  End(IDOK);
}
void CDlgBase::OnCancel() {
  End(IDCANCEL);
}
void CDlgBase::OnDialogEnd() {}

INT_PTR CDlgBase::Answered() {
  SetWindowLongPtrW(Hwnd, DWLP_MSGRESULT, 0);
  return 1;
}

void CDlgBase::End(int result) {
  Result = result;
  if (Modeless) {
    DestroyWindow(Hwnd);
  } else {
    EndDialog(Hwnd, result);
  }
}
