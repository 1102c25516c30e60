// The kind of map that the program works on follows the name of the resampler.
#include "base/registry.h"
#include "gui/program.h"
#include "native/testdata.h"

namespace {

struct Family {
  std::wstring resampler, titles, marks;  // of the map's column
};

class WorkingKind : public ProgramTest, public testing::WithParamInterface<Family> {
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

TEST_P(WorkingKind, DecidesWhichMapsCountAndWhichColumnsStand) {
  for (const wchar_t* const name : {L"a_wav.frq", L"b_wav.vs4ufrq", L"c_wav.frc", L"d_wav.pmk", L"e.dio"}) {
    folder_.Write(std::wstring(1, name[0]) + L".wav");
    folder_.Write(name);
  }
  folder_.Write(L"na.wav");
  folder_.Write(L"na.wav.llsm");
  folder_.Write(L"desc.mrq", testdata::FileBytes("mrq/02-in-place/desc.mrq"));
  wchar_t path[MAX_PATH] = L"C:\\";
  lstrcatW(path, GetParam().resampler.c_str());
  EXPECT_TRUE(RegWriteValue(L"Resampler", path));
  Start(folder_.Path());
  EXPECT_EQ(Titles(), L"Name|" + GetParam().titles + L"|edited|To be checked|");
  EXPECT_EQ(Column(1), GetParam().marks);
  if (GetParam().titles == L"mrq|llsm") {
    EXPECT_EQ(Column(2), L"|||||*|");
  }
}

INSTANTIATE_TEST_SUITE_P(
    Resamplers, WorkingKind,
    testing::Values(Family{L"resampler.exe", L"frq", L"*||||||"}, Family{L"VS4U_1.exe", L"vs4ufrq", L"|*|||||"},
                    Family{L"model4.EXE", L"frc", L"||*||||"}, Family{L"tips2.exe", L"pmk", L"|||*|||"},
                    Family{L"w4u.exe", L"dio", L"||||*||"}, Family{L"moresampler.exe", L"mrq|llsm", L"|||||*|"}));

}  // namespace
