// CThumbnailDlg: the maps in view, copied from the document's, read one by one where nobody has read them yet.
#include <algorithm>
#include <cstdint>
#include <exception>

#include "dialogs/thumbnaildlg.h"
#include "frqctrl/frqctrlmessages.h"

namespace {

constexpr UINT_PTR kLoadTimer = 1;

// A map that memory does not hold is as good as one that cannot be read.
bool ReadMap(FrqMap& map, std::uint64_t& stamp, const std::wstring& path, DocumentFiles& files) {
  try {
    stamp = files.Stamp(path);
    return files.Load(map, path) == 0;
  } catch (const std::exception&) {
    map.Clear();
    return false;
  }
}

}  // namespace

// The items stand in one block: to look at each would take long where there are thousands.
bool CThumbnailDlg::CopiesOnly::MayShow(const FrqMap* reference, const FrqMap* map) const {
  if (reference || !map || items_.empty()) return !reference && !map;
  const auto distance = reinterpret_cast<std::uintptr_t>(map) - reinterpret_cast<std::uintptr_t>(&items_.front().Map);
  return distance % sizeof(ThumbnailItem) == 0 && distance / sizeof(ThumbnailItem) < items_.size();
}

// A layer shows whether there is a curve, so that one of an older state goes.
void CThumbnailDlg::CopyMaps(const std::vector<int>& items) {
  for (const int index : items) {
    ThumbnailItem& item = ItemAt(index);
    Syllables->CopyMap(item.SyllableIndex, item.Map);
    if (item.HasCurve != item.Map.Loaded) FrqCtrlSender(item.Window).DropLayer();
    item.HasCurve = item.Map.Loaded;
  }
}

// Posted messages come ahead of the mouse and the keyboard, and a timer behind them. So the next map comes by a timer
// where the user waits.
void CThumbnailDlg::PostLoadNext() {
  if (HIWORD(GetQueueStatus(QS_INPUT)) != 0) {
    SetTimer(Hwnd, kLoadTimer, USER_TIMER_MINIMUM, nullptr);
  } else {
    PostMessageW(Hwnd, TNM_LOADNEXT, 0, 0);
  }
}

LRESULT CThumbnailDlg::OnTimer(UINT_PTR timer, LPARAM) {
  if (timer != kLoadTimer) return 0;
  KillTimer(Hwnd, kLoadTimer);
  LoadNext();
  return 0;
}

// Reads the first map in view that nobody has read yet, and asks for the next one. Before the window is shown it reads
// nothing, as it is shown only when its queue is empty; the reading begins anew then.
void CThumbnailDlg::LoadNext() {
  if (!IsWindowVisible(Hwnd)) return;
  const ItemRange visible = ItemsIn(VisibleRows);
  const auto first = Items.begin() + visible.First;
  const auto end = Items.begin() + visible.End;
  const auto next = std::find_if(
      first, end, [](const ThumbnailItem& item) { return item.Window && !item.Map.Loaded && !item.LoadFailed; });
  if (next == end) return;
  next->LoadFailed = !LoadItem(*next);
  if (!next->LoadFailed) FrqCtrlSender(next->Window).SetMaps(nullptr, &next->Map);
  PostLoadNext();
}

// The document keeps what was read, unless it has read the map itself meanwhile: then its own is shown.
bool CThumbnailDlg::LoadItem(ThumbnailItem& item) {
  std::uint64_t stamp = 0;
  if (!ReadMap(item.Map, stamp, item.Path, *Files)) return false;
  Syllables->Adopt(item.SyllableIndex, item.Path, item.Map, stamp);
  item.HasCurve = item.Map.Loaded;
  return item.HasCurve;
}

void CThumbnailDlg::RefreshItem(int syllable) {
  const auto item = std::ranges::lower_bound(Items, syllable, {}, &ThumbnailItem::SyllableIndex);
  if (item == Items.end() || item->SyllableIndex != syllable || !item->Window) return;
  item->LoadFailed = false;  // its file may be another one now
  const int index = static_cast<int>(item - Items.begin());
  if (ItemsIn(VisibleRows).Contains(index)) CopyMaps({index});
  const FrqCtrlSender control(item->Window);
  control.DropLayer();
  control.RepaintNow();
  PostLoadNext();
}

void CThumbnailDlg::RefreshAll() {
  Forget();
  AnchorSyllable = 0;
  Relayout(InSizeMove);
}
