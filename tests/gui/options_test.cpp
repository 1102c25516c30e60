// The options: which resamplers the dialog takes and remembers, and what another one brings with it.
#include "base/narrowpath.h"
#include "gui/resamplerdouble.h"

namespace {

constexpr wchar_t kHistory[] = L"Software\\UTAU Plugin\\Marlit\\Resamplers";

struct Options : DoubleTest {
  static void Confirm(HWND dialog, const std::wstring& resampler) {
    SetDlgItemTextW(dialog, IDC_OPTION_RESAMPLER, resampler.c_str());
    PostMessageW(dialog, WM_COMMAND, IDOK, 0);
  }
  static std::wstring History() {
    std::list<std::wstring> list;
    LoadHistory(kHistory, list);
    std::wstring names;
    for (const std::wstring& path : list) names += path.substr(path.find_last_of(L'\\') + 1) + L"|";
    return names;
  }
};

TEST_F(Options, RememberResamplersAndForgetThoseThatHaveGone) {
  Install(L"resampler.exe", 4);
  const std::wstring name = L"program\\" + std::wstring(240, L'd') + L"\\2.exe";
  const std::wstring deep = folder_.Path(name);  // more than the box takes
  folder_.Write(name);
  SaveHistory(kHistory, {folder_.Path(L"program\\0.exe"), folder_.Path(L"program\\1.exe")});
  Start(L"");
  InDialog(ID_TOOL_OPTION, IDC_OPTION_RESAMPLER, [&](HWND dialog) {
    EXPECT_EQ(WindowText(GetDlgItem(dialog, IDC_OPTION_PARALLEL)), L"4");
    Confirm(dialog, folder_.Path(L"program\\0.exe"));
    HWND box = nullptr;
    ASSERT_TRUE(Eventually([&] { return (box = FindBox()) && box != dialog && !IsWindowEnabled(dialog); }));
    SendMessageW(box, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(Eventually([] { return History() == L"1.exe|"; })) << History().c_str();
    SetDlgItemTextW(dialog, IDC_OPTION_PARALLEL, L"0");
    SendDlgItemMessageW(dialog, IDC_OPTION_DELETELLSM, BM_CLICK, 0, 0);
    Confirm(dialog, deep);
  });
  EXPECT_EQ(History(), L"2.exe|1.exe|");
  Leave();
  wchar_t resampler[MAX_PATH] = L"";
  DWORD workers = 99;
  EXPECT_TRUE(RegReadValue(L"Resampler", resampler) && RegReadValue(L"CreateFrqMaxCount", workers));
  EXPECT_EQ(resampler + std::to_wstring(workers), NarrowForm(deep).value_or(L"none") + L"0");
  EXPECT_FALSE(RegReadFlag(L"AutoDeleteLLSM", true));
}

TEST_F(Options, AnotherFamilyBringsItsOwnMapsOnceTheEditsAreGivenUp) {
  Install(L"resampler.exe", 4);
  folder_.Write(L"program\\w4u.exe");
  AddSyllable(L"bank\\a", {220.0});
  AddSyllable(L"bank\\b", {330.0});
  folder_.Write(L"bank\\b.dio");
  Start(Bank());
  SetFirstFrame(L"100");
  for (const WPARAM answer : {IDNO, IDYES}) {
    InDialog(ID_TOOL_OPTION, IDC_OPTION_RESAMPLER, [&](HWND dialog) {
      SetDlgItemTextW(dialog, IDC_OPTION_PARALLEL, L"7");
      Confirm(dialog, folder_.Path(L"program\\w4u.exe"));
      HWND box = nullptr;
      ASSERT_TRUE(Eventually([&] { return (box = FindBox()) && box != dialog; }));
      EXPECT_EQ(WindowText(GetDlgItem(box, 0xFFFF)), LoadResString(IDS_DISCARD));
      PostMessageW(box, WM_COMMAND, answer, 0);
    });
    if (answer == IDYES) break;
    EXPECT_EQ(Column(1) + Column(2) + Frames(), L"*|*|*||100.00000000|");
  }
  EXPECT_TRUE(Eventually([this] { return Column(1) == L"|*|"; }));
  EXPECT_EQ(Column(2) + Frames(), L"||");
}

}  // namespace
