#include "dialogs/checkdlg.h"

#include "base/notename.h"
#include "base/registry.h"
#include "base/text.h"
#include "resources/ids.h"

namespace {

constexpr wchar_t kSettingsValue[] = L"CheckFrqSettings";
constexpr int kLowestNote = 24;  // C1

void AddChoice(HWND box, const wchar_t* text) {
  SendMessageW(box, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
}

}  // namespace

INT_PTR CCheckFrqDlg::OnInitDialog(LPARAM) {
  RegReadValue(kSettingsValue, Settings);
  ShowNote(IDC_CHECK_LOWNOTE, IDC_CHECK_LOWOCTAVE, Settings.LowNote);
  ShowNote(IDC_CHECK_HIGHNOTE, IDC_CHECK_HIGHOCTAVE, Settings.HighNote);
  CheckDlgButton(Hwnd, IDC_CHECK_TRANSITION, Settings.HasPitchTransition != 0);
  CheckDlgButton(Hwnd, IDC_CHECK_BEGINNING, Settings.LargeTransitionAtBeginning != 0);
  CheckDlgButton(Hwnd, IDC_CHECK_END, Settings.LargeTransitionAtEnd != 0);
  return 1;
}

void CCheckFrqDlg::ShowNote(int nameBox, int octaveBox, int note) const {
  for (const wchar_t* name : {L"C", L"C#", L"D", L"D#", L"E", L"F", L"F#", L"G", L"G#", L"A", L"A#", L"B"}) {
    AddChoice(Item(nameBox), name);
  }
  for (const wchar_t* octave : {L"1", L"2", L"3", L"4", L"5", L"6", L"7"}) AddChoice(Item(octaveBox), octave);
  SendDlgItemMessageW(Hwnd, nameBox, CB_SETCURSEL, static_cast<WPARAM>((note - kLowestNote) % 12), 0);
  SendDlgItemMessageW(Hwnd, octaveBox, CB_SETCURSEL, static_cast<WPARAM>((note - kLowestNote) / 12), 0);
}

// The boxes of a second note are hidden and not read: from the first OK on both notes are the one that is asked for. A
// box without a choice, which only a damaged setting brings about, leaves both as they are.
void CCheckFrqDlg::OnOK() {
  const int note = NoteNumberFromName(WindowText(Item(IDC_CHECK_LOWNOTE)) + WindowText(Item(IDC_CHECK_LOWOCTAVE)));
  if (note >= 0) Settings.LowNote = Settings.HighNote = note;
  Settings.HasPitchTransition = IsDlgButtonChecked(Hwnd, IDC_CHECK_TRANSITION) == BST_CHECKED;
  Settings.LargeTransitionAtBeginning = IsDlgButtonChecked(Hwnd, IDC_CHECK_BEGINNING) == BST_CHECKED;
  Settings.LargeTransitionAtEnd = IsDlgButtonChecked(Hwnd, IDC_CHECK_END) == BST_CHECKED;
  RegWriteValue(kSettingsValue, Settings);
  End(IDOK);
}

std::unique_ptr<CDlgBase> CCheckFrqDlg::CreateInstance() const {
  return std::make_unique<CCheckFrqDlg>(Settings);
}
int CCheckFrqDlg::GetTemplateId() const {
  return IDD_CHECK;
}
