#include "driver/hands.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

namespace {

constexpr DWORD kHandMs = 30;  // moves that follow at once are taken for one

struct NamedKey {
  std::wstring_view Name;
  WORD Key;
};
constexpr NamedKey kKeys[] = {
    {L"Alt", VK_MENU},  {L"Ctrl", VK_CONTROL}, {L"Shift", VK_SHIFT},   {L"F10", VK_F10},       {L"Up", VK_UP},
    {L"Down", VK_DOWN}, {L"Right", VK_RIGHT},  {L"Home", VK_HOME},     {L"End", VK_END},       {L"BackSpace", VK_BACK},
    {L"Left", VK_LEFT}, {L"Return", VK_RETURN}, {L"Escape", VK_ESCAPE},
};

WORD KeyOf(std::wstring_view name) {
  for (const NamedKey& key : kKeys) {
    if (key.Name == name) return key.Key;
  }
  if (name.size() != 1) throw std::invalid_argument("no such key");
  return static_cast<WORD>(towupper(name[0]));
}

void SendKey(WORD key, WORD scan, DWORD flags) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki = {key, scan, flags, 0, 0};
  SendInput(1, &input, sizeof(input));
}

void Move(WORD key, DWORD direction) {
  const bool isOfArrows = key >= VK_PRIOR && key <= VK_DOWN;  // not the ones of the number block
  SendKey(key, static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC)),
          direction | (isOfArrows ? KEYEVENTF_EXTENDEDKEY : 0));
}

// "Ctrl+Shift+S": all down, the last one up first.
void PressTogether(std::wstring_view keys) {
  const std::size_t plus = keys.find(L'+');
  const WORD key = KeyOf(keys.substr(0, plus));
  Move(key, 0);
  if (plus != keys.npos) PressTogether(keys.substr(plus + 1));
  Move(key, KEYEVENTF_KEYUP);
}

void SendMouse(DWORD flags, int data = 0) {
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = flags;
  input.mi.mouseData = static_cast<DWORD>(data);
  SendInput(1, &input, sizeof(input));
}

void PressButton(bool right) {
  SendMouse(right ? MOUSEEVENTF_RIGHTDOWN : MOUSEEVENTF_LEFTDOWN);
  SendMouse(right ? MOUSEEVENTF_RIGHTUP : MOUSEEVENTF_LEFTUP);
}

}  // namespace

void Press(std::wstring_view keys) {
  while (!keys.empty()) {
    const std::size_t end = std::min(keys.find(L' '), keys.size());
    const std::wstring_view word = keys.substr(0, end);
    const std::size_t star = word.find(L'*');
    const int count = star == word.npos ? 1 : std::stoi(std::wstring(word.substr(star + 1)));
    for (int i = 0; i < count; ++i) PressTogether(word.substr(0, star));
    keys.remove_prefix(std::min(end + 1, keys.size()));
  }
}

void Type(const std::wstring& text) {
  for (const wchar_t letter : text) {
    SendKey(0, letter, KEYEVENTF_UNICODE);
    SendKey(0, letter, KEYEVENTF_UNICODE | KEYEVENTF_KEYUP);
  }
}

void PointAt(POINT place) {
  SetCursorPos(place.x, place.y);
  Sleep(kHandMs);
}

void Click(POINT place, bool right) {
  static POINT last{-100, -100};
  static ULONGLONG lastTime = 0;
  const bool isNear = std::abs(place.x - last.x) <= GetSystemMetrics(SM_CXDOUBLECLK) &&
                      std::abs(place.y - last.y) <= GetSystemMetrics(SM_CYDOUBLECLK);
  while (isNear && GetTickCount64() <= lastTime + GetDoubleClickTime()) Sleep(kHandMs);
  PointAt(place);
  PressButton(right);
  last = place;
  lastTime = GetTickCount64();
}

void DoubleClick(POINT place) {
  Click(place);
  PressButton(false);
}

void Drag(const std::vector<POINT>& places) {
  PointAt(places.front());
  SendMouse(MOUSEEVENTF_LEFTDOWN);
  for (const POINT& place : places) PointAt(place);
  SendMouse(MOUSEEVENTF_LEFTUP);
}

void TurnWheel(int notches, WORD held) {
  if (held) Move(held, 0);
  for (int i = 0; i < std::abs(notches); ++i) {
    SendMouse(MOUSEEVENTF_WHEEL, notches > 0 ? WHEEL_DELTA : -WHEEL_DELTA);
    Sleep(kHandMs);
  }
  if (held) Move(held, KEYEVENTF_KEYUP);
}
