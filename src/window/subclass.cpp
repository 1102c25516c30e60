#include "window/subclass.h"

namespace {

constexpr wchar_t kSubclassProperty[] = L"{8BC1469F-72BD-4b5b-8DDD-820FFCCB954D}";

// The object is looked up in the window's own memory: a list is filled by a message for each row, and under Wine a
// property is a question to another process. It is there for as long as this procedure is.
LRESULT CALLBACK SubclassProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* const object = reinterpret_cast<CSubclassWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  return object->OnMessage(window, message, wParam, lParam);
}

}  // namespace

bool IsSubclassed(HWND window) {
  return GetPropW(window, kSubclassProperty) != nullptr;
}

void BindSubclass(HWND window, CSubclassWindow* object) {
  object->Hwnd = window;
  // These come first: from the last line on the procedure looks for its object.
  if (!SetPropW(window, kSubclassProperty, object)) {
    delete object;
    return;
  }
  SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(object));
  object->PreviousProc =
      reinterpret_cast<WNDPROC>(SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(SubclassProc)));
  object->OnBound();
}

LRESULT CSubclassWindow::OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_DESTROY) return CallPrevious(message, wParam, lParam);
  SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(PreviousProc));
  RemovePropW(window, kSubclassProperty);
  const LRESULT result = CallPrevious(message, wParam, lParam);
  delete this;
  return result;
}

LRESULT CSubclassWindow::CallPrevious(UINT message, WPARAM wParam, LPARAM lParam) {
  return CallWindowProcW(PreviousProc, Hwnd, message, wParam, lParam);
}
