#include "dialogs/aboutdlg.h"

#include <cstring>
#include <string>
#include <vector>

#include "base/path.h"
#include "base/systempath.h"
#include "base/text.h"
#include "resources/ids.h"

namespace {

constexpr std::size_t kLongestVersion = 32;  // characters

// A text of a version resource in the first language that the resource names; empty without one.
std::wstring VersionText(const std::vector<std::byte>& resource, const wchar_t* name) {
  void* value = nullptr;
  UINT size = 0;
  struct {
    WORD Language, CodePage;
  } translation{};
  if (!VerQueryValueW(resource.data(), L"\\VarFileInfo\\Translation", &value, &size)) return {};
  if (size < sizeof(translation)) return {};
  std::memcpy(&translation, value, sizeof(translation));
  const std::wstring block =
      FormatText(L"\\StringFileInfo\\%04x%04x\\%s", translation.Language, translation.CodePage, name);
  if (!VerQueryValueW(resource.data(), block.c_str(), &value, &size) || size == 0) return {};
  return static_cast<const wchar_t*>(value);
}

std::wstring ProductVersion() {
  const std::wstring file = ApiPath(ProgramPath());
  DWORD unused = 0;
  std::vector<std::byte> resource(GetFileVersionInfoSizeW(file.c_str(), &unused));
  const auto size = static_cast<DWORD>(resource.size());
  if (size == 0 || !GetFileVersionInfoW(file.c_str(), 0, size, resource.data())) return {};
  return VersionText(resource, L"ProductVersion").substr(0, kLongestVersion);
}

// Some resource compilers write "1, 2, 0, 3".
std::wstring WithDots(std::wstring version) {
  std::erase(version, L' ');
  for (wchar_t& character : version) {
    if (character == L',') character = L'.';
  }
  return version;
}

}  // namespace

INT_PTR CAboutDlg::OnInitDialog(LPARAM) {
  const std::wstring name = LoadResString(IDS_NAME);
  const std::wstring version = WithDots(ProductVersion());
  const std::wstring text = version.empty() ? name : FormatText(L"%s Ver.%s", name.c_str(), version.c_str());
  SetDlgItemTextW(Hwnd, IDC_ABOUT_NAME, text.c_str());
  return 1;
}
