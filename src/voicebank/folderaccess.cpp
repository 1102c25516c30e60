#include "voicebank/folderaccess.h"

#include <shlobj.h>
#include <shlwapi.h>
#include <aclapi.h>

#include <optional>

#include "base/handle.h"

namespace {

struct DescriptorTraits {
  using Type = PSECURITY_DESCRIPTOR;
  static Type Null() { return nullptr; }
  static void Close(Type descriptor) { LocalFree(descriptor); }
};
using SecurityDescriptor = UniqueHandle<DescriptorTraits>;
using TokenHandle = UniqueHandle<KernelTraits>;

bool LiesUnderProtectedFolder(const std::wstring& path) {
  for (const int id : {CSIDL_WINDOWS, CSIDL_PROGRAM_FILES, CSIDL_COMMON_APPDATA}) {
    wchar_t folder[MAX_PATH] = L"";
    if (FAILED(SHGetFolderPathW(nullptr, id, nullptr, SHGFP_TYPE_CURRENT, folder))) continue;
    if (PathCommonPrefixW(folder, path.c_str(), nullptr) == lstrlenW(folder)) return true;
  }
  return false;
}

std::optional<WIN32_FIND_DATAW> Look(const std::wstring& path) {
  WIN32_FIND_DATAW item;
  if (!FindHandle(FindFirstFileW(path.c_str(), &item))) return std::nullopt;
  return item;
}

// The access check wants a token that stands for the user within a thread.
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
  // The shell's functions take no longer path.
  if (path.size() >= MAX_PATH || (!PathIsRootW(path.c_str()) && !LiesUnderProtectedFolder(path))) return -1;
  wchar_t local[MAX_PATH] = L"";
  if (FAILED(SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, local))) return -1;
  wchar_t target[MAX_PATH] = L"";
  PathCombineW(target, local, L"VirtualStore");
  PathAppendW(target, PathFindNextComponentW(path.c_str()));
  shadow = target;
  return 0;
}

int CanWriteFolder(const std::wstring& folder) {
  constexpr SECURITY_INFORMATION kParts =
      OWNER_SECURITY_INFORMATION | GROUP_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;
  std::wstring name = folder;
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
  const auto shadowItem = Look(shadow);
  if (!shadowItem) return 0;
  const auto item = Look(path);
  if (!item || CompareFileTime(&item->ftLastWriteTime, &shadowItem->ftLastWriteTime) < 0) path = shadow;
  return 0;
}

bool FileExistsAsFile(const std::wstring& path, bool& isFile) {
  const auto item = Look(path);
  if (item) isFile = !(item->dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY);
  return item.has_value();
}
