// A balloon says why nothing comes of what the user does; and a first start needs no setting at all.
#include "app/words.h"
#include "check/checkrecords.h"
#include "gui/checkwindows.h"

namespace {

struct Silences : CheckTest {
  // Sends what the list view asks while it draws a row.
  bool IsMarkedOut(int row) const {
    NMLVCUSTOMDRAW drawing{};
    drawing.nmcd.hdr = {GetDlgItem(list_, IDC_LIST_FILES), IDC_LIST_FILES, static_cast<UINT>(NM_CUSTOMDRAW)};
    drawing.nmcd.dwDrawStage = CDDS_ITEMPREPAINT;
    drawing.nmcd.lItemlParam = row;
    SendMessageW(list_, WM_NOTIFY, IDC_LIST_FILES, reinterpret_cast<LPARAM>(&drawing));
    return drawing.clrText != 0;
  }
  static std::wstring Text(UINT id) { return LoadResString(id); }
};

TEST_F(Silences, EachIsBrokenByABalloonAndNoBoxComes) {
  Script();
  wchar_t gone[MAX_PATH] = L"C:\\gone\\resampler.exe";
  RegWriteValue(L"Resampler", gone);
  std::filesystem::create_directories(folder_.Path(L"empty"));
  Start(folder_.Path(L"empty"));
  EXPECT_TRUE(HasSaid(Text(IDS_NOWAVES)));
  Press(ID_EDIT_INITIALIZE);
  EXPECT_TRUE(HasSaid(Text(IDS_NOWAVES))) << "no syllable to make a map for";

  AddSyllable(L"bank\\b", std::vector<double>(4, 220.0));
  folder_.Write(L"bank\\a.wav");
  folder_.Write(L"bank\\a_wav.frq", Bytes(7, 'F'));
  folder_.Write(L"bank\\c.wav");
  List().OpenFolder(folder_.Path(L"bank").c_str());
  EXPECT_TRUE(HasSaid(TextOf(MapFault{MapFault::Foreign}, L"a.wav")));
  EXPECT_TRUE(IsMarkedOut(0) && !IsMarkedOut(1) && Column(1) == L"*|*||");
  Select(1);
  EXPECT_EQ(Words(), L"") << "it was about another syllable";

  SendItem(IDC_EDITOR_HALVE, WM_LBUTTONDOWN);
  EXPECT_TRUE(HasSaid(Text(IDS_DOUBLECLICK)));
  for (const int button : {IDC_EDITOR_HALVE, IDC_EDITOR_INTERPOLATE, IDC_EDITOR_KEYFROMSELECTION}) {
    PostMessageW(editor_, WM_KEYDOWN, VK_SHIFT, 0);
    EXPECT_TRUE(Eventually([] { return Words().empty(); })) << "the user goes on";
    SendItem(button, WM_LBUTTONDBLCLK);
    EXPECT_TRUE(HasSaid(Text(IDS_SELECTFRAMES))) << button;
  }
  SendItem(IDC_EDITOR_RELOAD, WM_LBUTTONDBLCLK);
  EXPECT_TRUE(HasSaid(Text(IDS_NOTHINGAPPLIES)));

  Press(IDC_EDITOR_PLAY);
  const std::wstring missing = TextOfMissing(gone);
  EXPECT_TRUE(HasSaid(missing.substr(1))) << Words().c_str();
  Press(ID_EDIT_CREATEMISSING);
  EXPECT_TRUE(HasSaid(TextOfCounts(0, {L"c.wav"}) + missing)) << Words().c_str();
  List().RunCheck({});
  EXPECT_TRUE(HasSaid(FormatText(Text(IDS_CHECK_NOTHING).c_str(), 1) +
                      FormatText(Text(IDS_CHECK_SKIPPED).c_str(), 1, L"a.wav")));
  InDialog(ID_EDIT_CONVERT, IDC_CONVERT_TO, [](HWND dialog) {
    SendMessageW(dialog, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(HasSaid(Text(IDS_CONVERT_SAMEKIND)));
    Close(dialog, IDCANCEL);
  });
  InDialog(ID_TOOL_OPTION, IDC_OPTION_RESAMPLER, [](HWND dialog) {
    SetDlgItemTextW(dialog, IDC_OPTION_RESAMPLER, L"");
    SendMessageW(dialog, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(HasSaid(Text(IDS_OPTION_EMPTY)));
    Close(dialog, IDCANCEL);
  });
  RegDeleteTreeW(HKEY_CURRENT_USER, nullptr);
  RegDeleteKeyW(HKEY_CURRENT_USER, L"");  // nothing can be written from here on
  RunCheck();
  EXPECT_TRUE(HasSaid(Text(IDS_SETTINGSNOTKEPT)));
  EXPECT_FALSE(FindBox());
  EXPECT_EQ(PressAndAnswer(ID_EDIT_REMOVEALL, IDYES), Text(IDS_ASKREMOVEALL));
  EXPECT_TRUE(HasSaid(TextOfCounts(2, {})));
}

TEST_F(Silences, WithoutAnySettingTheBundledResamplerMakesTheMaps) {
  folder_.Write(L"bank\\a.wav", SecondOfSilence());
  Start(L"");
  List().OpenFolder(folder_.Path(L"bank").c_str());
  InDialog(ID_TOOL_OPTION, IDC_OPTION_RESAMPLER, [](HWND dialog) {
    EXPECT_EQ(WindowText(GetDlgItem(dialog, IDC_OPTION_RESAMPLER)), L"");
    COMBOBOXINFO box{};
    box.cbSize = sizeof(box);
    GetComboBoxInfo(GetDlgItem(dialog, IDC_OPTION_RESAMPLER), &box);
    wchar_t cue[64] = L"";
    SendMessageW(box.hwndItem, EM_GETCUEBANNER, reinterpret_cast<WPARAM>(cue), 64);
    EXPECT_STREQ(cue, FormatText(Text(IDS_BUNDLED).c_str(), L"basic-resampler.exe").c_str());
    Close(dialog, IDCANCEL);
  });
  Press(ID_EDIT_CREATEMISSING);
  EXPECT_TRUE(HasSaid(TextOfCounts(1, {}))) << Words().c_str();
  EXPECT_EQ(Column(1), L"*|");
  EXPECT_GT(SendItem(IDC_EDITOR_FRAMES, LB_GETCOUNT), 0);
  Leave();
  wchar_t resampler[MAX_PATH];
  EXPECT_FALSE(RegReadValue(L"Resampler", resampler)) << "nobody has chosen it";
}

}  // namespace
