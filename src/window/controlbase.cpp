#include "window/controlbase.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <mutex>
#include <string>
#include <utility>

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
// Another program may send WM_CREATE once more.
LRESULT CALLBACK ControlProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  CCtrlBase* control = ControlOf(window);
  if (message == WM_CREATE) {
    if (control) return 0;
    BindNewObject(window);
    control = ControlOf(window);
  }
  if (!control) return DefWindowProcW(window, message, wParam, lParam);
  return control->OnMessage(window, message, wParam, lParam);
}

// The picture that a control draws into before it is shown. To make one for each paint would take longer than the
// drawing of a stroke, so one is kept from paint to paint, as large as the largest control that it served.
struct PaintBuffer {
  Bitmap Picture;
  int Width = 0;
  int Height = 0;
};

std::mutex idleLock;
PaintBuffer idleBuffer;  // shared by all threads

// A context takes no bitmap that was made when the screen had other colours.
bool Takes(HDC memory, const Bitmap& picture) {
  const HGDIOBJ before = picture ? SelectObject(memory, picture.get()) : nullptr;
  if (before) SelectObject(memory, before);
  return before != nullptr;
}

// The kept buffer, or a new one. A paint during that of another thread, or in the middle of a paint, as under a message
// box that the drawing shows, finds none and makes one of its own.
PaintBuffer TakeBuffer(HDC target, HDC memory, const RECT& client) {
  PaintBuffer buffer;
  {
    const std::lock_guard lock(idleLock);
    std::swap(buffer, idleBuffer);
  }
  if (Takes(memory, buffer.Picture) && client.right <= buffer.Width && client.bottom <= buffer.Height) return buffer;
  const int width = std::max<int>(buffer.Width, client.right);
  const int height = std::max<int>(buffer.Height, client.bottom);
  buffer.Picture.reset();  // ahead of the larger one, so that both are never held
  return {Bitmap(CreateCompatibleBitmap(target, width, height)), width, height};
}

void KeepBuffer(PaintBuffer buffer) {
  const std::lock_guard lock(idleLock);
  std::swap(buffer, idleBuffer);
}

}  // namespace

CCtrlBase* ControlOf(HWND window) {
  return static_cast<CCtrlBase*>(GetPropW(window, kControlProperty));
}

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
  const MemoryDc memory(CreateCompatibleDC(target));
  PaintBuffer buffer = TakeBuffer(target, memory.get(), client);
  {
    const SelectGuard selectBitmap(memory.get(), buffer.Picture.get());
    auto font = reinterpret_cast<HFONT>(SendMessageW(Hwnd, WM_GETFONT, 0, 0));
    const SelectGuard selectFont(memory.get(), font ? font : GetCurrentObject(memory.get(), OBJ_FONT));
    if (Draw(memory.get(), client)) BitBlt(target, 0, 0, client.right, client.bottom, memory.get(), 0, 0, SRCCOPY);
  }
  KeepBuffer(std::move(buffer));
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
