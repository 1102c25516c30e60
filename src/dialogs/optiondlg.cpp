#include "dialogs/optiondlg.h"

#include <windowsx.h>
#include <commctrl.h>
#include <commdlg.h>

#include <algorithm>

#include "base/files.h"
#include "base/narrowpath.h"
#include "base/path.h"
#include "base/registry.h"
#include "base/text.h"
#include "resources/ids.h"
#include "window/balloon.h"
#include "window/keptfolder.h"
#include "window/messagebox.h"
#include "window/realnumberbox.h"

namespace {

constexpr wchar_t kHistoryKey[] = L"Software\\UTAU Plugin\\Marlit\\Resamplers";
constexpr int kPathLimit = 260;  // characters
constexpr int kCountLimit = 3;
constexpr int kShownResamplers = 10;  // of those in the history

}  // namespace

INT_PTR COptionDlg::OnInitDialog(LPARAM) {
  LoadHistory(kHistoryKey, history_);
  COMBOBOXINFO box{};
  box.cbSize = sizeof(box);
  if (SendDlgItemMessageW(Hwnd, IDC_OPTION_RESAMPLER, CB_GETCOMBOBOXINFO, 0, reinterpret_cast<LPARAM>(&box))) {
    SendMessageW(box.hwndItem, EM_LIMITTEXT, kPathLimit, 0);
    ShowBundled(box.hwndItem);
  }
  FillResamplers();
  SetDlgItemTextW(Hwnd, IDC_OPTION_RESAMPLER, ResamplerPath.c_str());
  SetDlgItemInt(Hwnd, IDC_OPTION_PARALLEL, MaxParallelCount, FALSE);
  SendDlgItemMessageW(Hwnd, IDC_OPTION_PARALLEL, EM_LIMITTEXT, kCountLimit, 0);
  TakeNoInputMethod(Item(IDC_OPTION_PARALLEL));
  CheckDlgButton(Hwnd, IDC_OPTION_DELETELLSM, AutoDeleteLlsm ? BST_CHECKED : BST_UNCHECKED);
  return 1;
}

// The name is a cue in the empty box, and not its text.
void COptionDlg::ShowBundled(HWND edit) const {
  if (Bundled.empty()) return;
  const std::wstring cue = FormatText(LoadResString(IDS_BUNDLED).c_str(), Bundled.c_str());
  SendMessageW(edit, EM_SETCUEBANNER, TRUE, reinterpret_cast<LPARAM>(cue.c_str()));
}

// The text in the box goes with the listed ones, so whoever wants to keep it puts it back.
void COptionDlg::FillResamplers() const {
  const HWND box = Item(IDC_OPTION_RESAMPLER);
  ComboBox_ResetContent(box);
  for (const std::wstring& resampler : history_) {
    if (ComboBox_GetCount(box) == kShownResamplers) break;
    ComboBox_AddString(box, resampler.c_str());
  }
}

LRESULT COptionDlg::OnCommand(WPARAM wParam, UINT code, HWND control) {
  if (LOWORD(wParam) == IDC_OPTION_BROWSE) Browse();
  return CDlgBase::OnCommand(wParam, code, control);
}

// The picker starts from the resampler that the dialog was opened with, not from what was typed since. It gives a path
// of any length, but with one beyond the limit to start from it fails or breaks down: that goes by its short form.
void COptionDlg::Browse() {
  std::wstring filter = LoadResString(IDS_RESAMPLERFILTER);
  std::ranges::replace(filter, L'|', L'\0');
  const bool fits = ResamplerPath.size() < kPathLimit;
  std::wstring file = fits ? ResamplerPath : NarrowForm(ResamplerPath).value_or(L"");
  file.resize(kLongestPath);
  OPENFILENAMEW picker{};
  picker.lStructSize = sizeof(picker);
  picker.hwndOwner = Hwnd;
  picker.lpstrFilter = filter.c_str();
  picker.lpstrFile = file.data();
  picker.nMaxFile = kLongestPath;
  picker.Flags = OFN_ENABLESIZING | OFN_FILEMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
  picker.lpstrDefExt = L".exe";
  const KeptFolder kept;  // the flag alone does not hold while the user walks about
  if (GetOpenFileNameW(&picker)) SetDlgItemTextW(Hwnd, IDC_OPTION_RESAMPLER, file.c_str());
}

// The box takes no more than the limit from the keyboard. A longer path that was picked, or chosen before, is taken
// whole where it leads to a program; else only what could have been typed is looked at.
std::wstring COptionDlg::ResamplerInBox() const {
  std::wstring text = WindowText(Item(IDC_OPTION_RESAMPLER));
  if (!FileExists(text)) text.resize(std::min<std::size_t>(text.size(), kPathLimit));
  return text;
}

void COptionDlg::OnOK() {
  const std::wstring resampler = ResamplerInBox();
  if (resampler.empty()) return Balloon::Show(Item(IDC_OPTION_RESAMPLER), LoadResString(IDS_OPTION_EMPTY));
  if (FileExists(resampler)) {
    Accept(resampler);
  } else {
    Refuse(resampler);
  }
}

void COptionDlg::Accept(const std::wstring& resampler) {
  ResamplerPath = resampler;
  MaxParallelCount = GetDlgItemInt(Hwnd, IDC_OPTION_PARALLEL, nullptr, FALSE);
  AutoDeleteLlsm = IsDlgButtonChecked(Hwnd, IDC_OPTION_DELETELLSM) == BST_CHECKED;
  history_.remove(resampler);
  history_.push_front(resampler);
  SaveHistory(kHistoryKey, history_);
  End(IDOK);
}

void COptionDlg::Refuse(const std::wstring& resampler) {
  ShowMessage(Hwnd, LoadResString(IDS_FILENOTFOUND) + L"\r\n\r\n" + resampler, MB_ICONEXCLAMATION);
  history_.remove(resampler);
  SaveHistory(kHistoryKey, history_);
  FillResamplers();
  SetDlgItemTextW(Hwnd, IDC_OPTION_RESAMPLER, resampler.c_str());
}
