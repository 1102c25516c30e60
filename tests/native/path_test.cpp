// The form in which a path is opened: one that opens another file than was named would cost that file.
#include "base/path.h"

#include <gtest/gtest.h>

#include <array>

namespace {

TEST(Path, OpensTheVeryFileThatIsNamed) {
  const std::wstring deep = LR"(C:\)" + std::wstring(244, L'd');
  const std::wstring deepShare = LR"(\\nas\voices\)" + std::wstring(400, L'd');
  // The path, and the form in which it is opened; empty where that is the path itself.
  const std::array<std::wstring, 2> tests[] = {
      {LR"(C:\v\a.wav)", L""},
      {LR"(C:\v\José 가나\か゚\🎤.wav)", L""},
      {LR"(C:\v\)" L"\xD83C.wav", L""},
      {LR"(C:\v\.hidden\..\b.\a.wav)", LR"(\\?\C:\v\b.\a.wav)"},
      {LR"(C:\v\a.wav )", LR"(\\?\C:\v\a.wav )"},
      {LR"(C:\v...\\x/a.wav)", LR"(\\?\C:\v...\x\a.wav)"},
      {LR"(C:\v \)", LR"(\\?\C:\v )"},
      {LR"(C:\v \x\..)", LR"(\\?\C:\v )"},
      {LR"(C:\nul.a.wav)", LR"(\\?\C:\nul.a.wav)"},
      {LR"(C:\Aux \a.wav)", LR"(\\?\C:\Aux \a.wav)"},
      {LR"(C:\con\a.wav)", LR"(\\?\C:\con\a.wav)"},
      {LR"(C:\lpt9.wav)", LR"(\\?\C:\lpt9.wav)"},
      {LR"(C:\COM¹)", LR"(\\?\C:\COM¹)"},
      {LR"(C:\com\con1\lpt10\aux_wav.frq)", L""},
      {LR"(\\nas\voices\aux.wav)", LR"(\\?\UNC\nas\voices\aux.wav)"},
      {LR"(\\nas\voices\a.wav)", L""},
      {deep, L""},
      {deep + L"d", LR"(\\?\)" + deep + L"d"},
      {deepShare, LR"(\\?\UNC)" + deepShare.substr(1)},
      {LR"(\\?\C:\v.)", L""},
      {LR"(\\.\aux)", L""},
      {L"nul.", L""},
      {L"C:v.", L""},
  };
  for (const auto& [path, form] : tests) {
    SCOPED_TRACE(testing::PrintToString(path));
    EXPECT_EQ(ApiPath(path), form.empty() ? path : form);
    EXPECT_EQ(ApiPath(ApiPath(path)), ApiPath(path));
    EXPECT_EQ(ApiPath(PlainPath(ApiPath(path))), ApiPath(path)) << "the program keeps the plain one";
  }
  EXPECT_EQ(PlainPath(LR"(\\?\Volume{1}\a)"), LR"(\\?\Volume{1}\a)") << "it has no other form";
}

}  // namespace
