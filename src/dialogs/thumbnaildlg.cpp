// CThumbnailDlg: the window and its layout. The maps that it shows have a source of their own.
#include "dialogs/thumbnaildlg.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "base/flagscope.h"
#include "base/path.h"
#include "base/registry.h"
#include "base/text.h"
#include "frqctrl/frqctrl.h"
#include "frqctrl/stepscroll.h"
#include "resources/ids.h"

namespace {

constexpr wchar_t kPlacementValue[] = L"ThumbnailDlg";
constexpr DWORD kControlStyle = WS_CHILD | WS_VISIBLE;
constexpr SampleCount kFramesInLeastWidth = 300;

PixelSize SizeOf(SampleCount frames) {
  return ThumbnailWindowSize(frames, kControlStyle, WS_EX_CLIENTEDGE, false, false);
}

// The spacing is a whole multiple of that of an ordinary screen, so that it stays as it is up to 191 dots per inch.
ThumbnailSpacing SpacingOfScreen() {
  const ScreenScale scale = CurrentScreenScale();
  const int across = static_cast<int>(scale.X);
  const int down = static_cast<int>(scale.Y);
  return {8 * across, 16 * across, 16 * down};
}

void SetBar(HWND window, int range, int page, int position) {
  SCROLLINFO info{};
  info.cbSize = sizeof(info);
  info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
  info.nMax = range;
  info.nPage = static_cast<UINT>(page);
  info.nPos = position;
  SetScrollInfo(window, SB_VERT, &info, FALSE);
}

SIZE ClientSize(HWND window) {
  RECT client{};
  GetClientRect(window, &client);
  return {client.right, client.bottom};
}

}  // namespace

INT_PTR CThumbnailDlg::OnInitDialog(LPARAM) {
  SetEvent(ReadyEvent);
  keys_.Start(Hwnd, Commands, IDR_SHAREDKEYS);
  spacing_ = SpacingOfScreen();
  Forget();
  {
    const FlagScope busy(Busy);  // the placement sizes the window, which is laid out below
    RestoreWindowPlacement(Hwnd, kPlacementValue);
    const int selection = ToList().Selection();
    if (selection >= 0) AnchorSyllable = selection;
  }
  Relayout(true);
  return 1;
}

INT_PTR CThumbnailDlg::OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case TNM_REFRESHITEM: RefreshItem(static_cast<int>(wParam)); return Answered();
    case TNM_REFRESHALL: RefreshAll(); return Answered();
    case TNM_LOADNEXT: LoadNext(); return Answered();
    case WM_SHOWWINDOW:
      if (wParam) PostLoadNext();
      return 0;
    case WM_TIMER: return OnTimer(wParam, lParam);
    case WM_CLOSE: PostMessageW(Hwnd, WM_COMMAND, IDCANCEL, 0); return 1;
    default: return CDlgBase::OnDialogMessage(message, wParam, lParam);
  }
}

// Gives the first row. `keepAnchor` makes it the row of the anchor; otherwise the row stays, and the anchor follows it.
int CThumbnailDlg::Relayout(bool keepAnchor) {
  const FlagScope busy(Busy);
  if (Items.empty()) FillItems();
  ShowWindow(Item(IDC_THUMBNAIL_NONE), Items.empty() ? SW_SHOWNA : SW_HIDE);
  if (Items.empty()) {
    SetBar(Hwnd, 0, 1, 0);
    return 0;
  }
  // The row is kept from here on, so that all that follows starts from the row that is shown.
  TopRow = BuildRows(keepAnchor);
  const ThumbnailRow& top = Rows.Rows[static_cast<std::size_t>(TopRow)];
  if (!keepAnchor) AnchorSyllable = ItemAt(top.First).SyllableIndex;
  PlaceRows(TopRow, Rows.EndOfView(TopRow, ClientSize(Hwnd).cy));
  PostLoadNext();
  return TopRow;
}

