#include "app/editorsettings.h"

#include <shlwapi.h>

#include <iterator>
#include <optional>

#include "base/narrowpath.h"
#include "base/path.h"
#include "base/registry.h"
#include "resampler/bundled.h"
#include "resampler/resamplerkind.h"
#include "voicebank/hostfolder.h"
#include "voicebank/inifile.h"
#include "voicebank/notelist.h"

namespace {

constexpr wchar_t kResamplerValue[] = L"Resampler";
constexpr wchar_t kParallelValue[] = L"CreateFrqMaxCount";
constexpr wchar_t kDeleteLlsmValue[] = L"AutoDeleteLLSM";
constexpr wchar_t kViewModeValue[] = L"FrqCtrlViewMode";
constexpr wchar_t kBrightnessValue[] = L"FrqCtrlBrightness";
constexpr wchar_t kColorValue[] = L"FrqCtrlColor";

// A path is kept in a block of fixed size.
struct StoredPath {
  wchar_t Text[MAX_PATH] = L"";
};

// The resampler that the host uses; empty if no host is installed.
std::wstring HostResampler() {
  const std::wstring folder = AssociatedHostFolder();
  if (folder.empty()) return {};
  UtauCommon::INIFILE settings;
  settings.Load(folder + L"\\setting.ini");
  return settings.GetValue(L"Tool2Path", folder + L"\\resampler.exe");
}

std::wstring SettingOf(const std::wstring& file, const std::wstring& key) {
  UtauCommon::NOTELIST list;
  list.Load(file);
  return list.GetSetting(key);
}

// Replaces the path by the resampler of the project that the plug-in file names; without such a project it stands. A
// project without a resampler gives the host's folder, as one with a relative path gives a path in it.
void TakeProjectResampler(const std::wstring& pluginFile, std::wstring& path) {
  const std::wstring projectPath = SettingOf(pluginFile, L"Project");
  if (projectPath.empty()) return;
  UtauCommon::NOTELIST project;
  project.Load(projectPath);
  if (!project.FindSetting()) return;
  const std::wstring resampler = project.GetSetting(L"Tool2");
  if (!PathIsRelativeW(resampler.c_str())) {
    path = resampler;
  } else {
    path = resampler.empty() ? FindHostFolder() : PathSeenFrom(FindHostFolder(), resampler);
  }
}

// A path that does not fit goes by its short form, and is not stored without one: cut, it would name another program.
std::optional<StoredPath> Stored(const std::wstring& path) {
  StoredPath stored;
  const std::wstring kept = path.size() < std::size(stored.Text) ? path : NarrowForm(path).value_or(path);
  if (kept.size() >= std::size(stored.Text)) return std::nullopt;
  kept.copy(stored.Text, kept.size());
  return stored;
}

DWORD ProcessorCount() {
  SYSTEM_INFO info;
  GetSystemInfo(&info);
  return info.dwNumberOfProcessors;
}

}  // namespace

EditorSettings::EditorSettings() : MaxParallelCount(ProcessorCount()) {}

void EditorSettings::LoadResampler(const std::wstring& pluginFile) {
  StoredPath resampler;
  if (RegReadValue(kResamplerValue, resampler)) {
    resampler.Text[MAX_PATH - 1] = 0;  // the block may come without an end
    ResamplerPath = resampler.Text;
  } else {
    ResamplerPath = HostResampler();
  }
  // The project wins over the user's choice, which stays in the registry.
  if (!pluginFile.empty()) TakeProjectResampler(pluginFile, ResamplerPath);
  UpdateKind();
}

void EditorSettings::LoadOptions() {
  RegReadValue(kParallelValue, MaxParallelCount);
  AutoDeleteLlsm = RegReadFlag(kDeleteLlsmValue, AutoDeleteLlsm);
  RegReadValue(kViewModeValue, ViewMode);
  RegReadValue(kBrightnessValue, Brightness);
  RegReadValue(kColorValue, Color);
}

void EditorSettings::Save(const FrqCtrlSender& table) {
  if (const auto stored = Stored(ResamplerPath); resamplerChanged_ && stored) {
    RegWriteValue(kResamplerValue, *stored);
    resamplerChanged_ = false;
  }
  RegWriteValue(kParallelValue, MaxParallelCount);
  RegWriteFlag(kDeleteLlsmValue, AutoDeleteLlsm);
  RegWriteValue(kViewModeValue, table.ViewMode());
  RegWriteValue(kBrightnessValue, table.Brightness());
  RegWriteValue(kColorValue, table.ColorTable());
}

void EditorSettings::ChooseResampler(const std::wstring& path) {
  if (lstrcmpiW(path.c_str(), ResamplerPath.c_str()) == 0) return;
  ResamplerPath = path;
  resamplerChanged_ = true;
  if (!Stored(path)) NoteSettingsFailure();  // now, as nobody is left to be told when the program ends
}

void EditorSettings::UpdateKind() {
  FrqType = GetResamplerKind(ResamplerPath);
}

std::wstring EditorSettings::ResamplerInUse() const {
  return ResamplerPath.empty() ? BundledResampler() : ResamplerPath;
}
