// The window classes: how objects are bound to windows and die with them, and the small controls.
#include <windows.h>
#include <gtest/gtest.h>
#include <imm.h>

#include <optional>

#include "base/handle.h"
#include "base/text.h"
#include "window/controlbase.h"
#include "window/realnumberbox.h"

namespace {

HWND MakeWindow(const wchar_t* windowClass) {
  return CreateWindowW(windowClass, L"", WS_POPUP | WS_VISIBLE, 0, 0, 90, 30, nullptr, nullptr, nullptr, nullptr);
}

struct Probe : CCtrlBase {
  ~Probe() override { boundAtEnd = GetPropW(Hwnd, L"{E31AEDBE-764B-4623-BD62-D328AB388ECA}") != nullptr; }
  LRESULT OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override {
    if (first == 0) first = message;
    return CCtrlBase::OnMessage(window, message, wParam, lParam);
  }
  bool Draw(HDC, const RECT&) override { return true; }
  const wchar_t* GetWindowClassName() const override { return L"ProbeControl"; }

  static inline UINT first;
  static inline std::optional<bool> boundAtEnd;
};

TEST(Control, LivesFromItsFirstMessageToItsLast) {
  RegisterControl<Probe>();
  const HWND window = MakeWindow(L"ProbeControl");
  EXPECT_EQ(Probe::first, UINT{WM_CREATE});
  Probe::boundAtEnd.reset();
  DestroyWindow(window);
  EXPECT_EQ(Probe::boundAtEnd, false) << "a later message would go to an object that is no more";
}

TEST(NumberBox, TakesDigitsAndBothDecimalSignsAndDiesWithItsWindow) {
  static int ended;
  class Box : public CTextBoxRealNumberCtrl {
   public:
    ~Box() override { ended += IsSubclassed(Hwnd) ? 100 : 1; }
  };
  const HWND box = MakeWindow(L"EDIT");
  for (int attempt = 0; attempt < 2; ++attempt) SubclassControl<Box>(box);
  wchar_t usersSign[4] = L".";
  GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, usersSign, 4);
  for (const std::wstring sign : {L".", L","}) {
    SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, sign.c_str());
    SetWindowTextW(box, L"");
    for (const wchar_t key : std::wstring(L"-1e2 +.3,4１9\b")) SendMessageW(box, WM_CHAR, key, 0);
    EXPECT_EQ(WindowText(box), sign == L"," ? L"12.3,4" : L"12.34");
  }
  SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, usersSign);
  EXPECT_EQ(ImmGetContext(box), nullptr) << "an input method would compose what the box refuses";
  DestroyWindow(box);
  EXPECT_EQ(ended, 1) << "once, and when the window knew no more of it";
}

TEST(Handle, IsClosedOnceWhoeverOwnsItLast) {
  static std::vector<int> closed;
  struct Traits {
    using Type = int;
    static Type Null() { return -1; }
    static void Close(Type handle) { closed.push_back(handle); }
  };
  {
    UniqueHandle<Traits> a(1), b(2);
    a.reset(1);
    b = std::move(a);
    EXPECT_EQ(closed, std::vector{2}) << "what the move replaced, and not what was reset to itself";
    const UniqueHandle<Traits> c(std::move(b));
    EXPECT_TRUE(c && !a && !b);
  }
  EXPECT_EQ(closed, (std::vector{2, 1}));
}

}  // namespace
