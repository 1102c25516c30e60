// The questions where edits would go, and that edits stay wherever nobody has given them up.
#include "frqmap/edits.h"
#include "gui/resamplerdouble.h"

namespace {

struct Questions : DoubleTest {
  void PressEscapeInList() const { PostMessageW(GetDlgItem(list_, IDC_LIST_FILES), WM_KEYDOWN, VK_ESCAPE, 0); }
  void EditThree() {
    for (const wchar_t* const name : {L"bank\\a", L"bank\\b", L"bank\\c"}) AddSyllable(name, {220.0});
    Start(Bank());
    for (const int row : {2, 1, 0}) Select(row), SetFirstFrame(L"100");
  }
};

TEST_F(Questions, EscapeInTheListAsksForTheEditsOnce) {
  AddSyllable(L"bank\\a", {220.0});
  for (const bool isEdited : {true, false}) {
    SCOPED_TRACE(isEdited);
    Start(Bank());
    SendMessageW(list_, WM_SYSCOMMAND, SC_CLOSE, 0);
    SendMessageW(list_, WM_CLOSE, 0, 0);
    EXPECT_TRUE(IsWindowVisible(list_)) << "it has no close command";
    if (isEdited) {
      SetFirstFrame(L"100");
      EXPECT_EQ(Answer([this] { PressEscapeInList(); }, {IDNO}), LoadResString(IDS_DISCARD));
      ASSERT_TRUE(Eventually([this] { return IsWindowEnabled(list_) && IsWindowEnabled(editor_); }));
      EXPECT_EQ(Column(2) + Frames(), L"*|100.00000000|");
      EXPECT_EQ(Answer([this] { SendMessageW(list_, WM_COMMAND, IDCANCEL, 0); }, {IDYES}), LoadResString(IDS_DISCARD));
    } else {
      PressEscapeInList();
    }
    EXPECT_TRUE(Eventually([this] { return !IsWindow(list_); }));
    PostMessageW(editor_, WM_COMMAND, IDCANCEL, 0);
    EXPECT_EQ(ExitCode(), 0) << "it asked again";
    editor_ = list_ = nullptr;
  }
}

TEST_F(Questions, AJobAsksForTheEditsThatItCostsAndKeepsTheOthers) {
  Install(L"resampler.exe");
  Script(L"300 0 map");
  EditThree();
  const auto press = [this](UINT command) { return [=, this] { Press(command); }; };
  const std::wstring discard = LoadResString(IDS_DISCARD), initialize = LoadResString(IDS_ASKINITIALIZE);
  const auto frames = [this] {
    std::wstring texts;
    for (int i = 0; i < 3; ++i) texts += FrequencyText(List().Map(i)->Frames[0].Frequency).substr(0, 4) + L"|";
    return texts + Column(2);
  };

  EXPECT_EQ(Answer(press(ID_EDIT_INITIALIZE), {IDYES, IDNO}), discard + initialize);
  EXPECT_EQ(frames(), L"100.|100.|100.|*|*|*|");
  EXPECT_EQ(Answer(press(ID_EDIT_INITIALIZE), {IDYES, IDYES}), discard + initialize);
  EXPECT_TRUE(Eventually([&] { return frames() == L"440.|100.|100.||*|*|"; })) << frames().c_str();
  EXPECT_EQ(PressAndAnswer(ID_EDIT_INITIALIZE, IDYES), initialize) << "the others are not its business";
  ASSERT_TRUE(Eventually([this] { return IsWindowEnabled(editor_) && IsWindowEnabled(list_); }));

  InDialog(ID_EDIT_CONVERT, IDC_CONVERT_FROM, [](HWND dialog) {
    Pick(dialog, IDC_CONVERT_TO, 1);
    Close(dialog, IDOK);
  });
  EXPECT_TRUE(HasFile(L"b_wav.frc"));
  EXPECT_EQ(frames(), L"440.|100.|100.||*|*|") << "maps of another kind cost no edits";

  EXPECT_TRUE(DeleteFileW((Bank() + L"\\b_wav.frq").c_str()));
  List().RefreshMaps();
  EXPECT_EQ(Column(1) + frames(), L"*|*|*|440.|100.|100.||*|*|") << "edits outlive their file";
  EXPECT_EQ(PressAndAnswer(ID_EDIT_CREATEMISSING, IDNO), discard);
  Select(1);
  Press(ID_FILE_SAVE);
  EXPECT_TRUE(HasFile(L"b_wav.frq"));

  {
    const auto pressed = std::async(std::launch::async, press(ID_EDIT_INITIALIZEALL));
    Answer([] {}, {IDYES, IDYES});
    HWND progress = nullptr;
    EXPECT_TRUE(Eventually([&] { return (progress = FindDialogWith(PROGRESS_CLASSW)) != nullptr; }));
    Close(progress, IDCANCEL);
  }
  EXPECT_EQ(frames(), L"440.|100.|100.|||*|") << "the job did not come that far";
}

TEST_F(Questions, ASaveAsksWhatBecomesOfAnotherProgramsChange) {
  const auto text = [](const wchar_t* wave) { return FormatText(LoadResString(IDS_MAPCHANGED).c_str(), wave); };
  const auto inFile = [this](const std::wstring& name) {
    return DecodeFreq0003(*ReadWholeFile(Bank() + L"\\" + name + L"_wav.frq"))->Frames[0].Frequency;
  };
  EditThree();
  for (const wchar_t* const name : {L"bank\\a", L"bank\\b"}) AddSyllable(name, {330.0, 340.0});
  const auto saveAll = [this] { Press(ID_FILE_SAVEALL); };

  for (const WORD key : {VK_RETURN, VK_ESCAPE}) {
    InDialog(ID_FILE_SAVE, IDC_MAPCHANGED_TEXT, [&](HWND dialog) {
      EXPECT_FALSE(IsWindowEnabled(list_) || IsWindowEnabled(editor_));
      PressKeys(dialog, {key});
      EXPECT_TRUE(Eventually([&] { return !IsWindowVisible(dialog); }));
    });
    EXPECT_EQ(Column(2) + Frames(), L"*|*|*|100.00000000|");
  }
  EXPECT_EQ(Answer(saveAll, {IDC_MAPCHANGED_OVERWRITE, IDCANCEL}, IDC_MAPCHANGED_TEXT),
            text(L"a.wav") + text(L"b.wav"));
  EXPECT_EQ(Column(2), L"|*|*|");
  EXPECT_TRUE(inFile(L"a") == 100.0 && inFile(L"b") == 330.0 && inFile(L"c") == 220.0);
  EXPECT_EQ(Answer(saveAll, {IDC_MAPCHANGED_RELOAD}, IDC_MAPCHANGED_TEXT), text(L"b.wav"));
  EXPECT_EQ(Column(2), L"|||");
  EXPECT_TRUE(inFile(L"b") == 330.0 && inFile(L"c") == 100.0);
  Select(1);
  EXPECT_EQ(Frames(), L"330.00000000|340.00000000|");

  SetFirstFrame(L"110");
  AddSyllable(L"bank\\b", {550.0});
  DWORD error = 1;
  SendMessageW(list_, FLM_SAVECURRENT, FALSE, reinterpret_cast<LPARAM>(&error));
  EXPECT_TRUE(error == 0 && inFile(L"b") == 110.0) << "another program that saves cannot be asked";
}

TEST_F(Questions, AChangeOfOneEntryConcernsNoOtherOfItsFile) {
  Install(L"moresampler.exe");
  for (const wchar_t* const name : {L"ni", L"ta"})
    folder_.Write(L"bank\\" + std::wstring(name) + L".wav", kSecondOfSound);
  MrqStore other;
  other.AddFolder(Bank());
  const auto write = [&](const wchar_t* name, double hz) {
    FrqMap map;
    map.Create(2, FrqTypeMrq);
    map.SetFrequency(0, hz);
    EXPECT_EQ(SaveMap(map, Wave(name), FrqTypeMrq, &other), 0);
  };
  write(L"ni", 220.0), write(L"ta", 220.0);
  Start(Bank());
  for (const int row : {1, 0}) Select(row), SetFirstFrame(L"100");
  write(L"ta", 330.0);
  Select(1);
  PressAndAnswer(ID_FILE_SAVE, IDC_MAPCHANGED_RELOAD, IDC_MAPCHANGED_TEXT);
  EXPECT_TRUE(Eventually([this] { return Column(3) + Frames() == L"*||330.00000000|----|"; })) << Frames().c_str();
  Select(0);
  Press(ID_FILE_SAVE);
  EXPECT_EQ(Column(3), L"||") << "its own entry was as it had been";
}

}  // namespace
