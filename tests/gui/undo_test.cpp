// Undo and redo in the windows: what each gesture leaves behind, its way back and forth, and what reaches the files.
#include "gui/checkwindows.h"
#include "gui/resamplerdouble.h"

namespace {

struct Undo : CheckTest {
  // The first syllable and the list as they are seen, and what the files of all would hold.
  using State = std::pair<std::wstring, std::vector<Bytes>>;

  void Begin() {
    for (const std::wstring& name : names_) AddSyllable(name, std::vector<double>(60, 220.0));
    Start(folder_.Path());
    for (const int row : {2, 1, 0}) Select(row);
  }
  State Now() const {
    Select(0);
    State state{Frames() + WindowText(Item(IDC_EDITOR_KEY)) + Column(2) + Column(3), {}};
    for (int i = 0; i < 3; ++i) state.second.push_back(EncodeFreq0003(*List().Map(i), FrqTypeFrq));
    return state;
  }
  State After(UINT command) const {
    Press(command);
    return Now();
  }
  std::vector<Bytes> SaveAll() const {
    Press(ID_FILE_SAVEALL);
    std::vector<Bytes> files;
    for (const std::wstring& name : names_) files.push_back(*ReadWholeFile(folder_.Path(name + L"_wav.frq")));
    return files;
  }
  void Drag(int x, int y, UINT down, UINT up) const {
    Mouse(down, x, y);
    for (const int step : {5, 9}) Mouse(WM_MOUSEMOVE, x + (x > 2 ? step : 0), y - step);
    Mouse(up, x, y);
  }
  void Draw(int row, int x) const {
    Select(row);
    Drag(x, 100, WM_LBUTTONDOWN, WM_LBUTTONUP);
  }
  void Click(UINT button, const std::vector<int>& frames) const {
    SelectFrames(frames);
    Press(button);
  }
  // Marks in two syllables, and the bar at the first of them.
  void Check() {
    if (Bar()) PostMessageW(Bar(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(Eventually([] { return !Bar(); }));
    Script() = {{{1, 3, 1, 440.0}, {2, 5, 1, 440.0}}, 0, 0, {}};
    RunCheck();
    EXPECT_TRUE(Eventually([&] { return IsWindowVisible(Bar()) && SelectedFrames() == std::vector{3}; }));
  }

  const std::vector<std::wstring> names_ = {L"a", L"b", L"c"};
};

TEST_F(Undo, TakesBackEachGestureAndDoesItAgain) {
  Script();
  Begin();
  const auto click = [this](UINT button, std::vector<int> frames) { return [=, this] { Click(button, frames); }; };
  const auto inBar = [](WPARAM button) { return [=] { SendMessageW(Bar(), WM_COMMAND, button, 0); }; };
  const auto none = [] {};
  const auto flatten = [this] { Mouse(WM_LBUTTONDBLCLK, 2, 80); };
  const auto check = [this] { Check(); };
  const auto twice = click(IDC_EDITOR_DOUBLE, {4, 5, 6});
  const auto twiceInTwo = [&] { twice(), Select(1), twice(); };
  const auto leaveKey = [this] { SendItem(IDC_EDITOR_KEY, WM_KILLFOCUS); };
  const auto typeKey = [&] { Type(IDC_EDITOR_KEY, L"300.50000000"), leaveKey(); };
  const std::tuple<std::wstring, std::function<void()>, std::function<void()>> gestures[] = {
      {L"Stroke", none, [this] { Draw(0, 100); }},
      {L"Erasing", none, [this] { Drag(100, 100, WM_RBUTTONDOWN, WM_RBUTTONUP); }},
      {L"Flattening", none, flatten},
      {L"Drag of Key", flatten, [this] { Drag(2, 80, WM_LBUTTONDOWN, WM_LBUTTONUP); }},
      {L"Set", none, [this] { SetFirstFrame(L"246.25"); }},
      {L"x3", none, click(IDC_EDITOR_TRIPLE, {1, 2})},
      {L"x2", none, click(IDC_EDITOR_DOUBLE, {1, 59})},
      {L"Removal of Pitch", none, click(IDC_EDITOR_UNVOICE, {0})},
      {L"/2", twice, click(IDC_EDITOR_HALVE, {5, 6, 7})},
      {L"/3", none, click(IDC_EDITOR_THIRD, {8})},
      {L"Interpolation (avg)", twice, click(IDC_EDITOR_INTERPOLATE, {5, 12, 20})},
      {L"Key from Selection", none, click(IDC_EDITOR_KEYFROMSELECTION, {10, 13})},
      {L"Typed Key", twice, typeKey},
      {L"Reload of Selection", twice, click(ID_EDIT_RELOADSELECTED, {4, 5, 6})},
      {L"Reload", twice, click(ID_EDIT_RELOAD, {})},
      {L"Reload of All", twiceInTwo, [this] { PressAndAnswer(ID_EDIT_RELOADALL, IDYES); }},
      {L"Modify", check, inBar(IDC_MODIFY_MODIFY)},
      {L"Ignore", check, inBar(IDC_MODIFY_IGNORE)},
      {L"Modify All", check, inBar(IDC_MODIFY_MODIFYALL)}};
  const std::vector<Bytes> asTheyWere = SaveAll();
  for (const auto& [name, prepare, gesture] : gestures) {
    SCOPED_TRACE(testing::PrintToString(name));
    prepare();
    const State before = Now();
    gesture();
    const State after = Now();
    EXPECT_NE(after, before);
    EXPECT_EQ(MenuText(ID_EDIT_UNDO), L"&Undo " + name + L"\tCtrl+Z");
    EXPECT_EQ(After(ID_EDIT_UNDO), before);
    EXPECT_EQ(MenuText(ID_EDIT_REDO), L"Re&do " + name + L"\tCtrl+Y");
    EXPECT_EQ(After(ID_EDIT_REDO), after);
    EXPECT_EQ(SaveAll(), after.second);
    while (!IsGrey(ID_EDIT_UNDO)) Press(ID_EDIT_UNDO);
    EXPECT_EQ(SaveAll(), asTheyWere);
  }
  leaveKey();
  EXPECT_EQ(Column(2) + MenuText(ID_EDIT_UNDO), L"*|||&Undo\tCtrl+Z")
      << "to go through the box is an edit, and no step";
}

TEST_F(Undo, GoesFromSyllableToSyllableAndPastASave) {
  Begin();
  std::vector<State> states = {Now()};
  const int rows[] = {0, 2, 1};
  for (const int row : rows) {
    Draw(row, 60 + 20 * row);
    states.push_back(Now());
  }
  const auto step = [&](UINT command, int row, const State& to) {
    const FrqMap before = *List().Map(row);
    Press(command);
    std::vector<int> changed;
    for (std::size_t i = 0; i < 60; ++i) {
      if (before.Frames[i].Frequency != List().Map(row)->Frames[i].Frequency) changed.push_back(static_cast<int>(i));
    }
    EXPECT_GT(changed.size(), 1u);
    EXPECT_EQ(std::tuple(List().Selection(), SelectedFrames(), SelectionOfMap(row)), std::tuple(row, changed, changed));
    EXPECT_EQ(Now(), to);
  };
  for (std::size_t i = 3; i > 0; --i) step(ID_EDIT_UNDO, rows[i - 1], states[i - 1]);
  EXPECT_TRUE(IsGrey(ID_EDIT_UNDO) && IsGrey(ID_FILE_SAVEALL));
  for (std::size_t i = 0; i < 3; ++i) step(ID_EDIT_REDO, rows[i], states[i + 1]);
  EXPECT_EQ(SaveAll(), states[3].second);
  EXPECT_EQ(After(ID_EDIT_UNDO).second, states[2].second);
  EXPECT_EQ(Column(2), L"|*||");
}

using Keys = DoubleTest;

TEST_F(Keys, ServeABoxFirstAndAllWindowsButNotUnderAMessageOrAJob) {
  Install(L"resampler.exe");
  Script(L"1000 0 map");
  for (const wchar_t* const name : {L"bank\\a", L"bank\\b"}) AddSyllable(name, {220.0});
  folder_.Write(L"bank\\c.wav");
  Start(Bank());
  const auto showsAfter = [this](HWND front, const std::vector<WORD>& keys, const std::wstring& framesAndEdited) {
    return PressUntil(front, keys, [&] { return Frames() + Column(2) == framesAndEdited; });
  };
  SetFirstFrame(L"100");
  const std::wstring edited = L"100.00000000|*|||", asItWas = L"220.00000000||||", changed = L"220.00000000|*|||";
  EXPECT_TRUE(showsAfter(editor_, {VK_CONTROL, 'Z'}, asItWas));
  for (const int box : {IDC_EDITOR_FREQUENCY, IDC_EDITOR_KEY}) {
    SetFirstFrame(L"100");
    const std::wstring text = WindowText(Item(box));
    ProgramTest::Click(box);
    for (const wchar_t digit : {L'1', L'2'}) SendItem(box, WM_CHAR, digit);
    EXPECT_EQ(WindowText(Item(box)), L"12" + text);
    PressKeys(editor_, {VK_CONTROL, 'Z'});
    EXPECT_TRUE(Eventually([&] { return WindowText(Item(box)) == text; }));
    EXPECT_EQ(Frames() + Column(2), edited);
    EXPECT_TRUE(showsAfter(editor_, {VK_CONTROL, 'Z'}, asItWas));
  }
  Type(IDC_EDITOR_KEY, L"-30o0.5");
  EXPECT_EQ(List().Map(0)->Average, 261.5);
  SendItem(IDC_EDITOR_KEY, WM_KILLFOCUS);
  EXPECT_EQ(std::pair(List().Map(0)->Average, WindowText(Item(IDC_EDITOR_KEY))),
            std::pair(300.5, std::wstring(L"300.5")));
  PressKeys(editor_, {VK_CONTROL, 'Z'});
  EXPECT_TRUE(Eventually([&] { return Frames() + Column(2) == asItWas; })) << "what became a step is not the box's";
  SetFirstFrame(L"100");
  constexpr WORD ctrl = VK_CONTROL;
  const std::pair<std::vector<WORD>, std::wstring> keys[] = {
      {{ctrl, 'Z'}, asItWas},     {{ctrl, VK_SHIFT, 'Z'}, edited},
      {{ctrl, 'Z'}, asItWas},     {{ctrl, 'Y'}, edited},
      {{ctrl, VK_DOWN}, L"*|||"}, {{ctrl, 'S'}, L"*|||"},  // nothing, as that one is not edited
      {{ctrl, VK_UP}, edited},    {{ctrl, 'S'}, L"100.00000000||||"}};
  for (const auto& [pressed, shown] : keys) EXPECT_TRUE(showsAfter(list_, pressed, shown)) << pressed.back();
  SelectFrames({});
  EXPECT_TRUE(Eventually([&] { return PressKeys(editor_, {ctrl, 'A'}), SelectedFrames() == std::vector{0}; }));
  for (const auto& [command, answer] : {std::pair(ID_EDIT_RELOADALL, IDNO), std::pair(ID_EDIT_CREATEMISSING, IDOK)}) {
    Press(ID_VIEW_THUMBNAIL);
    HWND thumbnails = nullptr, box = nullptr;
    EXPECT_TRUE(Eventually([&] { return IsWindowVisible(thumbnails = List().ThumbnailWindow()); }));
    EXPECT_TRUE(showsAfter(thumbnails, {VK_CONTROL, 'Z'}, changed));
    const auto done = std::async(std::launch::async, [&, command = command] { Press(command); });
    EXPECT_TRUE(Eventually([&] { return (box = FindBox()) && box != thumbnails && !IsWindowEnabled(editor_); }));
    for (const WORD key : {'Y', 'S'}) PressKeys(thumbnails, {VK_CONTROL, key});
    EXPECT_TRUE(PressUntil(thumbnails, {VK_ESCAPE}, [&] { return !IsWindow(thumbnails); })) << "it takes keys";
    Close(box, static_cast<WPARAM>(answer));
    done.wait();
    EXPECT_EQ(Frames() + Column(2), changed);
  }
  Press(ID_FILE_SAVE);
  EXPECT_TRUE(Eventually([&] { return PressKeys(editor_, {ctrl, 'Q'}), !IsWindow(editor_); }));
}

}  // namespace
