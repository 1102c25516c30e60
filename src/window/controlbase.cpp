#include "window/controlbase.h"

#include <iterator>
#include <map>
#include <string>

#include "base/handle.h"

namespace {

constexpr wchar_t kControlProperty[] = L"{E31AEDBE-764B-4623-BD62-D328AB388ECA}";

// Window class name to the factory of its objects.
std::map<std::wstring, ControlFactory>& ClassRegistry() {
  static std::map<std::wstring, ControlFactory> registry;
  return registry;
}

void BindNewObject(HWND window) {
  wchar_t name[64] = L"";
  GetClassNameW(window, name, static_cast<int>(std::size(name)));
  const auto found = ClassRegistry().find(name);
  if (found == ClassRegistry().end()) return;
  CCtrlBase* const control = found->second();
  control->Hwnd = window;
  SetPropW(window, kControlProperty, control);
}

// Messages before WM_CREATE and behind WM_DESTROY find no object and take the default road.
LRESULT CALLBACK ControlProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_CREATE) BindNewObject(window);
  auto* const control = static_cast<CCtrlBase*>(GetPropW(window, kControlProperty));
  if (!control) return DefWindowProcW(window, message, wParam, lParam);
  return control->OnMessage(window, message, wParam, lParam);
}

}  // namespace

void RegisterControlClass(const CCtrlBase& prototype, ControlFactory factory) {
  ClassRegistry()[prototype.GetWindowClassName()] = factory;
  WNDCLASSEXW windowClass{};
  windowClass.cbSize = sizeof(windowClass);
  windowClass.style = prototype.GetClassStyle(CS_HREDRAW | CS_VREDRAW);
  windowClass.lpfnWndProc = ControlProc;
  windowClass.hInstance = GetModuleHandleW(nullptr);
  windowClass.hCursor = LoadCursorW(prototype.GetCursorModule(), prototype.GetCursorName());
  windowClass.hbrBackground = prototype.GetBackgroundBrush();
  windowClass.lpszClassName = prototype.GetWindowClassName();
  RegisterClassExW(&windowClass);
  prototype.OnClassRegistered();
}

LRESULT CCtrlBase::OnDestroy() {
  RemovePropW(Hwnd, kControlProperty);
  delete this;
  return 0;
}

LRESULT CCtrlBase::OnPaint() {
  RECT client{};
  GetClientRect(Hwnd, &client);
  PAINTSTRUCT paint{};
  const HDC target = BeginPaint(Hwnd, &paint);
  {
    const MemoryDc memory(CreateCompatibleDC(target));
    const Bitmap bitmap(CreateCompatibleBitmap(target, client.right, client.bottom));
    const SelectGuard selectBitmap(memory.get(), bitmap.get());
    auto font = reinterpret_cast<HFONT>(SendMessageW(Hwnd, WM_GETFONT, 0, 0));
    const SelectGuard selectFont(memory.get(), font ? font : GetCurrentObject(memory.get(), OBJ_FONT));
    if (Draw(memory.get(), client)) BitBlt(target, 0, 0, client.right, client.bottom, memory.get(), 0, 0, SRCCOPY);
  }
  EndPaint(Hwnd, &paint);
  return 0;
}

void CCtrlBase::Refresh() {
  InvalidateRect(Hwnd, nullptr, TRUE);
  UpdateWindow(Hwnd);
}

const wchar_t* CCtrlBase::GetCursorName() const {
  return IDC_ARROW;
}
HINSTANCE CCtrlBase::GetCursorModule() const {
  return nullptr;
}
UINT CCtrlBase::GetClassStyle(UINT defaultStyle) const {
  return defaultStyle;
}
HBRUSH CCtrlBase::GetBackgroundBrush() const {
  return nullptr;
}
void CCtrlBase::OnClassRegistered() const {}
