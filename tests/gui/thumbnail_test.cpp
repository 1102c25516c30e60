// The window of thumbnails over a voicebank: what it shows, how it moves, and what keeps it up to date.

#include <algorithm>

#include "frqctrl/palette.h"
#include "gui/program.h"

namespace {

struct Thumbnails : ProgramTest {
  // Six thumbnails of 100 frames in a row, two rows as a whole.
  void Open() {
    WINDOWPLACEMENT placement{sizeof(placement), 0, SW_SHOWNORMAL, {}, {}, {0, 0, 456, 240}};
    EXPECT_TRUE(RegWriteValue(L"ThumbnailDlg", placement));
    Press(ID_VIEW_THUMBNAIL);
    EXPECT_TRUE(Eventually([this] { return IsWindowVisible(List().ThumbnailWindow()); }));
    window_ = List().ThumbnailWindow();
    RECT window = Place(window_), client{};
    GetClientRect(window_, &client);
    SetWindowPos(window_, nullptr, 0, 0, window.right - window.left - client.right + 450,
                 window.bottom - window.top - client.bottom + 200, SWP_NOMOVE | SWP_NOZORDER);
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
  // The grounds of the thumbnails in view: "." for one without curve, "!" for one to look at, "o" for any other.
  std::string Grounds() const {
    std::string grounds;
    for (const HWND control : InView()) {
      const HDC dc = GetDC(control);
      const COLORREF color = GetPixel(dc, 0, 60);
      ReleaseDC(control, dc);
      grounds += color == GetSysColor(COLOR_3DFACE) ? '.' : color == PaletteFor(false)[ColorMarked] ? '!' : 'o';
    }
    return grounds;
  }
  bool HasGrounds(const std::string& grounds) const {
    return Eventually([&] { return Grounds() == grounds; });
  }
  void Scroll(UINT code) const { PostMessageW(window_, WM_VSCROLL, code, 0); }

  HWND window_ = nullptr;
};

const std::vector<double> kVoice(100, 220.0);
constexpr wchar_t kFirstRows[] = L"10 11 12 13 14 15 16 17 18 19 20 21 22 23 24 25 26 27 ";

TEST_F(Thumbnails, OnlyWhatIsInViewIsReadAndAClickSelects) {
  for (int i = 10; i < 70; ++i) AddSyllable(std::to_wstring(i), kVoice);
  Start(folder_.Path());
  Open();
  EXPECT_TRUE(Shows(kFirstRows));
  EXPECT_TRUE(HasGrounds(std::string(18, 'o')));
  EXPECT_FALSE(List().Map(30)->Loaded);
  for (const auto& [thumbnail, down, up] :
       {std::tuple(7, WM_LBUTTONDOWN, WM_LBUTTONUP), std::tuple(2, WM_RBUTTONDOWN, WM_RBUTTONUP)}) {
    const HWND control = InView()[static_cast<std::size_t>(thumbnail)];
    PostMessageW(control, down, 0, 0);
    PostMessageW(control, up, 0, 0);
    EXPECT_TRUE(Eventually([&, thumbnail = thumbnail] { return List().Selection() == thumbnail; }));
  }
  Scroll(SB_PAGEDOWN);
  EXPECT_TRUE(Eventually([&] { return Names().starts_with(L"22"); }));
  PostMessageW(window_, WM_KEYDOWN, VK_ESCAPE, 0);
  EXPECT_TRUE(Eventually([&] { return !IsWindow(window_) && !List().ThumbnailWindow(); }));
  Open();
  PostMessageW(GetDlgItem(list_, IDC_LIST_FILES), WM_KEYDOWN, VK_ESCAPE, 0);
  EXPECT_TRUE(Eventually([&] { return !IsWindow(list_) && !IsWindow(window_); })) << "thumbnails of no list";
  EXPECT_TRUE(IsWindow(editor_));
}

TEST_F(Thumbnails, FollowWhatBecomesOfTheMaps) {
  const std::wstring bank = folder_.Path(L"bank"), other = folder_.Path(L"other");
  for (const wchar_t* name : {L"bank\\10", L"bank\\11", L"bank\\12", L"bank\\14", L"other\\50"}) {
    AddSyllable(name, kVoice);
  }
  folder_.Write(L"bank\\13.wav");
  folder_.Write(L"bank\\15.wav");
  folder_.Write(L"bank\\15_wav.frq", Bytes(7));
  folder_.Write(L"none\\60.wav");
  Start(bank);
  Open();
  EXPECT_TRUE(Shows(L"10 11 12 14 15 ") && HasGrounds("oooo.")) << Grounds();
  const auto mark = [&](int index) {
    List().Map(index)->Frames.Own()[3].Mark = 1;
    List().Map(index)->HasMarks = true;
  };
  mark(1);
  mark(2);
  List().SetEdited(1, true);
  EXPECT_TRUE(HasGrounds("o!oo.")) << "one was told of";
  List().PostRefreshThumbnail();
  EXPECT_TRUE(HasGrounds("o!!o."));
  DeleteFileW((bank + L"\\12_wav.frq").c_str());
  List().LoseMap(2);
  EXPECT_TRUE(HasGrounds("o!.o.")) << "its place stays till all are drawn anew";
  List().PostRefreshThumbnail();
  EXPECT_TRUE(Shows(L"10 11 14 15 ") && HasGrounds("o!o."));

  List().OpenFolder(other.c_str());
  EXPECT_TRUE(Shows(L"50 ") && HasGrounds("o"));
  List().OpenFolder(folder_.Path(L"none").c_str());
  EXPECT_TRUE(Eventually([&] { return IsWindowVisible(GetDlgItem(window_, IDC_THUMBNAIL_NONE)); }));
  EXPECT_EQ(Names(), L"");
  Scroll(SB_LINEDOWN);
  List().OpenFolder(bank.c_str());
  EXPECT_TRUE(Shows(L"10 11 14 15 "));
}

}  // namespace
