// The kind of map that the program works on follows the name of the resampler.
#include "base/registry.h"
#include "gui/program.h"
#include "native/testdata.h"

namespace {

class WorkingKind : public ProgramTest {
 protected:
  std::wstring Titles() const {
    const HWND rows = GetDlgItem(list_, IDC_LIST_FILES);
    std::wstring titles;
    wchar_t text[99] = L"";
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT;
    column.pszText = text;
    column.cchTextMax = 99;
    for (int i = 0; ListView_GetColumn(rows, i, &column); ++i) titles.append(text) += L'|';
    return titles;
  }
};

TEST_F(WorkingKind, DecidesWhichMapsCountAndWhichColumnsStand) {
  for (const wchar_t* const name : {L"a_wav.frq", L"b_wav.vs4ufrq", L"c_wav.frc", L"d_wav.pmk", L"e.dio"}) {
    folder_.Write(std::wstring(1, name[0]) + L".wav");
    folder_.Write(name);
  }
  folder_.Write(L"na.wav");
  folder_.Write(L"na.wav.llsm");
  folder_.Write(L"desc.mrq", testdata::FileBytes("mrq/02-in-place/desc.mrq"));
  const struct {
    const wchar_t *resampler, *titles, *marks;  // of the map's column
  } tests[] = {{L"resampler.exe", L"frq", L"*||||||"}, {L"VS4U_1.exe", L"vs4ufrq", L"|*|||||"},
               {L"model4.EXE", L"frc", L"||*||||"},    {L"tips2.exe", L"pmk", L"|||*|||"},
               {L"w4u.exe", L"dio", L"||||*||"},       {L"moresampler.exe", L"mrq|llsm", L"|||||*|"}};
  for (const auto& test : tests) {
    wchar_t path[MAX_PATH] = L"C:\\";
    lstrcatW(path, test.resampler);
    EXPECT_TRUE(RegWriteValue(L"Resampler", path));
    Start(folder_.Path());
    EXPECT_EQ(Titles(), std::wstring(L"Name|") + test.titles + L"|edited|To be checked|");
    EXPECT_EQ(Column(1), test.marks);
    if (test.titles == std::wstring_view(L"mrq|llsm")) {
      EXPECT_EQ(Column(2), L"|||||*|");
    }
    Leave();
  }
}

}  // namespace
