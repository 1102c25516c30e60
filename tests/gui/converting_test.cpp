// Maps converted to other kinds by the user's command, and the settings of an analysis by the library.
#include "frqmap/mapfiles.h"
#include "frqmap/mrqstore.h"
#include "gui/resamplerdouble.h"

namespace {

class Converting : public DoubleTest {
 protected:
  // Opens a command's dialog, does the work to it, and comes back when all that follows has ended.
  void InDialog(UINT command, int control, const std::function<void(HWND)>& work) const {
    const auto pressed = std::async(std::launch::async, [=, this] { Press(command); });
    HWND dialog = nullptr;
    ASSERT_TRUE(Eventually([&] { return (dialog = FindBox()) && GetDlgItem(dialog, control); }));
    work(dialog);
  }
  static void Pick(HWND dialog, int box, int position) {
    SendDlgItemMessageW(dialog, box, CB_SETCURSEL, static_cast<WPARAM>(position), 0);
    SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(box, CBN_SELCHANGE), 0);
  }
  static int Picked(HWND dialog, int box) {
    return static_cast<int>(SendDlgItemMessageW(dialog, box, CB_GETCURSEL, 0, 0));
  }
};

// Kinds as pairs of source and target, each once on either side; the arithmetic of every pair is compared elsewhere.
TEST_F(Converting, GivesEachKindOfMapFromAnother) {
  Install(L"resampler.exe", 2);
  for (const wchar_t* const name : {L"a", L"b", L"c"}) folder_.Write(L"bank\\" + std::wstring(name) + L".wav");
  Start(Bank());
  const std::tuple<FrqType, int, FrqType, int> tests[] = {{FrqTypeFrq, 0, FrqTypeMrq, 5},
                                                          {FrqTypeMrq, 5, FrqTypePmk, 3},
                                                          {FrqTypePmk, 3, FrqTypeDio, 4},
                                                          {FrqTypeDio, 4, FrqTypeFrc, 1},
                                                          {FrqTypeFrc, 1, FrqTypeFrq, 0}};
  for (const auto& [source, sourceBox, target, targetBox] : tests) {
    SCOPED_TRACE(testing::Message() << source << " to " << target);
    std::filesystem::remove_all(Bank());
    for (const wchar_t* const name : {L"a", L"b", L"c"}) {
      folder_.Write(L"bank\\" + std::wstring(name) + L".wav", kSecondOfSound);
    }
    MrqStore store, written;
    if (source == FrqTypeMrq) store.AddFolder(Bank());
    FrqMap map;
    map.Create(40, FrqTypeFrq);
    for (int i = 0; i < 40; ++i) map.SetFrequency(256 * i, 441.0);
    for (const wchar_t* const name : {L"a", L"c"}) ASSERT_EQ(SaveMap(map, Wave(name), source, &store), 0);
    InDialog(ID_EDIT_CONVERT, IDC_CONVERT_FROM, [&, from = sourceBox, to = targetBox](HWND dialog) {
      Pick(dialog, IDC_CONVERT_FROM, from);
      Pick(dialog, IDC_CONVERT_TO, to);
      Close(dialog, IDOK);
    });
    written.LoadFolder(Bank());
    for (const wchar_t* const name : {L"a", L"c"}) {
      ASSERT_EQ(LoadMap(map, Wave(name), target, &written), 0) << name;
      EXPECT_EQ(map.Frames.at(5).Frequency, 441.0);
      EXPECT_TRUE(MapFileExists(MapPathFromWaveW(Wave(name), source), &written));
    }
    EXPECT_NE(LoadMap(map, Wave(L"b"), target, &written), 0);
  }
}

