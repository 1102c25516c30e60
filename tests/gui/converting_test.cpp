// Maps converted to other kinds by the user's command, and the settings of an analysis by the library.
#include <utility>

#include "frqmap/vslib.h"
#include "gui/resamplerdouble.h"

namespace {

struct Converting : DoubleTest {
  ~Converting() override {
    Leave();
    if (VsHelper::Shared().Module) FreeLibrary(std::exchange(VsHelper::Shared().Module, nullptr));
  }

  void Convert(int from, int to) const {
    InDialog(ID_EDIT_CONVERT, IDC_CONVERT_FROM, [=](HWND dialog) {
      Pick(dialog, IDC_CONVERT_FROM, from);
      Pick(dialog, IDC_CONVERT_TO, to);
      Close(dialog, IDOK);
    });
  }
};

// To entries and from them; the arithmetic of every pair of kinds is compared elsewhere.
TEST_F(Converting, ConvertsAllThatHaveAMapOrOnlyTheShownSyllable) {
  Install(L"moresampler.exe", 2);
  AddSyllable(L"bank\\a", {220.0});
  AddSyllable(L"bank\\b", {330.0});
  Start(Bank());
  Select(1);
  InDialog(ID_EDIT_CONVERT, IDC_CONVERT_FROM, [&](HWND dialog) {
    SendMessageW(dialog, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(IsWindowVisible(dialog)) << "a kind is not converted to itself";
    Pick(dialog, IDC_CONVERT_TO, 5);
    SendDlgItemMessageW(dialog, IDC_CONVERT_ONE, BM_CLICK, 0, 0);
    Close(dialog, IDOK);
  });
  EXPECT_EQ(Column(1) + Frames(), L"|*|330.00000000|");
  Convert(5, 1);
  EXPECT_TRUE(HasFile(L"b_wav.frc") && HasFile(L"b_wav.frq") && !HasFile(L"a_wav.frc"));
  EXPECT_EQ(Column(1), L"|*|");
}

TEST_F(Converting, AFailureCostsTheTargetAndKeepsTheSource) {
  Install(L"w4u.exe", 1);
  for (const wchar_t* const name : {L"a", L"b", L"c"}) AddSyllable(L"bank\\" + std::wstring(name), {220.0});
  folder_.Write(L"bank\\b_wav.frq", {1, 2, 3});
  for (const wchar_t* const name : {L"a.dio", L"b.dio", L"c.dio"}) folder_.Write(L"bank\\" + std::wstring(name));
  Start(Bank());
  Convert(0, 4);
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
      text += WindowText(GetDlgItem(dialog, box)) + L"|";
    }
    return text;
  };
  InDialog(ID_EDIT_CREATEMISSING, IDC_VS4UFRQ_PRESET, [&](HWND dialog) {
    int box = IDC_VS4UFRQ_PRESET;
    for (const int position : {4, 9, 4, 4, 2}) Pick(dialog, box++, position);
    Close(dialog, IDOK);
  });
  InDialog(ID_EDIT_CREATEMISSING, IDC_VS4UFRQ_PRESET, [&](HWND dialog) {
    EXPECT_EQ(boxes(dialog), LoadResString(IDS_RANGE_CUSTOM) + L"|E|3|A|5|") << "in order";
    EXPECT_EQ(Column(1), L"*|");
    Close(dialog, IDCANCEL);
  });
  // Whatever the registry holds.
  for (const wchar_t* const name : {L"Vs4uOffset", L"Vs4uRange"}) RegWriteValue(name, 2147483647);
  InDialog(ID_EDIT_CREATEMISSING, IDC_VS4UFRQ_PRESET, [&](HWND dialog) {
    EXPECT_TRUE(boxes(dialog).ends_with(L"|C|1|B|7|")) << boxes(dialog).c_str();
    Close(dialog, IDCANCEL);
  });
}

}  // namespace
