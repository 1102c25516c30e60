// The window of thumbnails over a voicebank: what it shows, how it moves, and what keeps it up to date.
#include <algorithm>
#include <functional>

#include "base/registry.h"
#include "frqctrl/palette.h"
#include "gui/program.h"
#include "native/testdata.h"

namespace {

class Thumbnails : public ProgramTest {
 protected:
  // The names of the waves are 10.wav and on, so that they are listed in the order of their numbers.
  void AddSyllables(int count, const std::vector<double>& frequencies) const {
    for (int i = 0; i < count; ++i) AddSyllable(std::to_wstring(10 + i), frequencies);
  }

  // Six thumbnails of 100 frames in a row, two rows as a whole.
  void Open() {
    WINDOWPLACEMENT placement{sizeof(placement), 0, SW_SHOWNORMAL, {}, {}, {0, 0, 456, 240}};
    EXPECT_TRUE(RegWriteValue(L"ThumbnailDlg", placement));
    Press(ID_VIEW_THUMBNAIL);
    EXPECT_TRUE(Eventually([this] { return IsWindowVisible(List().ThumbnailWindow()); }));
    window_ = List().ThumbnailWindow();
    SizeClient(450, 200);
  }
  void SizeClient(int width, int height) const {
    RECT window = Place(window_), client{};
    GetClientRect(window_, &client);
    SetWindowPos(window_, nullptr, 0, 0, window.right - window.left - client.right + width,
                 window.bottom - window.top - client.bottom + height, SWP_NOMOVE | SWP_NOZORDER);
  }

  // The thumbnails in view, row by row.
  std::vector<HWND> InView() const {
    std::vector<HWND> controls;
    for (HWND control = nullptr; (control = FindWindowExW(window_, control, L"FrequencyTableControl", nullptr));) {
      if (IsWindowVisible(control)) controls.push_back(control);
    }
    std::ranges::sort(controls, {}, [](HWND control) {
      const RECT place = Place(control);
      return std::pair(place.top, place.left);
    });
    return controls;
  }
  std::wstring Names() const {
    std::wstring names;
    for (const HWND control : InView()) names += WindowText(control).substr(0, 2) + L' ';
    return names;
  }
  bool Shows(const std::wstring& names) const {
    return Eventually([&] { return Names() == names; });
  }
  static COLORREF Ground(HWND control) {
    const HDC dc = GetDC(control);
    const COLORREF color = GetPixel(dc, 0, 60);
    ReleaseDC(control, dc);
    return color;
  }
  // The grounds of the thumbnails in view: "." for one without curve, "!" for one to look at, "o" for any other.
  std::string Grounds() const {
    std::string grounds;
    for (const HWND control : InView()) {
      const COLORREF color = Ground(control);
      grounds += color == GetSysColor(COLOR_3DFACE) ? '.' : color == PaletteFor(false)[ColorMarked] ? '!' : 'o';
    }
    return grounds;
  }
  bool HasGrounds(const std::string& grounds) const {
    return Eventually([&] { return Grounds() == grounds; });
  }
  int Loaded() const {
    int loaded = 0;
    for (int i = 0; i < List().Count(); ++i) loaded += List().Map(i)->Loaded;
    return loaded;
  }
  void Scroll(UINT code) const { PostMessageW(window_, WM_VSCROLL, code, 0); }