void CThumbnailDlg::FillItems() {
  // A window's frame is as wide around any map, and the screen is asked for it once.
  const ScreenScale scale = CurrentScreenScale();
  const PixelSize frame = SizeOf(0);
  const PixelSize empty = ThumbnailClientSize(0, scale.X, scale.Y);
  const DocumentState state = Syllables->State();
  Items.reserve(static_cast<std::size_t>(state.Maps));
  for (int index = 0; index < state.Entries; ++index) {
    EntryFacts facts = Syllables->Facts(index);
    if (!facts.HasMap) continue;
    ThumbnailItem& item = Items.emplace_back();
    item.SyllableIndex = index;
    item.Path = std::move(facts.Path);
    const PixelSize client = ThumbnailClientSize(facts.FrameEstimate, scale.X, scale.Y);
    sizes_.push_back({client.width + frame.width - empty.width, client.height + frame.height - empty.height});
  }
}

int CThumbnailDlg::BuildRows(bool keepAnchor) {
  const SIZE client = ClientSize(Hwnd);
  Rows = LayOutThumbnails(sizes_, client.cx, spacing_);
  const int count = static_cast<int>(Rows.Rows.size());
  int row = std::clamp(TopRow, 0, count - 1);
  if (keepAnchor) {
    const auto anchor = std::ranges::lower_bound(Items, AnchorSyllable, {}, &ThumbnailItem::SyllableIndex);
    const bool found = anchor != Items.end() && anchor->SyllableIndex == AnchorSyllable;
    row = found ? Rows.RowOf(static_cast<int>(anchor - Items.begin())) : 0;
  }
  SetBar(Hwnd, count, Rows.Page(client.cy, spacing_), row);
  return row;
}

