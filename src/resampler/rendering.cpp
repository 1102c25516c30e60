#include "resampler/rendering.h"

#include <shlwapi.h>

#include <mutex>

#include "base/files.h"
#include "base/filesystem.h"
#include "base/narrowpath.h"
#include "base/path.h"
#include "frqmap/mapfiles.h"
#include "frqmap/mrqmap.h"
#include "resampler/hiddenrun.h"
#include "resampler/moreconfig.h"
#include "resampler/plaincopy.h"
#include "resampler/resamplerkind.h"
#include "voicebank/waveheader.h"

std::wstring PreviewLogText;

namespace {

std::mutex logLock;

// Writes the one entry into a desc.mrq of its own.
bool WriteEntryBeside(const std::wstring& folder, const std::wstring& mapPath, const std::optional<MrqEntry>& entry) {
  if (!entry) return false;
  MrqStore store;
  const std::wstring key = MrqKey(mapPath);
  return store.AddFolder(folder) == 0 && store.SetEntry(key, *entry) == 0 && store.WriteEntry(key) == 0;
}

// Writes a map likewise, whatever the list's store holds.
bool WriteMapBeside(const std::wstring& folder, const std::wstring& mapPath, const FrqMap& map) {
  MrqStore store;
  return store.AddFolder(folder) == 0 && SaveMrq(map, mapPath, &store) == 0;
}

// One render in its folder.
class Rendering {
 public:
  Rendering(const std::wstring& folder, const PreviewInput& input) : folder_(folder), input_(input) {}

  int Run(PreviewEnd& end);

 private:
  int Prepare(const std::wstring& wave, const std::wstring& output) const;
  bool PutMapBeside(const std::wstring& wave) const;
  int Render(const std::wstring& wave, const std::wstring& output);
  void RenderUnderPlainName();

  const std::wstring& folder_;
  const PreviewInput& input_;
  std::wstring commandLine_;
};

// The output of the last render goes before anything asks for it, so that every press renders anew: resamplers have
// settings of their own, of which nothing is known here.
int Rendering::Run(PreviewEnd& end) {
  end = PreviewEnd::NotPrepared;
  // Texts of voicebanks part their folders by "/" too.
  const std::wstring wave = PathIn(folder_, PathFindFileNameW(input_.WavePath.c_str()));
  const std::wstring output = PathIn(folder_, kRenderedName);
  if (const int error = Prepare(wave, output)) return error;
  end = PreviewEnd::NotStarted;
  if (input_.Settings.Direct) {
    CopyFilePlainly(wave, output);
  } else if (Render(wave, output) != 0) {
    return -1;
  }
  if (!FileExists(output) && !IsNarrow(wave)) RenderUnderPlainName();
  end = FileExists(output) ? PreviewEnd::NotPlayed : PreviewEnd::Silent;
  if (end == PreviewEnd::NotPlayed) return 0;
  LogPreview(L"fail to render\n\n\"" + input_.ResamplerPath + L"\" " + commandLine_ + L"\n\noriginal wav is " +
             input_.WavePath);
  return -1;
}

int Rendering::Prepare(const std::wstring& wave, const std::wstring& output) const {
  if (!CopyFilePlainly(input_.WavePath, wave)) {
    const DWORD error = GetLastError();
    LogPreview(L"fail to copy " + input_.WavePath + L" to " + wave);
    return error ? static_cast<int>(error) : -1;
  }
  if (!PutMapBeside(wave)) return -1;
  if (!FileExists(output) || Disk().Delete(output)) return 0;
  LogPreview(L"fail to delete " + output);
  return -1;
}

bool Rendering::PutMapBeside(const std::wstring& wave) const {
  const std::wstring mapPath = MapPathFromWaveW(wave, input_.FrqType);
  if (input_.FrqType == FrqTypeMrq) {
    return input_.IgnoresEntry ? WriteMapBeside(folder_, mapPath, input_.Map)
                               : WriteEntryBeside(folder_, mapPath, input_.Entry);
  }
  if (input_.FrqType == FrqTypeVs4ufrq) {
    // The library puts edits into a project that is there.
    CopyFilePlainly(MapPathFromWaveW(input_.WavePath, input_.FrqType), mapPath);
  }
  // A save renews the key of a map that has none in its file, and the next press would see another map.
  FrqMap saved;
  input_.Map.CopyTo(saved);
  if (SaveMap(saved, wave, input_.FrqType, nullptr) == 0) return true;
  LogPreview(L"fail to save " + mapPath);
  return false;
}

int Rendering::Render(const std::wstring& wave, const std::wstring& output) {
  const int result = RunResamplerRender(input_.Window, commandLine_, input_.ResamplerPath, wave,
                                        input_.Map.ShownAverage(), input_.Settings, output);
  // Nothing depends on that setting any more; it is read where it once was asked for.
  if (result == 0 && GetResamplerKind(input_.ResamplerPath) == FrqTypeMrq) IsMoreCompatibilityOff(input_.ResamplerPath);
  return result;
}

// This serves resamplers that cannot open the wave by its own name, or in a folder with such a name.
void Rendering::RenderUnderPlainName() {
  const std::optional<std::wstring> folder = NarrowForm(folder_);
  if (!folder) return;
  const std::wstring wave = PathIn(*folder, PlainWaveName(input_.WavePath));
  if (CopyFilePlainly(input_.WavePath, wave) && PutMapBeside(wave)) Render(wave, PathIn(*folder, kRenderedName));
}

}  // namespace

void LogPreview(const std::wstring& text) {
  const std::lock_guard locked(logLock);
  PreviewLogText += text;
}

void ClearPreviewLog() {
  const std::lock_guard locked(logLock);
  PreviewLogText.clear();
}

int RenderPreview(const std::wstring& folder, const PreviewInput& input, PreviewEnd& end) {
  return Rendering(folder, input).Run(end);
}

int RunResamplerRender(HWND owner, std::wstring& commandLine, const std::wstring& resamplerPath,
                       const std::wstring& inputWave, double frequency, const RenderSettings& settings,
                       const std::wstring& outputWave) {
  WaveHeader header;
  if (header.Load(inputWave, true) != 0) {
    LogPreview(L"fail to open " + inputWave);
    return -1;
  }
  const double lengthMs = RenderLengthMs(header.format, header.dataSize);
  commandLine = RenderCommandLine(inputWave, outputWave, frequency, lengthMs, settings);
  if (RunHidden(owner, resamplerPath, commandLine, nullptr) == 0) return 0;
  LogPreview(L"fail to shellexecute \"" + resamplerPath + L"\" " + commandLine);
  return -1;
}