TEST_F(Converting, ConvertsOnlyTheShownSyllableIfAskedAndRemembersThePair) {
  Install(L"w4u.exe", 2);
  AddSyllable(L"bank\\a", {220.0});
  AddSyllable(L"bank\\b", {330.0});
  Start(Bank());
  Select(1);
  InDialog(ID_EDIT_CONVERT, IDC_CONVERT_FROM, [&](HWND dialog) {
    EXPECT_EQ(Picked(dialog, IDC_CONVERT_FROM) + Picked(dialog, IDC_CONVERT_TO), 0);
    EXPECT_TRUE(IsDlgButtonChecked(dialog, IDC_CONVERT_ALL));
    SendMessageW(dialog, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(IsWindowVisible(dialog)) << "a kind is not converted to itself";
    Pick(dialog, IDC_CONVERT_TO, 4);
    SendDlgItemMessageW(dialog, IDC_CONVERT_ONE, BM_CLICK, 0, 0);
    Close(dialog, IDOK);
  });
  EXPECT_EQ(Column(1) + Frames(), L"|*|330.00000000|");
  EXPECT_FALSE(HasFile(L"a.dio"));
  InDialog(ID_EDIT_CONVERT, IDC_CONVERT_FROM, [&](HWND dialog) {
    EXPECT_EQ(Picked(dialog, IDC_CONVERT_TO), 4);
    EXPECT_TRUE(IsDlgButtonChecked(dialog, IDC_CONVERT_ONE));
    Close(dialog, IDCANCEL);
  });
}

TEST_F(Converting, AFailureCostsTheTargetAndKeepsTheSource) {
  Install(L"w4u.exe", 1);
  for (const wchar_t* const name : {L"a", L"b", L"c"}) AddSyllable(L"bank\\" + std::wstring(name), {220.0});
  folder_.Write(L"bank\\b_wav.frq", {1, 2, 3});
  for (const wchar_t* const name : {L"a.dio", L"b.dio", L"c.dio"}) folder_.Write(L"bank\\" + std::wstring(name));
  Start(Bank());
  InDialog(ID_EDIT_CONVERT, IDC_CONVERT_FROM, [&](HWND dialog) {
    Pick(dialog, IDC_CONVERT_TO, 4);
    Close(dialog, IDOK);
  });
  EXPECT_EQ(Column(1), L"*||*|") << "the one worker ended at the second, the third was never reached";
  EXPECT_TRUE(HasFile(L"b_wav.frq"));
  EXPECT_EQ(ReadWholeFile(Bank() + L"\\c.dio"), Bytes());
}

TEST_F(Converting, AsksForTheNotesOfAnAnalysisAndRemembersThem) {
  SetDllDirectoryW(std::filesystem::path(MARLIT_VSLIB_DOUBLE).parent_path().c_str());
  Install(L"vs4u.exe", 1);
  folder_.Write(L"bank\\a.wav", kSecondOfSound);
  Start(Bank());
  const auto boxes = [](HWND dialog) {
    std::wstring text;
    for (int box = IDC_VS4UFRQ_PRESET; box <= IDC_VS4UFRQ_HIGHOCTAVE; ++box) {
      text += WindowText(GetDlgItem(dialog, box)) + (IsWindowEnabled(GetDlgItem(dialog, box)) ? L"|" : L"-|");
    }
    return text + (IsDlgButtonChecked(dialog, IDC_VS4UFRQ_USEFRQ) ? L"x" : L"");
  };
  InDialog(ID_EDIT_CREATEMISSING, IDC_VS4UFRQ_PRESET, [&](HWND dialog) {
    EXPECT_EQ(boxes(dialog), LoadResString(IDS_RANGE_VOCAL) + L"|C-|1-|B-|7-|x");
    Pick(dialog, IDC_VS4UFRQ_PRESET, 4);
    EXPECT_EQ(boxes(dialog), LoadResString(IDS_RANGE_CUSTOM) + L"|C|1|B|7|x");
    Pick(dialog, IDC_VS4UFRQ_LOWNOTE, 9);
    Pick(dialog, IDC_VS4UFRQ_LOWOCTAVE, 4);
    Pick(dialog, IDC_VS4UFRQ_HIGHNOTE, 4);
    Pick(dialog, IDC_VS4UFRQ_HIGHOCTAVE, 2);
    SendDlgItemMessageW(dialog, IDC_VS4UFRQ_USEFRQ, BM_CLICK, 0, 0);
    Close(dialog, IDOK);
  });
  InDialog(ID_EDIT_CREATEMISSING, IDC_VS4UFRQ_PRESET, [&](HWND dialog) {
    EXPECT_EQ(boxes(dialog), LoadResString(IDS_RANGE_CUSTOM) + L"|E|3|A|5|") << "in order";
    EXPECT_EQ(Column(1), L"*|");
    Close(dialog, IDCANCEL);
  });
  int low = 0, range = 0, preset = 0;
  EXPECT_TRUE(RegReadValue(L"Vs4uOffset", low) && RegReadValue(L"Vs4uRange", range));
  EXPECT_TRUE(RegReadValue(L"Vs4uPreset", preset));
  EXPECT_EQ((std::array{low, range, preset}), (std::array{52, 30, 4}));
  // Whatever the registry holds.
  for (const auto& [stored, shown] : {std::pair(4, L"|C|1|B|7|"), {9, L"|C-|1-|C-|1-|"}}) {
    RegWriteValue(L"Vs4uPreset", stored);
    RegWriteValue(L"Vs4uOffset", stored == 4 ? 2147483647 : -5);
    RegWriteValue(L"Vs4uRange", stored == 4 ? 2147483647 : 30);
    InDialog(ID_EDIT_CREATEMISSING, IDC_VS4UFRQ_PRESET, [&, text = shown](HWND dialog) {
      EXPECT_TRUE(boxes(dialog).ends_with(text)) << boxes(dialog).c_str();
      Close(dialog, IDCANCEL);
    });
  }
}

}  // namespace
