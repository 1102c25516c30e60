// Owners of Windows handles: one template, and an alias for each sort of handle.
//
// A handle is owned from the call that makes it to the end of the owner's scope. No ladder of exits closes anything.
#pragma once

#include <windows.h>
#include <winreg.h>

#include <utility>

template <typename Traits>
class UniqueHandle {
 public:
  using Type = typename Traits::Type;

  UniqueHandle() = default;
  explicit UniqueHandle(Type handle) : handle_(handle) {}
  UniqueHandle(UniqueHandle&& other) noexcept : handle_(other.release()) {}
  UniqueHandle& operator=(UniqueHandle&& other) noexcept {
    reset(other.release());
    return *this;
  }
  ~UniqueHandle() { reset(); }

  Type get() const { return handle_; }
  explicit operator bool() const { return handle_ != Traits::Null(); }

  Type release() { return std::exchange(handle_, Traits::Null()); }

  // Closes what is held and takes `handle`. A reset to the very handle that is held keeps it.
  void reset(Type handle = Traits::Null()) {
    const Type old = std::exchange(handle_, handle);
    if (old != Traits::Null() && old != handle) Traits::Close(old);
  }

  // The address for a function that gives the handle through a pointer. Closes what is held first.
  Type* out() {
    reset();
    return &handle_;
  }

 private:
  Type handle_ = Traits::Null();
};

struct FileTraits {
  using Type = HANDLE;
  static Type Null() { return INVALID_HANDLE_VALUE; }
  static void Close(Type handle) { CloseHandle(handle); }
};

struct FindTraits {
  using Type = HANDLE;
  static Type Null() { return INVALID_HANDLE_VALUE; }
  static void Close(Type handle) { FindClose(handle); }
};

// Events, threads and processes.
struct KernelTraits {
  using Type = HANDLE;
  static Type Null() { return nullptr; }
  static void Close(Type handle) { CloseHandle(handle); }
};

struct RegistryKeyTraits {
  using Type = HKEY;
  static Type Null() { return nullptr; }
  static void Close(Type key) { RegCloseKey(key); }
};

template <typename Object>
struct GdiTraits {
  using Type = Object;
  static Type Null() { return nullptr; }
  static void Close(Type object) { DeleteObject(object); }
};

struct MemoryDcTraits {
  using Type = HDC;
  static Type Null() { return nullptr; }
  static void Close(Type dc) { DeleteDC(dc); }
};

struct MenuTraits {
  using Type = HMENU;
  static Type Null() { return nullptr; }
  static void Close(Type menu) { DestroyMenu(menu); }
};

using FileHandle = UniqueHandle<FileTraits>;
using FindHandle = UniqueHandle<FindTraits>;
using EventHandle = UniqueHandle<KernelTraits>;
using ThreadHandle = UniqueHandle<KernelTraits>;
using RegistryKey = UniqueHandle<RegistryKeyTraits>;
using Pen = UniqueHandle<GdiTraits<HPEN>>;
using Brush = UniqueHandle<GdiTraits<HBRUSH>>;
using Bitmap = UniqueHandle<GdiTraits<HBITMAP>>;
using MemoryDc = UniqueHandle<MemoryDcTraits>;
using Menu = UniqueHandle<MenuTraits>;  // a popup that no window owns

// Selects an object into a device context and puts the old one back at the end of the scope. The object must outlive
// the guard, so declare it first.
class SelectGuard {
 public:
  SelectGuard(HDC dc, HGDIOBJ object) : dc_(dc), old_(SelectObject(dc, object)) {}
  ~SelectGuard() { SelectObject(dc_, old_); }
  SelectGuard(const SelectGuard&) = delete;
  SelectGuard& operator=(const SelectGuard&) = delete;

 private:
  HDC dc_;
  HGDIOBJ old_;
};