  HWND window_ = nullptr;
};

const std::vector<double> kVoice(100, 220.0);
constexpr wchar_t kFirstRows[] = L"10 11 12 13 14 15 16 17 18 19 20 21 22 23 24 25 26 27 ";

TEST_F(Thumbnails, OnlyWhatIsInViewIsReadAndAClickSelects) {
  AddSyllables(60, kVoice);
  Start(folder_.Path());
  Open();
  EXPECT_TRUE(Shows(kFirstRows));
  EXPECT_TRUE(HasGrounds(std::string(18, 'o')));
  EXPECT_LT(Loaded(), 30);
  const RECT second = Place(InView()[1]);
  EXPECT_EQ(second.right - second.left, 54) << "half a pixel a frame and the frame of the window";
  for (const auto& [thumbnail, down, up] :
       {std::tuple(7, WM_LBUTTONDOWN, WM_LBUTTONUP), std::tuple(2, WM_RBUTTONDOWN, WM_RBUTTONUP)}) {
    const HWND control = InView()[static_cast<std::size_t>(thumbnail)];
    PostMessageW(control, down, 0, 0);
    PostMessageW(control, up, 0, 0);
    EXPECT_TRUE(Eventually([&, thumbnail = thumbnail] { return List().Selection() == thumbnail; }));
  }
  EXPECT_EQ(Names(), kFirstRows);
  EditorSender(editor_).UpdateState();
  EXPECT_TRUE(GetMenuState(GetMenu(editor_), ID_VIEW_THUMBNAIL, MF_BYCOMMAND) & MF_CHECKED);
  PostMessageW(window_, WM_COMMAND, IDOK, 0);
  PostMessageW(window_, WM_KEYDOWN, VK_ESCAPE, 0);
  EXPECT_TRUE(Eventually([&] { return !IsWindow(window_) && !List().ThumbnailWindow(); }));
  const auto isChecked = [&] { return GetMenuState(GetMenu(editor_), ID_VIEW_THUMBNAIL, MF_BYCOMMAND) & MF_CHECKED; };
  EXPECT_TRUE(Eventually([&] { return !isChecked(); }));
  EXPECT_TRUE(
      RegWriteValue(L"ThumbnailDlg", WINDOWPLACEMENT{sizeof(WINDOWPLACEMENT), 0, SW_SHOW, {}, {}, {0, 0, 9, 9}}));
  Press(ID_VIEW_THUMBNAIL);
  EXPECT_TRUE(Eventually([this] {
    return IsWindowVisible(List().ThumbnailWindow()) && Place(List().ThumbnailWindow()).bottom > 190;
  })) << "two rows always have room";
  window_ = List().ThumbnailWindow();
  PostMessageW(GetDlgItem(list_, IDC_LIST_FILES), WM_KEYDOWN, VK_ESCAPE, 0);
  EXPECT_TRUE(Eventually([&] { return !IsWindow(list_) && !IsWindow(window_); })) << "thumbnails of no list";
  EXPECT_TRUE(IsWindow(editor_));
}

TEST_F(Thumbnails, TheViewMovesByRowsAndKeepsItsAnchor) {
  AddSyllables(60, kVoice);
  Start(folder_.Path());
  Select(14);
  Open();
  EXPECT_TRUE(Shows(L"22 23 24 25 26 27 28 29 30 31 32 33 34 35 36 37 38 39 ")) << "the selected one is on top";
  const struct {
    std::function<void()> move;
    std::wstring first;
  } moves[] = {{[&] { Scroll(SB_LINEUP); }, L"16"},
               {[&] { Scroll(SB_PAGEDOWN); }, L"28"},
               {[&] { Scroll(SB_BOTTOM); }, L"64"},
               {[&] { PostMessageW(window_, WM_MOUSEWHEEL, MAKEWPARAM(MK_CONTROL, 3 * WHEEL_DELTA), 0); }, L"46"},
               {[&] { PostMessageW(window_, WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA / 2), 0); }, L"46"},
               {[&] { Scroll(SB_TOP); }, L"10"},
               {[&] { Scroll(SB_LINEDOWN); }, L"16"}};
  for (const auto& [move, first] : moves) {
    move();
    EXPECT_TRUE(Eventually([&, first = first] { return Names().starts_with(first); })) << Names().substr(0, 2);
    SendMessageW(window_, WM_NULL, 0, 0);
  }
  // The user drags the border: half as wide, the anchor's row stays on top, and as wide again it comes back.
  SendMessageW(window_, WM_ENTERSIZEMOVE, 0, 0);
  for (const auto& [width, first] : {std::pair(270, L"14"), std::pair(330, L"15"), std::pair(450, L"16")}) {
    SizeClient(width, 200);
    EXPECT_TRUE(Names().starts_with(first)) << width << Names();
  }
  SendMessageW(window_, WM_EXITSIZEMOVE, 0, 0);
  SizeClient(450, 80);
  const RECT least = Place(window_);
  SizeClient(10, 10);
  EXPECT_EQ(Place(window_).bottom, least.bottom) << "two rows always have room";
}

TEST_F(Thumbnails, FollowWhatBecomesOfTheMaps) {
  const std::wstring bank = folder_.Path(L"bank"), other = folder_.Path(L"other");
  for (const wchar_t* name : {L"bank\\10", L"bank\\11", L"bank\\12", L"bank\\14", L"other\\50"}) {
    AddSyllable(name, kVoice);
  }
  folder_.Write(L"bank\\13.wav");
  folder_.Write(L"bank\\15.wav");
  folder_.Write(L"bank\\15_wav.frq", Bytes(7));
  AddSyllable(L"other\\51", std::vector<double>(3000, 220.0));
  folder_.Write(L"none\\60.wav");
  Start(bank);
  Open();
  EXPECT_TRUE(Shows(L"10 11 12 14 15 ") && HasGrounds("oooo.")) << Grounds();
  const auto mark = [&](int index) {
    List().Map(index)->Frames[3].Mark = 1;
    List().Map(index)->HasMarks = true;
  };
  mark(1);
  mark(2);
  List().SetEdited(1, true);
  EXPECT_TRUE(HasGrounds("o!oo.")) << "one was told of";
  SetFirstFrame(L"300");
  EXPECT_EQ(List().Map(0)->Frames[0].Frequency, 300.0);
  List().PostRefreshThumbnail();
  EXPECT_TRUE(HasGrounds("o!!o."));
  DeleteFileW((bank + L"\\12_wav.frq").c_str());
  List().SetHasMap(2, false, true);
  EXPECT_TRUE(HasGrounds("o!.o.")) << "its place stays till all are drawn anew";
  List().PostRefreshThumbnail();
  EXPECT_TRUE(Shows(L"10 11 14 15 ") && HasGrounds("o!o."));

  List().OpenFolder(other.c_str());
  EXPECT_TRUE(Shows(L"50 51 ") && HasGrounds("oo"));
  EXPECT_EQ(Place(InView()[1]).right - Place(InView()[1]).left, 1504) << "not cut down, in a row of its own";
  EXPECT_EQ(List().ThumbnailWindow(), window_);
  List().OpenFolder(folder_.Path(L"none").c_str());
  EXPECT_TRUE(Eventually([&] { return IsWindowVisible(GetDlgItem(window_, IDC_THUMBNAIL_NONE)); }));
  EXPECT_EQ(Names(), L"");
  EXPECT_TRUE(Eventually([&] {
    SCROLLINFO info{sizeof(info), SIF_RANGE, 0, 0, 0, 0, 0};
    return GetScrollInfo(window_, SB_VERT, &info) && info.nMax == 0;
  }));
  Scroll(SB_LINEDOWN);
  SizeClient(300, 300);
  List().OpenFolder(bank.c_str());
  EXPECT_TRUE(Shows(L"10 11 14 15 "));
}

}  // namespace
