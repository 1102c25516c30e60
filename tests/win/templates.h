// Reads menu and dialog templates as the resource compiler left them, so that tests can compare two languages without
// showing a window: a window shows only the language that the system picks.
#pragma once

#include <windows.h>

#include <cstring>
#include <string>
#include <vector>

struct MenuItem {
  int parent = -1;  // place of the item that opens its menu; -1 for the bar
  int id = 0;       // 0: a separator or a submenu
  bool opensMenu = false;
  std::wstring text;
};

struct DialogControl {
  int id = 0;  // -1: no code asks for it
  DWORD style = 0;
  DWORD extendedStyle = 0;
  std::wstring windowClass;  // upper case; "#128" and so on for the classes that go by a number
  std::wstring text;
  RECT place = {};  // [dialog units]
};

struct DialogTemplate {
  DWORD style = 0;
  std::wstring menu;
  std::wstring caption;
  SIZE size = {};  // [dialog units]
  std::vector<DialogControl> controls;
};

// Takes a template apart from front to back. The resources are the test program's own, so they are taken as sound.
class TemplateReader {
 public:
  explicit TemplateReader(const void* data) : begin_(static_cast<const BYTE*>(data)), next_(begin_) {}

  template <typename T>
  T Get() {
    T value;
    std::memcpy(&value, next_, sizeof value);
    next_ += sizeof value;
    return value;
  }

  std::wstring GetText() {
    std::wstring text;
    while (const auto unit = Get<wchar_t>()) text += unit;
    return text;
  }

  // A name, or "#" and the number that stands for one.
  std::wstring GetName() {
    const BYTE* start = next_;
    if (Get<WORD>() == 0xFFFF) return L"#" + std::to_wstring(Get<WORD>());
    next_ = start;
    return GetText();
  }

  RECT GetPlace() {
    const LONG x = Get<short>(), y = Get<short>();
    const LONG width = Get<short>(), height = Get<short>();
    return {x, y, x + width, y + height};
  }

  void Skip(ptrdiff_t bytes) { next_ += bytes; }
  void AlignToDword() { next_ = begin_ + (next_ - begin_ + 3) / 4 * 4; }

 private:
  const BYTE* begin_;
  const BYTE* next_;
};

// A resource of exactly this language, or null: no other language stands in for it.
inline const void* FindInLanguage(const wchar_t* type, const wchar_t* name, WORD language) {
  const HRSRC found = FindResourceExW(nullptr, type, name, language);
  return found ? LockResource(LoadResource(nullptr, found)) : nullptr;
}

// Empty if the language has no such text.
inline std::wstring ReadString(int id, WORD language) {
  const void* block = FindInLanguage(RT_STRING, MAKEINTRESOURCEW(id / 16 + 1), language);
  if (!block) return {};
  TemplateReader reader(block);
  for (int skipped = 0; skipped < id % 16; ++skipped) reader.Skip(reader.Get<WORD>() * sizeof(wchar_t));
  std::wstring text(reader.Get<WORD>(), L'\0');
  for (wchar_t& unit : text) unit = reader.Get<wchar_t>();
  return text;
}

inline void ReadMenuItems(TemplateReader& reader, int parent, std::vector<MenuItem>& items) {
  for (bool last = false; !last;) {
    const auto flags = reader.Get<WORD>();
    last = flags & MF_END;
    const bool opensMenu = flags & MF_POPUP;
    const int id = opensMenu ? 0 : reader.Get<WORD>();
    items.push_back({parent, id, opensMenu, reader.GetText()});
    if (opensMenu) ReadMenuItems(reader, static_cast<int>(items.size()) - 1, items);
  }
}

// The items of all menus from top to bottom; empty if the language has no such menu.
inline std::vector<MenuItem> ReadMenu(const wchar_t* name, WORD language) {
  std::vector<MenuItem> items;
  if (const void* data = FindInLanguage(RT_MENU, name, language)) {
    TemplateReader reader(data);
    reader.Skip(2 * sizeof(WORD));  // version, size of the rest of the header
    ReadMenuItems(reader, -1, items);
  }
  return items;
}

inline DialogControl ReadControl(TemplateReader& reader) {
  reader.AlignToDword();
  DialogControl control;
  reader.Skip(sizeof(DWORD));  // help id
  control.extendedStyle = reader.Get<DWORD>();
  control.style = reader.Get<DWORD>();
  control.place = reader.GetPlace();
  control.id = reader.Get<int>();
  control.windowClass = reader.GetName();
  control.text = reader.GetName();
  reader.Skip(reader.Get<WORD>());  // creation data
  return control;
}

// Without controls if the language has no such dialog.
inline DialogTemplate ReadDialog(int id, WORD language) {
  DialogTemplate dialog;
  const void* data = FindInLanguage(RT_DIALOG, MAKEINTRESOURCEW(id), language);
  if (!data) return dialog;
  TemplateReader reader(data);
  reader.Skip(2 * sizeof(WORD) + 2 * sizeof(DWORD));  // version, signature, help id, extended style
  dialog.style = reader.Get<DWORD>();
  const int count = reader.Get<WORD>();
  const RECT place = reader.GetPlace();
  dialog.size = {place.right - place.left, place.bottom - place.top};
  dialog.menu = reader.GetName();
  reader.GetName();  // window class
  dialog.caption = reader.GetText();
  reader.Skip(2 * sizeof(WORD) + 2);  // size, weight, slant and character set of the font
  reader.GetText();                   // its name
  for (int index = 0; index < count; ++index) dialog.controls.push_back(ReadControl(reader));
  return dialog;
}
