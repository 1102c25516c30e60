#include "voicebank/folderaccess.h"

#include <shlobj.h>
#include <shlwapi.h>
#include <aclapi.h>

#include <optional>

#include "base/files.h"
#include "base/handle.h"
#include "base/path.h"
#include "base/systempath.h"

namespace {

struct DescriptorTraits {
  using Type = PSECURITY_DESCRIPTOR;
  static Type Null() { return nullptr; }
  static void Close(Type descriptor) { LocalFree(descriptor); }
};
using SecurityDescriptor = UniqueHandle<DescriptorTraits>;
using TokenHandle = UniqueHandle<KernelTraits>;

bool LiesUnderProtectedFolder(const std::wstring& path) {
  const std::wstring start = path.substr(0, MAX_PATH - 1);  // the shell's function compares no more
  for (const KNOWNFOLDERID& id : {FOLDERID_Windows, FOLDERID_ProgramFiles, FOLDERID_ProgramData}) {
    const std::wstring folder = KnownFolder(id);
    const int common = PathCommonPrefixW(folder.c_str(), start.c_str(), nullptr);
    if (!folder.empty() && common == static_cast<int>(folder.size())) return true;
  }
  return false;
}

std::optional<FILETIME> TimeOf(const std::wstring& path) {
  WIN32_FILE_ATTRIBUTE_DATA item;
  if (!GetFileAttributesExW(ApiPath(path).c_str(), GetFileExInfoStandard, &item)) return std::nullopt;
  return item.ftLastWriteTime;
}

// A token that stands for the user within a thread, which the access check wants.
TokenHandle ImpersonationToken() {
  TokenHandle process, token;
  if (!OpenProcessToken(GetCurrentProcess(), TOKEN_DUPLICATE | TOKEN_QUERY, process.out())) return {};
  if (!DuplicateTokenEx(process.get(), GENERIC_ALL, nullptr, SecurityImpersonation, TokenImpersonation, token.out())) {
    return {};
  }
  return token;
}

}  // namespace

int GetVirtualStorePath(const std::wstring& path, std::wstring& shadow) {
  if (!PathIsRootW(path.c_str()) && !LiesUnderProtectedFolder(path)) return -1;
  const std::wstring local = KnownFolder(FOLDERID_LocalAppData);
  if (local.empty()) return -1;
  const std::wstring store = PathIn(local, L"VirtualStore");
  const std::wstring behindDrive = PathFindNextComponentW(path.c_str());
  const std::size_t start = behindDrive.find_first_not_of(L'\\');
  shadow = start == behindDrive.npos ? store : PathSeenFrom(store, behindDrive.substr(start));
  return 0;
}

int CanWriteFolder(const std::wstring& folder) {
  constexpr SECURITY_INFORMATION kParts =
      OWNER_SECURITY_INFORMATION | GROUP_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;
  std::wstring name = ApiPath(folder);
  SecurityDescriptor descriptor;
  if (GetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT, kParts, nullptr, nullptr, nullptr, nullptr,
                            descriptor.out()) != ERROR_SUCCESS) {
    return -1;
  }
  const TokenHandle token = ImpersonationToken();
  if (!token) return -1;
  DWORD wish = FILE_GENERIC_WRITE;
  GENERIC_MAPPING mapping = {FILE_GENERIC_READ, FILE_GENERIC_WRITE, FILE_GENERIC_EXECUTE, FILE_ALL_ACCESS};
  MapGenericMask(&wish, &mapping);
  PRIVILEGE_SET privileges{};
  DWORD privilegesSize = sizeof(privileges);
  DWORD granted = 0;
  BOOL allowed = FALSE;
  if (!AccessCheck(descriptor.get(), token.get(), wish, &mapping, &privileges, &privilegesSize, &granted, &allowed)) {
    return -1;
  }
  return allowed ? 1 : 0;
}

// With equal times the plain file is kept.
int PickNewerVirtualStoreFile(std::wstring& path) {
  std::wstring shadow;
  if (GetVirtualStorePath(path, shadow) != 0) return 0;
  const std::optional<FILETIME> shadowTime = TimeOf(shadow);
  if (!shadowTime) return 0;
  const std::optional<FILETIME> time = TimeOf(path);
  if (!time || CompareFileTime(&*time, &*shadowTime) < 0) path = shadow;
  return 0;
}

bool FileExistsAsFile(const std::wstring& path, bool& isFile) {
  const bool isFolder = FolderExists(path);
  const bool isThere = isFolder || FileExists(path);
  if (isThere) isFile = !isFolder;
  return isThere;
}
