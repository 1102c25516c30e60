// The window classes: how objects are bound to windows and die with them, and the small controls.
#include <windows.h>
#include <gtest/gtest.h>

#include <optional>

#include "base/handle.h"
#include "base/text.h"
#include "frqctrl/frqctrl.h"
#include "resources/ids.h"
#include "window/flatbutton.h"
#include "window/realnumberbox.h"

namespace {

HWND MakeWindow(const wchar_t* windowClass, HWND parent = nullptr, INT_PTR id = 0) {
  return CreateWindowW(windowClass, L"", parent ? WS_CHILD : WS_POPUP | WS_VISIBLE, 0, 0, 90, 30, parent,
                       reinterpret_cast<HMENU>(id), nullptr, nullptr);
}

// Red while it has a picture to show; then it draws blue and says that this is not to be shown.
class Probe : public CCtrlBase {
 public:
  ~Probe() override { boundAtEnd = GetPropW(Hwnd, L"{E31AEDBE-764B-4623-BD62-D328AB388ECA}") != nullptr; }
  LRESULT OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override {
    if (first == 0) first = message;
    return CCtrlBase::OnMessage(window, message, wParam, lParam);
  }
  bool Draw(HDC dc, const RECT& client) override {
    FillRect(dc, &client, Brush(CreateSolidBrush(ready ? RGB(255, 0, 0) : RGB(0, 0, 255))).get());
    return ready;
  }
  const wchar_t* GetWindowClassName() const override { return L"ProbeControl"; }

  static inline UINT first;
  static inline bool ready;
  static inline std::optional<bool> boundAtEnd;
};

TEST(Control, LivesFromItsFirstMessageToItsLastAndShowsOnlyWhatIsReady) {
  RegisterControl<Probe>();
  const HWND window = MakeWindow(L"ProbeControl");
  EXPECT_EQ(Probe::first, UINT{WM_CREATE});
  for (const bool ready : {true, false}) {
    Probe::ready = ready;
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    const HDC dc = GetDC(window);
    EXPECT_EQ(GetPixel(dc, 5, 5), COLORREF{RGB(255, 0, 0)});
    ReleaseDC(window, dc);
  }
  Probe::boundAtEnd.reset();
  DestroyWindow(window);
  EXPECT_EQ(Probe::boundAtEnd, false) << "a later message would go to an object that is no more";
}

TEST(FlatButton, ActsOnADoubleClickAloneHoweverItWasMade) {
  RegisterControl<CFrqCtrl>();
  RegisterControl<CFlatButton>();
  static int commands;
  const DLGPROC count = [] WINAPI(HWND, UINT message, WPARAM wParam, LPARAM) -> INT_PTR {
    commands += message == WM_COMMAND && LOWORD(wParam) == IDC_EDITOR_TRIPLE;
    return 0;
  };
  const HWND dialog = CreateDialogW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_EDITOR), nullptr, count);
  const HWND made = MakeWindow(L"FlatButtonControl", dialog, IDC_EDITOR_TRIPLE);
  for (const HWND button : {GetDlgItem(dialog, IDC_EDITOR_TRIPLE), made}) {
    commands = 0;
    SendMessageW(button, WM_LBUTTONDOWN, 0, 0);
    EXPECT_EQ(commands, 0);
    SendMessageW(button, WM_LBUTTONDBLCLK, 0, 0);
    EXPECT_EQ(commands, 1);
  }
  DestroyWindow(dialog);
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
  DestroyWindow(box);
  EXPECT_EQ(ended, 1) << "once, and when the window knew no more of it";
}

TEST(Messages, PlacesLeftOfAndAboveTheWindowAreNegative) {
  class Recorder : public CWindow {
   public:
    using CWindow::MouseX, CWindow::MouseY;
    LRESULT OnMouseWheel(WPARAM, int x, int y, int delta) override { return x * 10000 + y * 1000 + delta; }
  } recorder;
  recorder.OnMessage(nullptr, WM_MOUSEMOVE, 0, MAKELPARAM(-3, -7));
  EXPECT_TRUE(recorder.MouseX == -3 && recorder.MouseY == -7);
  EXPECT_EQ(recorder.OnMessage(nullptr, WM_MOUSEWHEEL, MAKEWPARAM(MK_SHIFT, -120), MAKELPARAM(-3, -7)), -37120);
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
    *b.out() = 3;
    EXPECT_EQ(b.release(), 3);
  }
  EXPECT_EQ(closed, (std::vector{2, 1}));
}

}  // namespace
