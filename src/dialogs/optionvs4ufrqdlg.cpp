#include "dialogs/optionvs4ufrqdlg.h"

#include <windowsx.h>

#include <iterator>

#include "base/registry.h"
#include "base/text.h"
#include "resources/ids.h"

namespace {

constexpr wchar_t kPresetValue[] = L"Vs4uPreset";
constexpr wchar_t kOffsetValue[] = L"Vs4uOffset";
constexpr wchar_t kRangeValue[] = L"Vs4uRange";
constexpr wchar_t kUseFrqValue[] = L"Vs4uUseFrq";

constexpr struct {
  UINT Text;
  const wchar_t *Low, *High;
} kPresets[] = {
    {IDS_RANGE_VOCAL, L"A2", L"G5"},
    {IDS_RANGE_MALE, L"A2", L"C5"},
    {IDS_RANGE_FEMALE, L"E3", L"G5"},
    {IDS_RANGE_ALL, L"C1", L"B7"},
};
constexpr int kCustom = static_cast<int>(std::size(kPresets));

constexpr int kCustomBoxes[] = {IDC_VS4UFRQ_LOWNOTE, IDC_VS4UFRQ_LOWOCTAVE, IDC_VS4UFRQ_HIGHNOTE,
                                IDC_VS4UFRQ_HIGHOCTAVE};

// For a note that the boxes do not hold they show one end of what they hold.
constexpr NoteBoxes kLowDefault = {0, 0};
constexpr NoteBoxes kHighDefault = {kNoteBoxNames - 1, kNoteBoxOctaves - 1};

void FillNote(HWND names, HWND octaves, NoteBoxes shown) {
  for (int i = 0; i < kNoteBoxNames; ++i) ComboBox_AddString(names, NoteBoxName(i).c_str());
  for (int i = 0; i < kNoteBoxOctaves; ++i) ComboBox_AddString(octaves, NoteBoxOctave(i).c_str());
  ComboBox_SetCurSel(names, shown.Name);
  ComboBox_SetCurSel(octaves, shown.Octave);
}

}  // namespace

INT_PTR COptionVs4ufrqDlg::OnInitDialog(LPARAM) {
  ReadSettings();
  FillPresets();
  FillNoteBoxes();
  EnableCustomBoxes();
  CheckDlgButton(Hwnd, IDC_VS4UFRQ_USEFRQ, UseFrq ? BST_CHECKED : BST_UNCHECKED);
  return 0;
}

void COptionVs4ufrqDlg::ReadSettings() {
  RegReadValue(kPresetValue, preset_);
  if (preset_ < 0 || preset_ > kCustom) preset_ = 0;
  RegReadValue(kOffsetValue, CustomOffset);
  RegReadValue(kRangeValue, CustomRange);
  UseFrq = RegReadFlag(kUseFrqValue, UseFrq);
}

void COptionVs4ufrqDlg::FillPresets() {
  const HWND box = Item(IDC_VS4UFRQ_PRESET);
  for (const auto& preset : kPresets) ComboBox_AddString(box, LoadResString(preset.Text).c_str());
  ComboBox_AddString(box, LoadResString(IDS_RANGE_CUSTOM).c_str());
  ComboBox_SetCurSel(box, preset_);
}

void COptionVs4ufrqDlg::FillNoteBoxes() {
  // This type holds the sum of any two numbers in the registry.
  const long long high = static_cast<long long>(CustomOffset) + CustomRange - 1;
  const int highNote = high >= 0 && high <= 127 ? static_cast<int>(high) : -1;
  FillNote(Item(IDC_VS4UFRQ_LOWNOTE), Item(IDC_VS4UFRQ_LOWOCTAVE), BoxesOfNote(CustomOffset).value_or(kLowDefault));
  FillNote(Item(IDC_VS4UFRQ_HIGHNOTE), Item(IDC_VS4UFRQ_HIGHOCTAVE), BoxesOfNote(highNote).value_or(kHighDefault));
}

LRESULT COptionVs4ufrqDlg::OnCommand(WPARAM wParam, UINT code, HWND control) {
  if (LOWORD(wParam) == IDC_VS4UFRQ_PRESET) EnableCustomBoxes();
  return CDlgBase::OnCommand(wParam, code, control);
}

void COptionVs4ufrqDlg::EnableCustomBoxes() {
  for (const int box : kCustomBoxes) EnableWindow(Item(box), SelectedPreset() == kCustom);
}

int COptionVs4ufrqDlg::SelectedPreset() const {
  return ComboBox_GetCurSel(Item(IDC_VS4UFRQ_PRESET));
}

NoteRange COptionVs4ufrqDlg::CustomBoxes() const {
  const auto note = [this](int name, int octave) { return WindowText(Item(name)) + WindowText(Item(octave)); };
  return NoteRangeBetween(note(IDC_VS4UFRQ_LOWNOTE, IDC_VS4UFRQ_LOWOCTAVE),
                          note(IDC_VS4UFRQ_HIGHNOTE, IDC_VS4UFRQ_HIGHOCTAVE));
}

void COptionVs4ufrqDlg::OnOK() {
  preset_ = SelectedPreset();
  NoteRange range;
  if (preset_ == kCustom) {
    range = CustomBoxes();
    CustomOffset = range.Lowest;
    CustomRange = range.Semitones;
  } else {
    range = NoteRangeBetween(kPresets[preset_].Low, kPresets[preset_].High);
  }
  Offset = range.Lowest;
  Range = range.Semitones;
  UseFrq = IsDlgButtonChecked(Hwnd, IDC_VS4UFRQ_USEFRQ) == BST_CHECKED;
  WriteSettings();
  End(IDOK);
}

void COptionVs4ufrqDlg::WriteSettings() const {
  RegWriteValue(kPresetValue, preset_);
  RegWriteValue(kOffsetValue, CustomOffset);
  RegWriteValue(kRangeValue, CustomRange);
  RegWriteFlag(kUseFrqValue, UseFrq);
}
