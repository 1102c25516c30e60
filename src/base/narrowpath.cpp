#include "base/narrowpath.h"

#include <windows.h>

#include <tuple>

#include "base/handle.h"
#include "base/path.h"
#include "base/text.h"

namespace {

std::string InCodePage(const std::wstring& path) {
  const auto size = static_cast<int>(path.size());
  std::string bytes(path.size() * 4, '\0');  // no code page takes more
  const int length = WideCharToMultiByte(CP_ACP, 0, path.data(), size, bytes.data(), static_cast<int>(bytes.size()),
                                         nullptr, nullptr);
  bytes.resize(static_cast<std::size_t>(length));
  return bytes;
}

// The path in short names: empty if nothing is there, and as long as before where the volume keeps no short names.
std::wstring ShortForm(const std::wstring& path) {
  const std::wstring literal = ApiPath(path);
  std::wstring form(kLongestPath, L'\0');
  const DWORD length = GetShortPathNameW(literal.c_str(), form.data(), kLongestPath);
  form.resize(length < kLongestPath ? length : 0);
  return PlainPath(form);
}

using Identity = std::tuple<DWORD, DWORD, DWORD>;

std::optional<Identity> IdentityOf(const std::wstring& path) {
  constexpr DWORD kAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const FileHandle file(
      CreateFileW(path.c_str(), 0, kAll, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  BY_HANDLE_FILE_INFORMATION facts{};
  if (!file || !GetFileInformationByHandle(file.get(), &facts)) return std::nullopt;
  return Identity(facts.dwVolumeSerialNumber, facts.nFileIndexHigh, facts.nFileIndexLow);
}

// The narrow path is opened as the outside program would open it.
bool LeadToTheSame(const std::wstring& narrow, const std::wstring& path) {
  const std::optional<Identity> reached = IdentityOf(narrow), meant = IdentityOf(ApiPath(path));
  if (reached || meant) return reached == meant;
  const std::optional<Identity> folder = IdentityOf(FolderOf(narrow));
  return folder && folder == IdentityOf(ApiPath(FolderOf(path)));
}

}  // namespace

bool IsNarrow(const std::wstring& path) {
  const std::string bytes = InCodePage(path);
  return !bytes.empty() && bytes.size() < MAX_PATH && HasPlainNames(path) && Widen(bytes, CP_ACP) == path;
}

std::wstring ReadNarrowly(const std::wstring& path) {
  return Widen(InCodePage(path), CP_ACP);
}

std::optional<std::wstring> NarrowForm(const std::wstring& path) {
  if (IsNarrow(path)) return path;
  const std::wstring folder = ShortForm(FolderOf(path));
  for (const std::wstring& form : {folder.empty() ? folder : PathIn(folder, FileNameOf(path)), ShortForm(path)}) {
    if (IsNarrow(form) && LeadToTheSame(form, path)) return form;
  }
  return std::nullopt;
}

std::optional<std::string> NarrowBytes(const std::wstring& path) {
  const std::optional<std::wstring> form = NarrowForm(path);
  return form ? std::optional(InCodePage(*form)) : std::nullopt;
}
