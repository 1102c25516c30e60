#include "app/curveclipboard.h"

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <mutex>
#include <numeric>
#include <optional>

#include "base/text.h"
#include "resources/ids.h"

namespace {

// The clipboard, closed at the end; it is not open while another program holds it.
class OpenedClipboard {
 public:
  explicit OpenedClipboard(HWND owner) : isOpen_(OpenClipboard(owner) != 0) {}
  ~OpenedClipboard() {
    if (isOpen_) CloseClipboard();
  }
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;
  explicit operator bool() const { return isOpen_; }

 private:
  bool isOpen_;
};

// The memory of a clipboard's format while it is looked at.
class LockedMemory {
 public:
  explicit LockedMemory(HGLOBAL memory) : memory_(memory), data_(memory ? GlobalLock(memory) : nullptr) {}
  ~LockedMemory() {
    if (data_) GlobalUnlock(memory_);
  }
  LockedMemory(const LockedMemory&) = delete;
  LockedMemory& operator=(const LockedMemory&) = delete;
  void* Data() const { return data_; }
  std::size_t Size() const { return data_ ? GlobalSize(memory_) : 0; }

 private:
  HGLOBAL memory_;
  void* data_;
};

// The clipboard owns the memory when it has taken it, and not before.
bool PutText(const std::wstring& text) {
  const std::size_t size = (text.size() + 1) * sizeof(wchar_t);
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
  if (const LockedMemory locked(memory); locked.Data()) std::memcpy(locked.Data(), text.c_str(), size);
  if (memory && EmptyClipboard() && SetClipboardData(CF_UNICODETEXT, memory)) return true;
  if (memory) GlobalFree(memory);
  return false;
}

// The text is read where it lies, since it may be of any length.
std::optional<std::vector<CurveRow>> RowsInClipboard(std::size_t most) {
  const LockedMemory locked(GetClipboardData(CF_UNICODETEXT));
  const auto* const text = static_cast<const wchar_t*>(locked.Data());
  if (!text) return std::nullopt;
  return ParseCurve({text, wcsnlen(text, locked.Size() / sizeof(wchar_t))}, most);
}

void Tell(const CurveWork& work, UINT text) {
  work.Edits.Tell(LoadResString(IDS_NAME), LoadResString(text));
}

std::vector<int> SelectedFrames(const CurveWork& work) {
  return FrameList(GetDlgItem(work.Editor, IDC_EDITOR_FRAMES)).SelectedRows();
}

// The frames from `first` to the last one of a map of `count` frames.
std::vector<int> FramesFrom(int first, SampleCount count) {
  std::vector<int> frames(static_cast<std::size_t>(std::max(0, count - first)));
  std::iota(frames.begin(), frames.end(), first);
  return frames;
}

// The number of rows that can matter from a frame on; 0 where no sample position leads to it.
std::size_t RoomIn(const CurveWork& work, int first) {
  const std::lock_guard reading(work.Syllables);
  const FrqMap* const map = work.Map.Map();
  return map && map->PositionOf(first) >= 0 ? MostCurveRows(*map) : 0;
}

bool IsTextBox(HWND window) {
  wchar_t name[8] = L"";
  GetClassNameW(window, name, 8);
  return lstrcmpiW(name, L"Edit") == 0;
}

}  // namespace

void CopyCurve(const CurveWork& work) {
  std::vector<int> frames = SelectedFrames(work);
  std::vector<CurveRow> rows;
  {
    const std::lock_guard reading(work.Syllables);
    if (frames.empty()) frames = FramesFrom(0, work.Map.FrameCount());
    if (work.Map) rows = CurveOf(*work.Map.Map(), frames);
  }
  if (rows.empty()) return Tell(work, IDS_NOTHINGAPPLIES);
  const OpenedClipboard clipboard(work.Editor);
  if (!clipboard || !PutText(CurveText(rows))) Tell(work, IDS_CURVE_CLIPBOARD);
}

void PasteCurve(const CurveWork& work, PasteAs as) {
  const std::vector<int> selected = SelectedFrames(work);
  const int first = selected.empty() ? 0 : selected.front();
  const std::vector<int> frames = selected.size() > 1 ? selected : FramesFrom(first, work.Map.FrameCount());
  const std::size_t most = frames.empty() ? 0 : RoomIn(work, frames.front());
  if (most == 0) return Tell(work, IDS_NOTHINGAPPLIES);
  std::optional<std::vector<CurveRow>> rows;
  {
    const OpenedClipboard clipboard(work.Editor);
    if (!clipboard) return Tell(work, IDS_CURVE_CLIPBOARD);
    rows = RowsInClipboard(most);
  }
  if (!rows) return Tell(work, IDS_CURVE_EXPECTED);
  std::vector<int> set;
  work.Syllables.Change(as == PasteAs::Curve ? Gesture::PasteCurve : Gesture::PasteShape, work.Map.Index(),
                        [&](FrqMap& map) { return set = PasteRows(map, frames, *rows, as, work.Kind); });
  work.Frames.ShowPlace(set);
}

bool TranslateClipboardKey(const MSG& message) {
  const bool isCopy = message.wParam == 'C';
  if (message.message != WM_KEYDOWN || (!isCopy && message.wParam != 'V')) return false;
  if (GetKeyState(VK_CONTROL) >= 0 || GetKeyState(VK_MENU) < 0 || !IsTextBox(message.hwnd)) return false;
  SendMessageW(message.hwnd, isCopy ? WM_COPY : WM_PASTE, 0, 0);
  return true;
}
