// The folder for scratch files, among what others have put into the folder that all share.
#include "base/tempfolder.h"

#include "base/text.h"
#include "driver/programs.h"
#include "win/scratch.h"
#include "win/scratchvariable.h"

namespace {

// A process that runs until the end of the scope.
struct Process {
  explicit Process(const std::wstring& line) : made_(StartProgram(line, L"C:\\")) {}
  ~Process() { TerminateProcess(made_.first.get(), 1); }

  const std::pair<UniqueHandle<KernelTraits>, DWORD> made_;
};

bool IsLink(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT);
}

// Makes a link in a folder to its neighbour, or takes it away: by the system below Wine, as Wine itself cannot.
bool Link(const std::wstring& folder, const std::wstring& name, const std::wstring& target) {
  const bool make = !target.empty();
  StartProgram(make ? L"Z:\\bin\\ln -s " + target + L" " + name : L"Z:\\bin\\rm " + name, folder.c_str());
  return Eventually([&] { return IsLink(folder + L'\\' + name) == make; });
}

struct TemporaryFolder : testing::Test {
  TemporaryFolder() { std::filesystem::create_directories(folder_.Path()); }
  const ScratchFolder folder_;
  const ScratchVariable temporary_{L"TMP", folder_.Path()};
  const std::wstring name_ = FormatText(L"marlit_%d_%d", GetCurrentProcessId(), GetCurrentThreadId());
};

TEST_F(TemporaryFolder, IsNewAndTakesNothingOfOthersAlong) {
  folder_.Write(name_ + L"\\theirs.txt");
  folder_.Write(name_ + L"_2");
  TempFolder made;
  made.Make();
  EXPECT_EQ(made.Path(), folder_.Path(name_ + L"_3"));
  folder_.Write(name_ + L"_3\\a.wav");
  folder_.Write(name_ + L"_3\\kept\\a.wav");
  TempFolder::Empty(made.Path());
  TempFolder::Empty(L"");
  made.Remove();
  EXPECT_EQ(NamesIn(made.Path()), std::set<std::wstring>{L"kept"});
  EXPECT_EQ(NamesIn(folder_.Path(name_)), std::set<std::wstring>{L"theirs.txt"});
}

TEST_F(TemporaryFolder, ThoseOfTheDeadGoAndNoOthers) {
  wchar_t own[MAX_PATH] = L"";
  GetModuleFileNameW(nullptr, own, MAX_PATH);
  const Process same(L"\"" + std::wstring(own) + L"\" --gtest_filter=Handle.* --gtest_repeat=-1");
  const Process other(L"C:\\windows\\system32\\notepad.exe");
  for (const std::wstring name : {L"marlit_999999996_8", L"marlit_999999996_8_2", L"marlit_999999996_9",
                                  L"marlit_999999996_8 my own", L"marlit_999999996", L"other_999999996_8"}) {
    folder_.Write(name + L"\\a.wav");
  }
  folder_.Write(L"marlit_999999996_9\\kept\\a.wav");
  const std::wstring ofSame = FormatText(L"marlit_%d_8", same.made_.second);
  folder_.Write(ofSame + L"\\a.wav");
  const std::wstring ofOther = FormatText(L"marlit_%d_8", other.made_.second);
  folder_.Write(ofOther + L"\\a.wav");
  folder_.Write(L"theirs\\a.wav");
  const std::wstring link = L"marlit_999999996_7";
  ASSERT_TRUE(Link(folder_.Path(), link, L"theirs"));
  std::set<std::wstring> left = NamesIn(folder_.Path());
  for (const std::wstring& gone : {std::wstring(L"marlit_999999996_8"), std::wstring(L"marlit_999999996_8_2"), ofOther})
    left.erase(gone);
  TempFolder made;
  made.Make();
  made.Remove();
  EXPECT_EQ(NamesIn(folder_.Path()), left);
  EXPECT_EQ(NamesIn(folder_.Path(L"marlit_999999996_9")), std::set<std::wstring>{L"kept"});
  TempFolder::Empty(folder_.Path(link));
  EXPECT_EQ(NamesIn(folder_.Path(L"theirs")), std::set<std::wstring>{L"a.wav"});
  ASSERT_TRUE(Link(folder_.Path(), link, L""));
}

}  // namespace