// Brings the rows from `first` to `end` onto the screen. Where they stand there already nothing moves. All is painted
// at the end, frames included: a control that came or went with a redraw of its own would cost the more, the more
// hidden ones there are.
void CThumbnailDlg::PlaceRows(int first, int end) {
  std::vector<ThumbnailRow> rows(Rows.Rows.begin() + first, Rows.Rows.begin() + end);
  const int shift = Rows.Shift(first);
  for (ThumbnailRow& row : rows) row.Top += shift;
  if (rows == VisibleRows) return;
  const ItemRange before = ItemsIn(VisibleRows);
  const ItemRange now = ItemsIn(rows);
  VisibleRows = std::move(rows);
  for (int item = before.First; item < before.End; ++item) {
    if (!now.Contains(item)) HideItem(ItemAt(item));
  }
  std::vector<int> come;
  for (int item = now.First; item < now.End; ++item) {
    if (!before.Contains(item)) come.push_back(item);
  }
  CopyMaps(come);
  for (int item = now.First; item < now.End; ++item) ShowItem(item, shift);
  RedrawWindow(Hwnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
}

CThumbnailDlg::ItemRange CThumbnailDlg::ItemsIn(const std::vector<ThumbnailRow>& rows) {
  return rows.empty() ? ItemRange{} : ItemRange{rows.front().First, rows.back().End};
}

// The control stays for the next time. The copy of the map does not: it would double what the maps of a large voicebank
// take.
void CThumbnailDlg::HideItem(ThumbnailItem& item) {
  constexpr UINT kHide = SWP_HIDEWINDOW | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW;
  if (item.Window) SetWindowPos(item.Window, nullptr, 0, 0, 0, 0, kHide);
  item.Map.Clear();
}

void CThumbnailDlg::ShowItem(int index, int shift) {
  ThumbnailItem& item = ItemAt(index);
  if (!item.Window) CreateControl(item);
  if (!item.Window) return;  // tried again when the rows move
  const PixelRect& place = Rows.Places[static_cast<std::size_t>(index)];
  // The control's old picture is not taken along, since others that move may have painted over it by now.
  SetWindowPos(item.Window, nullptr, place.left, place.top + shift, place.right - place.left, place.bottom - place.top,
               SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW | SWP_SHOWWINDOW);
}

// The class is named after the control's object, which its window brings along.
void CThumbnailDlg::CreateControl(ThumbnailItem& item) {
  item.Window = CreateWindowExW(WS_EX_CLIENTEDGE, L"FrequencyTableControl", FileNameOf(item.Path).c_str(),
                                kControlStyle, 0, 0, 1, 1, Hwnd, nullptr, GetModuleHandleW(nullptr), nullptr);
  if (!item.Window) return;
  const LRESULT font = SendMessageW(Hwnd, WM_GETFONT, 0, 0);
  SendMessageW(item.Window, WM_SETFONT, static_cast<WPARAM>(font), 0);
  const FrqCtrlSender control(item.Window);
  control.SetEditing(&editing_);
  control.SetThumbnail(true);
  control.SetMaps(nullptr, &item.Map);
  control.SetAutoSize(true);
  control.SetLayerList(&Layers);
}

LRESULT CThumbnailDlg::OnVScroll(UINT code, int, HWND) {
  if (Busy) return 0;
  const std::optional<int> row = StepScroll(Hwnd, SB_VERT, code);
  if (row && *row != TopRow) ShowFrom(*row);
  return 0;
}

// A notch is a row, whatever keys are down.
LRESULT CThumbnailDlg::OnMouseWheel(WPARAM, int, int, int delta) {
  if (Busy) return 0;
  SCROLLINFO info{};
  info.cbSize = sizeof(info);
  info.fMask = SIF_POS;
  GetScrollInfo(Hwnd, SB_VERT, &info);
  info.nPos -= delta / WHEEL_DELTA;
  SetScrollInfo(Hwnd, SB_VERT, &info, TRUE);
  GetScrollInfo(Hwnd, SB_VERT, &info);  // the system limits what it is given
  if (info.nPos != TopRow) ShowFrom(info.nPos);
  return 0;
}

void CThumbnailDlg::ShowFrom(int row) {
  TopRow = row;
  Relayout(InSizeMove);
}

// While the user drags a border, the anchor stays at the top.
LRESULT CThumbnailDlg::OnSize(WPARAM kind, int, int) {
  SizeChanged = true;
  if (!Busy && kind != SIZE_MINIMIZED) Relayout(InSizeMove);
  return 0;
}

// The layout comes before the flag ends, so that the anchor still holds; its row's first syllable is the anchor then.
LRESULT CThumbnailDlg::OnExitSizeMove() {
  if (SizeChanged && !Busy) {
    Relayout(InSizeMove);
    if (!Items.empty()) AnchorSyllable = ItemAt(Rows.Rows[static_cast<std::size_t>(TopRow)].First).SyllableIndex;
  }
  SizeChanged = false;
  return CDlgBase::OnExitSizeMove();
}

// Two rows, and a thumbnail of some three seconds, have room in any size, also in one that was kept.
LRESULT CThumbnailDlg::OnGetMinMaxInfo(MINMAXINFO* info) {
  const ThumbnailSpacing spacing = SpacingOfScreen();
  const PixelSize size = SizeOf(kFramesInLeastWidth);
  RECT rect{0, 0, size.width + 2 * spacing.MarginX, spacing.MarginY + 2 * (size.height + spacing.MarginY)};
  AdjustWindowRectEx(&rect, static_cast<DWORD>(GetWindowLongW(Hwnd, GWL_STYLE)), FALSE,
                     static_cast<DWORD>(GetWindowLongW(Hwnd, GWL_EXSTYLE)));
  info->ptMinTrackSize = {rect.right - rect.left, rect.bottom - rect.top};
  return 0;
}

// The tip is the whole name, which a narrow picture cuts.
std::wstring CThumbnailDlg::TipOf(HWND control) const {
  return ControlOf(control) ? WindowText(control) + L"\n" + LoadResString(IDS_TIP_THUMBNAIL) : std::wstring();
}

// A thumbnail tells nothing but a click.
LRESULT CThumbnailDlg::OnCommand(WPARAM wParam, UINT code, HWND control) {
  if (Busy) return 0;
  if (!control) return CDlgBase::OnCommand(wParam, code, control);
  const auto item = std::ranges::find(Items, control, &ThumbnailItem::Window);
  if (item == Items.end()) return CDlgBase::OnCommand(wParam, code, control);
  ToList().PostSelectSyllable(item->SyllableIndex);
  return 0;
}

// Enter does nothing.
void CThumbnailDlg::OnOK() {}

LRESULT CThumbnailDlg::OnDestroy() {
  keys_.Stop();
  SaveWindowPlacement(Hwnd, kPlacementValue);
  return CDlgBase::OnDestroy();
}

// The controls have gone with the window. The null handle tells the list that there is none.
void CThumbnailDlg::OnDialogEnd() {
  Items.clear();
  Forget();
  Hwnd = nullptr;
}

void CThumbnailDlg::Forget() {
  for (const ThumbnailItem& item : Items) {
    if (item.Window) DestroyWindow(item.Window);
  }
  Items.clear();
  sizes_.clear();
  Rows = {};
  VisibleRows.clear();
  TopRow = 0;
}
