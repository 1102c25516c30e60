// What the editor keeps in the registry, and the resampler, which decides the kind of map.
#include <windows.h>
#include <shlwapi.h>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "base/registry.h"
#include "resampler/resamplerkind.h"
#include "voicebank/inifile.h"

namespace {

constexpr wchar_t kResamplerValue[] = L"Resampler";
constexpr wchar_t kParallelValue[] = L"CreateFrqMaxCount";
constexpr wchar_t kDeleteLlsmValue[] = L"AutoDeleteLLSM";
constexpr wchar_t kViewModeValue[] = L"FrqCtrlViewMode";
constexpr wchar_t kBrightnessValue[] = L"FrqCtrlBrightness";
constexpr wchar_t kColorValue[] = L"FrqCtrlColor";

// A path is kept in a block of fixed size.
struct StoredPath {
  wchar_t text[MAX_PATH] = L"";
};

// The resampler that the host uses; empty if no host is installed.
std::wstring HostResampler() {
  wchar_t path[MAX_PATH] = L"";
  DWORD size = MAX_PATH;
  const HRESULT found = AssocQueryStringW(ASSOCF_NOTRUNCATE, ASSOCSTR_EXECUTABLE, L".ust", L"open", path, &size);
  if (FAILED(found) || path[0] == 0) return {};
  PathRemoveFileSpecW(path);
  const std::wstring folder = path;
  UtauCommon::INIFILE settings;
  settings.Load(folder + L"\\setting.ini");
  return settings.GetValue(L"Tool2Path", folder + L"\\resampler.exe");
}

}  // namespace

void CEditorDlg::LoadSettings() {
  StoredPath resampler;
  if (RegReadValue(kResamplerValue, resampler)) {
    resampler.text[MAX_PATH - 1] = 0;  // the block may come without an end
    ResamplerPath = resampler.text;
  } else {
    ResamplerPath = HostResampler();
  }
  ApplyResamplerKind();
  RegReadValue(kParallelValue, MaxParallelCount);
  AutoDeleteLlsm = RegReadFlag(kDeleteLlsmValue, AutoDeleteLlsm);
  RegReadValue(kViewModeValue, ViewMode);
  RegReadValue(kBrightnessValue, Brightness);
  RegReadValue(kColorValue, Color);
  if (!PluginMode) LoadHistory(kFolderHistoryKey, RecentFolders);
}

void CEditorDlg::SaveSettings() {
  if (ResamplerChanged) {
    StoredPath resampler;
    lstrcpynW(resampler.text, ResamplerPath.c_str(), MAX_PATH);
    RegWriteValue(kResamplerValue, resampler);
    ResamplerChanged = false;
  }
  RegWriteValue(kParallelValue, MaxParallelCount);
  RegWriteFlag(kDeleteLlsmValue, AutoDeleteLlsm);
  RegWriteValue(kViewModeValue, Table().ViewMode());
  RegWriteValue(kBrightnessValue, Table().Brightness());
  RegWriteValue(kColorValue, Table().ColorTable());
  if (!PluginMode) SaveHistory(kFolderHistoryKey, RecentFolders);
}

// The list looks at its own copy of the kind when it is told to refresh. Before the window exists the control's share
// is lost; it gets it again with each syllable.
void CEditorDlg::ApplyResamplerKind() {
  FrqType = GetResamplerKind(ResamplerPath);
  FileList->FrqType = FrqType;
  Table().SetKind(FrqType);
  SendLimits();
}
