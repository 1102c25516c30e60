#include "dialogs/folderpicker.h"

#include <objbase.h>
#include <shlobj.h>

#include "base/path.h"
#include "window/keptfolder.h"

namespace {

// Owns one reference to a COM object.
template <typename Interface>
class ComPointer {
 public:
  ComPointer() = default;
  ~ComPointer() {
    if (object_) object_->Release();
  }
  ComPointer(const ComPointer&) = delete;
  ComPointer& operator=(const ComPointer&) = delete;

  Interface& operator*() const { return *object_; }
  Interface* operator->() const { return object_; }
  Interface** out() { return &object_; }

 private:
  Interface* object_ = nullptr;
};

int PickWithDialog(IFileOpenDialog& dialog, HWND owner, std::wstring& out) {
  FILEOPENDIALOGOPTIONS options = 0;
  dialog.GetOptions(&options);
  dialog.SetOptions(options | FOS_PICKFOLDERS);
  if (FAILED(dialog.Show(owner))) return -1;
  ComPointer<IShellItem> item;
  wchar_t* path = nullptr;
  if (FAILED(dialog.GetResult(item.out())) || FAILED(item->GetDisplayName(SIGDN_FILESYSPATH, &path))) return -1;
  out = PlainPath(path);
  CoTaskMemFree(path);
  return 0;
}

// The picker of systems that do not offer the dialog.
int PickFromTree(HWND owner, std::wstring& out) {
  wchar_t name[MAX_PATH] = L"";
  BROWSEINFOW browse{};
  browse.hwndOwner = owner;
  browse.pszDisplayName = name;
  browse.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE | BIF_NONEWFOLDERBUTTON;
  const PIDLIST_ABSOLUTE picked = SHBrowseForFolderW(&browse);
  if (!picked) return -1;
  std::wstring path(kLongestPath, L'\0');
  const bool found = SHGetPathFromIDListEx(picked, path.data(), kLongestPath, GPFIDL_DEFAULT);
  CoTaskMemFree(picked);
  if (!found) return -1;
  out = path.c_str();
  return 0;
}

}  // namespace

int BrowseForFolder(HWND owner, std::wstring& out) {
  const KeptFolder kept;
  ComPointer<IFileOpenDialog> dialog;
  const HRESULT made = CoCreateInstance(CLSID_FileOpenDialog, nullptr, CLSCTX_INPROC_SERVER, IID_IFileOpenDialog,
                                        reinterpret_cast<void**>(dialog.out()));
  return SUCCEEDED(made) ? PickWithDialog(*dialog, owner, out) : PickFromTree(owner, out);
}
