// The keys of daily work: what each does to the frames, and where it leads.
#include "frqctrl/frqctrlmessages.h"
#include "gui/checkwindows.h"

namespace {

struct DailyKeys : CheckTest {
  double Hz(int frame) const { return List().Map(0)->Frames[static_cast<std::size_t>(frame)].Frequency; }
  void PressUntil(const std::vector<WORD>& keys, const std::function<bool()>& done) const {
    EXPECT_TRUE(CheckTest::PressUntil(editor_, keys, done)) << keys.back();
  }
  bool IsInMenu() const { return InputOf(editor_).flags & GUI_INMENUMODE; }
  int Shown() const { return ListView_GetNextItem(GetDlgItem(list_, IDC_LIST_FILES), -1, LVNI_SELECTED); }
};

TEST_F(DailyKeys, ChangeTheSelectedFramesAndPlaceTheView) {
  AddSyllable(L"a", {100.0, 100.0, 100.0, 300.0, 300.0, 300.0});
  Start(folder_.Path());
  SelectFrames({1, 2});
  const auto is = [this](double hz) { return [this, hz] { return std::abs(Hz(1) - hz) < 1e-9 && Hz(0) == 100.0; }; };
  PressUntil({VK_MENU, VK_UP}, is(200.0));
  Sleep(100);
  EXPECT_FALSE(IsInMenu()) << "Alt let go opens no menu behind a key";
  PressUntil({VK_MENU, VK_DOWN}, is(100.0));
  PressUntil({VK_MENU, VK_SHIFT, VK_UP}, is(300.0));
  PressUntil({VK_MENU, VK_SHIFT, VK_DOWN}, is(100.0));
  PressUntil({VK_CONTROL, 'K'}, [this] { return List().Map(0)->Average == 100.0; });
  PressUntil({VK_CONTROL, VK_DELETE}, is(FrqNoPitch));
  PressUntil({VK_CONTROL, 'L'}, is(100.0));
  SelectFrames({0, 3});
  PressUntil({VK_CONTROL, 'I'}, [this] { return Hz(1) > 101.0 && Hz(2) > Hz(1) && Hz(2) < 299.0; });

  const FrqCtrlSender table(Item(IDC_EDITOR_TABLE));
  PressUntil({VK_CONTROL, '0'}, [&] { return table.Zoom() > 1; });
  const int zoom = table.Zoom();
  PressUntil({VK_CONTROL, VK_OEM_MINUS}, [&] { return table.Zoom() < zoom; });
  PressUntil({VK_CONTROL, VK_OEM_PLUS}, [&] { return table.Zoom() >= zoom; });
}

TEST_F(DailyKeys, LeadToWhatWantsWorkAndSayWhereThereIsNone) {
  for (const wchar_t* const name : {L"a", L"b", L"c", L"d"}) AddSyllable(name, std::vector<double>(4, 220.0));
  folder_.Write(L"e.wav");
  folder_.Write(L"f.wav");
  CheckScript& script = Script();
  script.Answers[0] = {1, 1, 1, 0.0};
  script.Answers[1] = {3, 2, 1, 0.0};
  folder_.Write(L"f_wav.frq", Bytes(7));
  Start(folder_.Path());
  Select(0);
  Press(ID_GO_NEXTUNSAVED);
  EXPECT_TRUE(HasSaid(LoadResString(IDS_NOWHERE)));
  Press(ID_GO_NEXTMARK);
  EXPECT_TRUE(HasSaid(LoadResString(IDS_NOMOREMARKS)));
  RunCheck();
  PressUntil({VK_F3}, [this] { return Shown() == 2; });
  PressUntil({VK_SHIFT, VK_F3}, [this] { return Shown() == 0; });
  SendMessageW(Bar(), WM_CLOSE, 0, 0);

  Select(2);
  SetFirstFrame(L"440");
  Select(0);
  PressUntil({VK_F6}, [this] { return Shown() == 2; });
  PressUntil({VK_F8}, [this] { return Shown() == 4; });
  PressUntil({VK_F7}, [this] { return Shown() == 5; });
}

}  // namespace
