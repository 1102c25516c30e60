#include "window/accessiblenames.h"

#include <objbase.h>
#include <initguid.h>
#include <oleacc.h>

#include "base/text.h"

namespace {

struct Naming {
  IAccPropServices* Services = nullptr;
  std::span<const ControlText> Texts;
};

BOOL CALLBACK NameControl(HWND control, LPARAM parameter) {
  const auto& naming = *reinterpret_cast<const Naming*>(parameter);
  const ControlText* const text = ControlTextOf(naming.Texts, GetDlgCtrlID(control));
  if (text && text->Name) {
    naming.Services->SetHwndPropStr(control, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, PROPID_ACC_NAME,
                                    LoadResString(text->Name).c_str());
  }
  return TRUE;
}

}  // namespace

// The names stay with the windows when the services have gone.
void NameControls(HWND dialog, std::span<const ControlText> texts) {
  if (texts.empty()) return;
  const HRESULT initialized = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  Naming naming{nullptr, texts};
  if (SUCCEEDED(CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER, IID_IAccPropServices,
                                 reinterpret_cast<void**>(&naming.Services)))) {
    EnumChildWindows(dialog, NameControl, reinterpret_cast<LPARAM>(&naming));
    naming.Services->Release();
  }
  if (SUCCEEDED(initialized)) CoUninitialize();
}
