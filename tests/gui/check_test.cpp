// The check: its settings, what the library is given, and what becomes of its answers.
#include "gui/checkwindows.h"

namespace {

using Check = CheckTest;

TEST_F(Check, TheSettingsAreOneNoteAndKeptAsARecord) {
  Script();
  AddSyllable(L"a", {220.0});
  Start(folder_.Path());
  const struct {
    const wchar_t *name, *octave;
    std::array<std::int32_t, 6> kept;
  } tests[] = {{L"C", L"4", {24, 60, 107, 1, 1, 1}}, {L"C#", L"3", {24, 49, 49, 1, 0, 1}}};
  for (const auto& test : tests) {
    const auto pressed = std::async(std::launch::async, [this] { Press(ID_TOOL_CHECK); });
    ASSERT_TRUE(Eventually([&] { return CheckDialog() != nullptr; }));
    const HWND dialog = CheckDialog();
    EXPECT_EQ(WindowText(GetDlgItem(dialog, IDC_CHECK_LOWNOTE)), test.name);
    EXPECT_EQ(WindowText(GetDlgItem(dialog, IDC_CHECK_LOWOCTAVE)), test.octave);
    EXPECT_FALSE(IsWindowVisible(GetDlgItem(dialog, IDC_CHECK_HIGHNOTE)));
    SendDlgItemMessageW(dialog, IDC_CHECK_LOWNOTE, CB_SETCURSEL, 1, 0);
    SendDlgItemMessageW(dialog, IDC_CHECK_LOWOCTAVE, CB_SETCURSEL, 2, 0);
    for (const int box : {IDC_CHECK_TRANSITION, IDC_CHECK_END}) CheckDlgButton(dialog, box, BST_CHECKED);
    Close(dialog, IDOK);
    pressed.wait();
    std::array<std::int32_t, 6> kept{};
    EXPECT_TRUE(RegReadValue(L"CheckFrqSettings", kept));
    EXPECT_EQ(kept, (std::array<std::int32_t, 6>{24, 49, 49, 1, 0, 1}));
    EXPECT_EQ(std::memcmp(Script().Settings, kept.data(), sizeof(kept)), 0);
  }
}

// A pair of frames sounds if one of them does, so that the region has one frame more than there are loud ones.
TEST_F(Check, TheLibraryIsGivenEachMapByteForByte) {
  CheckScript& script = Script();
  FrqMap map;
  map.Create(7, FrqTypeFrq);
  map.Average = 261.5;
  for (std::size_t i = 0; i < 7; ++i)
    map.Frames[i] = {.Frequency = i < 5 ? 200.0 + i : 55.0, .Amplitude = 3000.0 * (i < 5)};
  folder_.Write(L"a.wav");
  folder_.Write(L"b.wav");
  folder_.Write(L"b_wav.frq", EncodeFreq0003(map, FrqTypeFrq));
  folder_.Write(L"c.wav");
  folder_.Write(L"c_wav.frq", Bytes(7));
  Start(folder_.Path());
  RunCheck();
  ASSERT_TRUE(Eventually([&] { return script.Calls == 1; })) << "one map is missing and one is none";
  ASSERT_EQ(script.FramesSize, 584u + 7 * 40);
  Bytes expected(script.FramesSize);
  const auto put = [&](std::size_t offset, auto value) { std::memcpy(&expected[offset], &value, sizeof(value)); };
  put(0, 261.5);
  const std::wstring path = folder_.Path(L"b_wav.frq");
  std::memcpy(&expected[8], path.c_str(), 2 * path.size());
  put(528, 7);
  put(536, 256);
  for (std::size_t i = 0; i < 7; ++i) {
    put(544 + 40 * i, static_cast<char>(i >= 5));
    put(552 + 40 * i, map.Frames[i].Frequency);
    put(560 + 40 * i, map.Frames[i].Amplitude);
  }
  EXPECT_TRUE(std::equal(expected.begin(), expected.end(), script.Frames));
  const std::int32_t regions[] = {1, 0, 5, 0, 0};
  ASSERT_EQ(script.RegionsSize, sizeof(regions));
  EXPECT_EQ(std::memcmp(script.Regions, regions, sizeof(regions)), 0);
  Select(2);
  AddSyllable(L"c", {220.0, 330.0});
  RunCheck();
  EXPECT_EQ(Frames(), L"220.00000000|330.00000000|") << "the shown map can be read now";
}

TEST_F(Check, MarksFollowTheLastRunUntilTheLibraryStopsIt) {
  for (const wchar_t* name : {L"a", L"b", L"c", L"d"}) AddSyllable(name, std::vector<double>(4, 220.0));
  CheckScript& script = Script();
  Start(folder_.Path());
  const struct {
    std::vector<CheckScript::Answer> answers;
    int stopAt;
    std::wstring cells;
    std::string marks;
  } runs[] = {
      {{{1, 1, 1, 0.0}, {1, 2, 9, 440.0}, {3, 0, 1, 0.0}, {4, 3, 1, 0.0}}, 0, L"*||*|*|", ".xs. .... x... ...x "},
      {{{2, 0, 1, 0.0}, {3, 0, 1, 0.0}}, 3, L"|*|*|*|", ".... x... x... ...x "},
      {{{1, 0, 1, 0.0}}, 1, L"|*|*|*|", ".... x... x... ...x "},
      {{}, 0, L"||||", ".... .... .... .... "}};
  for (const auto& run : runs) {
    script = {};
    std::ranges::copy(run.answers, script.Answers);
    script.StopAt = run.stopAt;
    RunCheck();
    EXPECT_EQ(script.Calls, run.stopAt ? run.stopAt : 4);
    EXPECT_EQ(Column(3), run.cells);
    EXPECT_EQ(Marks(0) + ' ' + Marks(1) + ' ' + Marks(2) + ' ' + Marks(3) + ' ', run.marks);
    EXPECT_EQ(Column(2), L"||||") << "a mark is no edit";
  }
}

TEST_F(Check, WithoutALibraryItSaysSoAndChangesNothing) {
  AddSyllable(L"a", {220.0});
  const std::wstring rubbish = folder_.Path(L"rubbish");
  folder_.Write(L"rubbish\\checkfrq.dll", Bytes(3000, 'M'));
  Start(folder_.Path());
  for (const std::wstring& folder : {folder_.Path(), rubbish}) {
    FindLibrariesIn(folder);
    const auto run = std::async(std::launch::async, [&] { List().RunCheck({}); });
    ASSERT_TRUE(Eventually([&] { return FindBox() != nullptr; }));
    EXPECT_EQ(WindowText(GetDlgItem(FindBox(), 0xFFFF)), LoadResString(IDS_CHECKLIBRARYFAILED));
    EXPECT_EQ(GetWindow(FindBox(), GW_OWNER), list_);
    Close(FindBox(), IDOK);
  }
  FindLibrariesIn(DoubleFolder("nothing"));
  List().RunCheck({});
  EXPECT_FALSE(FindBox()) << "a library without the entry is passed over";
  EXPECT_FALSE(GetModuleHandleW(L"checkfrq.dll")) << "it may be exchanged while the program runs";
  EXPECT_EQ(Column(3), L"|");
}

// With the library that comes along, and all thumbnails open.
TEST_F(Check, OddMapsAreShownAndCheckedAmongTheOthers) {
  const std::string odd[] = {"amplitude-nan", "count-too-low", "infinite", "nan-and-negative", "zero-frames"};
  for (const std::string& name : odd) {
    folder_.Write(testdata::Wide(name) + L".wav");
    folder_.Write(testdata::Wide(name) + L"_wav.frq", testdata::FileBytes("bad/frq-" + name + "_wav.frq"));
  }
  AddSyllable(L"gone", {220.0});
  AddSyllable(L"long", std::vector<double>(100000, 220.0));
  AddSyllable(L"one", {220.0});
  AddSyllable(L"unvoiced", std::vector<double>(300, 55.0));
  FrqMap map;
  map.Create(300, FrqTypeFrq);
  map.Average = 262.0;
  for (int i = 0; i < 300; ++i) map.Frames[i] = {.Frequency = i / 5 == 30 ? 524.0 : 262.0, .Amplitude = 3000.0};
  folder_.Write(L"wrong.wav");
  folder_.Write(L"wrong_wav.frq", EncodeFreq0003(map, FrqTypeFrq));
  Start(folder_.Path());
  DeleteFileW(folder_.Path(L"gone_wav.frq").c_str());
  Press(ID_VIEW_THUMBNAIL);
  RunCheck();
  EXPECT_EQ(Column(0),
            L"amplitude-nan.wav|count-too-low.wav|gone.wav|infinite.wav|long.wav|nan-and-negative.wav|"
            L"one.wav|unvoiced.wav|wrong.wav|zero-frames.wav|");
  EXPECT_EQ(Marks(8).substr(149, 7), ".sssss.");
  EXPECT_EQ(Marks(2), "") << "its file has gone";
  ASSERT_TRUE(Eventually([] { return Bar() != nullptr; }));
  SendMessageW(Bar(), WM_COMMAND, IDC_MODIFY_MODIFYALL, 0);
  EXPECT_NEAR(List().Map(8)->Frames[152].Frequency, 262.0, 5.0);
  EXPECT_TRUE(Eventually([&] { return List().Map(4)->Loaded; }));
}

}  // namespace
