#include "app/filelistdlg.h"

#include <commctrl.h>

#include <algorithm>

#include "app/discardquestion.h"
#include "app/editordlg.h"
#include "base/foreignpointer.h"
#include "base/registry.h"
#include "base/text.h"
#include "resources/ids.h"
#include "voicebank/pluginfile.h"
#include "window/disabledwindow.h"

namespace {

constexpr wchar_t kPlacementValue[] = L"FileListDlg";

void PlaceBeside(HWND editor, HWND list) {
  RECT beside{};
  GetWindowRect(editor, &beside);
  RECT window{};
  GetWindowRect(list, &window);
  const int left = beside.left - (window.right - window.left);
  SetWindowPos(list, nullptr, left < 0 ? 0 : left, beside.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

CFileListDlg::CFileListDlg(const std::wstring& argument, Voicebank& voicebank)
    : Windows(voicebank.Maps, voicebank.Files, [this] { ToEditor().UpdateState(); }),
      argument_(argument),
      bank_(voicebank),
      syllables_(voicebank.Maps),
      ReadyEvent(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
  syllables_.AddListener(*this);
}

INT_PTR CFileListDlg::OnInitDialog(LPARAM) {
  RememberLayout();
  SetWindowTextW(Hwnd, LoadResString(IDS_FILES).c_str());
  // The list goes with the editor and has no close command of its own.
  DeleteMenu(GetSystemMenu(Hwnd, FALSE), SC_CLOSE, MF_BYCOMMAND);
  rows_.Attach(Item(IDC_LIST_FILES), DpiScaleX);
  rows_.SetupColumns(bank_.Files.Kind);

  const bool filled = FillFromArguments();
  if (!filled) SetEvent(ReadyEvent.get());
  WaitForSingleObject(Editor->ReadyEvent.get(), INFINITE);
  if (!filled) {
    ToEditor().PostCancel();
    return 1;
  }
  Windows.Commands = Editor->Hwnd;
  keys_.Start(Hwnd, Editor->Hwnd, IDR_SHAREDKEYS);
  rows_.Select(0);
  if (!RestoreWindowPlacement(Hwnd, kPlacementValue)) PlaceBeside(Editor->Hwnd, Hwnd);
  SetEvent(ReadyEvent.get());
  ToEditor().UpdateState();
  // When the loop takes this the window is shown, and does not come in front of what the editor asks.
  PostMessageW(Hwnd, FLM_HASCOME, 0, 0);
  return 1;
}

void CFileListDlg::RememberLayout() {
  const HDC screen = GetDC(nullptr);
  DpiScaleX = GetDeviceCaps(screen, LOGPIXELSX) / 96.0;
  DpiScaleY = GetDeviceCaps(screen, LOGPIXELSY) / 96.0;
  ReleaseDC(nullptr, screen);
  RECT window{};
  GetWindowRect(Hwnd, &window);
  MinTrackWidth = window.right - window.left;
  MinTrackHeight = window.bottom - window.top;
  RECT list{};
  GetWindowRect(Item(IDC_LIST_FILES), &list);
  MapWindowPoints(nullptr, Hwnd, reinterpret_cast<POINT*>(&list), 2);
  leftMargin_ = list.left;
  topMargin_ = list.top;
}

LRESULT CFileListDlg::OnDestroy() {
  keys_.Stop();
  SaveWindowPlacement(Hwnd, kPlacementValue);
  rows_.KeepWidths();
  if (PluginAnswer) AnswerHost(argument_, syllables_.State().Saved > 0);
  return CDlgBase::OnDestroy();
}

LRESULT CFileListDlg::OnSize(WPARAM kind, int width, int height) {
  if (kind == SIZE_MINIMIZED) return 0;
  SetWindowPos(rows_.Window(), nullptr, 0, 0, width - 2 * leftMargin_, height - 2 * topMargin_,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  return 0;
}

LRESULT CFileListDlg::OnGetMinMaxInfo(MINMAXINFO* info) {
  info->ptMinTrackSize = {MinTrackWidth, MinTrackHeight};
  return 0;
}

LRESULT CFileListDlg::OnNotify(WPARAM, NMHDR* header) {
  const auto isUnreadable = [this](int index) { return syllables_.Facts(index).Unreadable; };
  LRESULT answer = 0;
  if (header->idFrom == IDC_LIST_FILES && header->code == NM_CUSTOMDRAW) {
    auto* const drawing = WritableAt<NMLVCUSTOMDRAW>(reinterpret_cast<LPARAM>(header));
    if (drawing) answer = SyllableRows::Draw(*drawing, isUnreadable);
  }
  SetWindowLongPtrW(Hwnd, DWLP_MSGRESULT, answer);
  if (header->idFrom != IDC_LIST_FILES || header->code != LVN_ITEMCHANGED) return 1;
  const auto* const change = ReadableAt<NMLISTVIEW>(reinterpret_cast<LPARAM>(header));
  if (change && (change->uNewState & LVIS_SELECTED)) ShowSyllable(rows_.IndexOf(change->iItem));
  return 1;
}

// A name that its column cuts comes before the tip of the list itself.
std::wstring CFileListDlg::TipOf(HWND control) const {
  POINT mouse{};
  GetCursorPos(&mouse);
  std::wstring name = control == rows_.Window() ? rows_.CutNameAt(mouse) : std::wstring();
  return name.empty() ? CDlgBase::TipOf(control) : name;
}

// Enter in the list does nothing.
void CFileListDlg::OnOK() {}

// Escape in this window comes here and ends the list alone: the editor runs on without it, and has no command that
// would save. So edits go here, if the user agrees, and leaving does not ask for them again. While the question stands
// the editor takes no input: it would have to wait for this window. Edits keep the list open under a box or a job.
void CFileListDlg::OnCancel() {
  if (syllables_.State().Edited > 0) {
    if (!IsWindowEnabled(Hwnd)) return;
    const DisabledWindow disabled(Editor->Hwnd);
    if (!ConfirmDiscard(Hwnd, syllables_)) return;
    DropEdits(syllables_);
  }
  EndList();
}

// The thumbnails go with their maps, in their own time: they may be waiting for an answer of this window.
void CFileListDlg::EndList() {
  if (const HWND thumbnail = Windows.Thumbnail.Hwnd) PostMessageW(thumbnail, WM_COMMAND, IDCANCEL, 0);
  EndDialog(Hwnd, IDCANCEL);
}

// The road from a click to the editor: both sends come back only when the editor has taken the syllable over, and it
// asks back through messages meanwhile. A folder that is opened in between ends it: the syllable has gone then. A row
// without a map goes this way as well. A map that cannot be read is left empty, which the editor says, and is tried
// again the next time.
void CFileListDlg::ShowSyllable(int index) {
  const std::wstring path = syllables_.Facts(index).Path;
  if (path.empty()) return;
  const int fill = fillCount_;
  syllables_.SetCurrent(index);
  syllables_.EnsureLoaded(index, Document::OnFailure::EmptySaved);
  ToEditor().SetSyllable(path.c_str());
  if (fill != fillCount_) return;
  const MapPair maps = syllables_.Maps(index);
  ToEditor().SetMap(maps.Saved, maps.Map);
}

// Only this thread touches the list view. The thumbnails are told by a post, which any thread may do.
void CFileListDlg::OnChanged(const DocumentChanges& changes) {
  constexpr unsigned kShown =
      EntryChange::Edited | EntryChange::Marks | EntryChange::HasMap | EntryChange::Readable;
  const bool isShown =
      std::ranges::any_of(changes.Entries, [](const EntryChange& change) { return change.Facts & kShown; });
  if (isShown && GetWindowThreadProcessId(Hwnd, nullptr) == GetCurrentThreadId()) {
    ShowChanges(changes);
  } else if (isShown) {
    waiting_.Put(changes);
    FileListSender(Hwnd).ShowChanges();
  }
  for (const EntryChange& change : changes.Entries) {
    if ((change.Facts & EntryChange::Touched) && !change.OneOfMany) Windows.ToThumbnail().PostRefreshItem(change.Index);
  }
  if (changes.OfMany) Windows.ToThumbnail().PostRefreshAll();
}

void CFileListDlg::ShowChanges(const DocumentChanges& changes) const {
  for (const EntryChange& change : changes.Entries) {
    const EntryFacts facts = syllables_.Facts(change.Index);
    if (change.Facts & EntryChange::Edited) rows_.SetCell(change.Index, kEditedColumn, facts.Edited);
    if (change.Facts & EntryChange::Marks) rows_.SetCell(change.Index, kMarkedColumn, facts.Marked);
    if (change.Facts & EntryChange::Readable) rows_.Redraw(change.Index);
    if (change.Facts & EntryChange::HasMap) {
      rows_.SetCell(change.Index, kMapColumn, facts.HasMap);
      rows_.UpdateLlsm(change.Index, facts.Path, bank_.Files.Kind);
    }
  }
}

std::unique_ptr<CDlgBase> CFileListDlg::CreateInstance() const {
  return std::make_unique<CFileListDlg>(argument_, bank_);
}

EditorSender CFileListDlg::ToEditor() const {
  return EditorSender(Editor->Hwnd);
}
