#include "dialogs/finddlg.h"

#include <commctrl.h>

#include <algorithm>

#include "base/path.h"
#include "base/text.h"
#include "window/subclass.h"
#include "window/waitcursor.h"

namespace {

// The sorts stand in the order of their names in the string table.
enum Sort { kAll, kUnsaved, kMarked, kUnreadable, kWithoutMap, kSortCount };

// The box leads on to the list below it.
class NameBox : public CSubclassWindow {
 public:
  LRESULT OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override {
    if (message != WM_KEYDOWN || wParam != VK_DOWN) return CSubclassWindow::OnMessage(window, message, wParam, lParam);
    SetFocus(GetDlgItem(GetParent(window), IDC_FIND_LIST));
    return 0;
  }
};

void AddColumn(HWND view, int index, UINT title, int width) {
  std::wstring text = LoadResString(title);
  LVCOLUMNW column{};
  column.mask = LVCF_TEXT | LVCF_WIDTH;
  column.pszText = text.data();
  column.cx = width;
  SendMessageW(view, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column));
}

}  // namespace

INT_PTR CFindDlg::OnInitDialog(LPARAM) {
  Chosen = -1;
  CollectNames();
  SetupColumns();
  for (UINT sort = 0; sort < kSortCount; ++sort) {
    const std::wstring name = LoadResString(IDS_FIND_SORT_FIRST + sort);
    SendDlgItemMessageW(Hwnd, IDC_FIND_SORT, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str()));
  }
  SendDlgItemMessageW(Hwnd, IDC_FIND_SORT, CB_SETCURSEL, kAll, 0);
  SubclassControl<NameBox>(Item(IDC_FIND_NAME));
  ListWhatFits();
  return 1;
}

// Extensions are no part of a name: nearly all would have the same letters.
void CFindDlg::CollectNames() {
  const int count = Syllables->State().Entries;
  facts_.clear();
  std::vector<std::wstring> names;
  for (int i = 0; i < count; ++i) {
    facts_.push_back(Syllables->Facts(i));
    names.push_back(PathWithoutExtension(FileNameOf(facts_.back().Path)));
  }
  names_ = NameSearch(names);
  inManyFolders_ = std::ranges::any_of(
      facts_, [&](const EntryFacts& each) { return FolderOf(each.Path) != FolderOf(facts_.front().Path); });
}

void CFindDlg::SetupColumns() const {
  const HWND view = Item(IDC_FIND_LIST);
  constexpr LPARAM kStyles = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER;
  SendMessageW(view, LVM_SETEXTENDEDLISTVIEWSTYLE, kStyles, kStyles);
  RECT client{};
  GetClientRect(view, &client);
  const int width = client.right - GetSystemMetrics(SM_CXVSCROLL);
  const int folderWidth = inManyFolders_ ? width / 2 : 0;
  AddColumn(view, 0, IDS_COLUMN_NAME, width - folderWidth);
  if (inManyFolders_) AddColumn(view, 1, IDS_KEPT_FOLDER, folderWidth);
}

// Reads the maps when those that cannot be read are first asked for. A map that was read stays in memory, as that of a
// chosen syllable does.
void CFindDlg::ReadMaps() {
  const WaitCursor waiting;
  for (int i = 0; i < static_cast<int>(facts_.size()); ++i) {
    EntryFacts& facts = facts_[static_cast<std::size_t>(i)];
    if (facts.HasMap) facts.Unreadable = !Syllables->EnsureLoaded(i, Document::OnFailure::KeepSaved);
  }
  areMapsRead_ = true;
}

bool CFindDlg::IsOfSort(int index, int sort) const {
  const EntryFacts& facts = facts_[static_cast<std::size_t>(index)];
  switch (sort) {
    case kUnsaved: return facts.Edited;
    case kMarked: return facts.Marked;
    case kUnreadable: return facts.Unreadable;
    case kWithoutMap: return !facts.HasMap;
    default: return true;
  }
}

// The list asks for the texts when they are seen (OnNotify). The first row is selected, so that Enter goes to the best
// fit without a detour.
void CFindDlg::ListWhatFits() {
  const auto sort = static_cast<int>(SendDlgItemMessageW(Hwnd, IDC_FIND_SORT, CB_GETCURSEL, 0, 0));
  if (sort == kUnreadable && !areMapsRead_) ReadMaps();
  rows_ = names_.Find(WindowText(Item(IDC_FIND_NAME)));
  std::erase_if(rows_, [&](int index) { return !IsOfSort(index, sort); });
  const HWND view = Item(IDC_FIND_LIST);
  SendMessageW(view, LVM_SETITEMCOUNT, rows_.size(), 0);
  ListView_SetItemState(view, -1, 0, LVIS_SELECTED);
  ListView_SetItemState(view, 0, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
  ListView_EnsureVisible(view, 0, FALSE);
  InvalidateRect(view, nullptr, TRUE);
  const std::wstring count = rows_.empty()
                                 ? LoadResString(IDS_FIND_NONE)
                                 : FormatText(LoadResString(IDS_FIND_COUNT).c_str(), rows_.size(), facts_.size());
  SetDlgItemTextW(Hwnd, IDC_FIND_COUNT, count.c_str());
  EnableWindow(Item(IDOK), !rows_.empty());
}

// The folder as seen from the one that was opened, which itself goes by its own name.
std::wstring CFindDlg::FolderText(int index) const {
  const std::wstring folder = FolderOf(facts_[static_cast<std::size_t>(index)].Path);
  const std::wstring opened = PathIn(Folder, L"");
  if (folder.starts_with(opened)) return folder.substr(opened.size());
  return folder == Folder ? FileNameOf(folder) : folder;
}

LRESULT CFindDlg::OnNotify(WPARAM, NMHDR* header) {
  if (header->idFrom != IDC_FIND_LIST) return 0;
  if (header->code == NM_DBLCLK) OnOK();
  if (header->code != LVN_GETDISPINFOW) return 0;
  LVITEMW& item = reinterpret_cast<NMLVDISPINFOW*>(header)->item;
  const auto row = static_cast<std::size_t>(item.iItem);
  if (!(item.mask & LVIF_TEXT) || row >= rows_.size()) return 0;
  const int index = rows_[row];
  const std::wstring text =
      item.iSubItem == 0 ? FileNameOf(facts_[static_cast<std::size_t>(index)].Path) : FolderText(index);
  lstrcpynW(item.pszText, text.c_str(), item.cchTextMax);
  return 0;
}

LRESULT CFindDlg::OnCommand(WPARAM wParam, UINT code, HWND control) {
  const bool isTyped = LOWORD(wParam) == IDC_FIND_NAME && code == EN_CHANGE;
  const bool isChosen = LOWORD(wParam) == IDC_FIND_SORT && code == CBN_SELCHANGE;
  if (!isTyped && !isChosen) return CDlgBase::OnCommand(wParam, code, control);
  ListWhatFits();
  return 0;
}

int CFindDlg::SelectedRow() const {
  return ListView_GetNextItem(Item(IDC_FIND_LIST), -1, LVNI_SELECTED);
}

void CFindDlg::OnOK() {
  const int row = SelectedRow();
  if (row < 0 || row >= static_cast<int>(rows_.size())) return;
  Chosen = rows_[static_cast<std::size_t>(row)];
  ChosenPath = facts_[static_cast<std::size_t>(Chosen)].Path;
  End(IDOK);
}
