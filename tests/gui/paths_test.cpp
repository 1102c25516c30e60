// A voicebank in the home of a user whose name no code page holds, from the first folder to the sound, with a resampler
// that knows one code page alone.
#include "gui/resamplerdouble.h"
#include "resampler/preview.h"
#include "resampler/resamplerkind.h"

namespace {

struct AnyPath : DoubleTest {
  // The bytes of the map that a run leaves.
  std::optional<Bytes> Made() const { return ReadWholeFile(folder_.Path(L"program\\map")); }

  const ScratchVariable narrow_{L"MARLIT_DOUBLE_NARROW", L"1"};
};

TEST_F(AnyPath, IsListedMadeEditedSavedPlayedAndRemembered) {
  std::wstring deep = L"José 가나\\🎤\\声.";
  for (int i = 0; i < 8; ++i) deep += L"\\" + std::wstring(40, L'd');
  for (const std::wstring& name : {std::wstring(L"José 가나\\🎤\\声."), deep}) {
    SCOPED_TRACE(testing::PrintToString(name));
    const std::wstring bank = folder_.Path(name), wave = PathIn(bank, L"밤.wav");
    Install(L"resampler.exe");
    folder_.Write(L"program\\note", SecondOfSilence());
    AddSyllable(name + L"\\か", {220.0});
    folder_.Write(name + L"\\밤.wav", kSecondOfSound);
    Start(bank);
    EXPECT_EQ(Column(0) + Column(1) + Frames(), L"か.wav|밤.wav|*||220.00000000|");
    Script(L"0 0 map");
    Press(ID_EDIT_CREATEMISSING);
    EXPECT_EQ(Column(1), L"*|*|");
    EXPECT_EQ(ReadWholeFile(MapPathFromWaveW(wave, FrqTypeFrq)), Made());
    SetFirstFrame(L"330");
    Press(ID_FILE_SAVE);
    EXPECT_EQ(Column(2), L"||");
    FrqMap map;
    EXPECT_EQ(LoadMap(map, PathIn(bank, L"か.wav"), FrqTypeFrq, nullptr), 0);
    EXPECT_EQ(map.Frames[0].Frequency, 330.0);
    Script(L"0 0 note");
    Press(IDC_EDITOR_PLAY);
    EXPECT_TRUE(Eventually([this] { return WindowText(Item(IDC_EDITOR_PLAY)) == LoadResString(IDS_PLAY); }));
    EXPECT_TRUE(PreviewLogText.starts_with(L"succeed to play ") || PreviewLogText.starts_with(L"fail to play "))
        << PreviewLogText.c_str();
    Press(ID_RECENT_FIRST);
    EXPECT_EQ(Column(0), L"か.wav|밤.wav|");
    Leave();
  }
}

// "ā" and "a" are one letter to such a resampler.
TEST_F(AnyPath, NoMapOfALookAlikeIsMadeAnew) {
  Install(L"resampler.exe");
  Script(L"0 0 map");
  AddSyllable(L"bank\\a", {220.0});
  AddSyllable(L"bank\\ā", {230.0});
  const std::optional<Bytes> untouched = ReadWholeFile(Bank() + L"\\a_wav.frq");
  Start(Bank());
  Select(1);
  EXPECT_EQ(PressAndAnswer(ID_EDIT_INITIALIZE, IDYES), LoadResString(IDS_ASKINITIALIZE));
  EXPECT_EQ(Frames(), L"440.00000000|----|");
  EXPECT_EQ(ReadWholeFile(Bank() + L"\\a_wav.frq"), untouched);
}

// Nobody knows ahead whether such a resampler makes anything of such a path.
TEST_F(AnyPath, AMapStaysWhereNoOtherComesInItsPlace) {
  for (const wchar_t* const program : {L"resampler.exe", L"w4u.exe", L"moresampler.exe"}) {
    SCOPED_TRACE(program);
    Install(program);
    Script(L"0 -1 nothing");
    FrqMap map;
    map.Create(1, FrqTypeFrq);
    map.SetFrequency(0, 220.0);
    folder_.Write(L"bank\\밤.wav", kSecondOfSound);
    const FrqType kind = GetResamplerKind(program);
    MrqStore store;
    EXPECT_EQ(SaveMap(map, Wave(L"밤"), kind, &store), 0);
    Start(Bank());
    InDialog(ID_EDIT_INITIALIZEALL, IDYES, [&](HWND question) {
      PostMessageW(question, WM_COMMAND, IDYES, 0);
      HWND box = nullptr;
      const auto hasCome = [&] { return (box = FindDialogWith(L"Static", IDC_INITMRQ_BOTH)) != nullptr; };
      if (kind == FrqTypeMrq && Eventually(hasCome)) SendMessageW(box, WM_COMMAND, IDOK, 0);
    });
    EXPECT_EQ(Column(1), L"*|");
    EXPECT_EQ(Frames().substr(0, 7), L"220.000");
    Leave();
  }
}

}  // namespace
