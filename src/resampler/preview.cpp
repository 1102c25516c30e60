#include "resampler/preview.h"

#include <process.h>
#include <shlwapi.h>

#include <atomic>
#include <exception>
#include <utility>

#include "app/messages.h"
#include "base/files.h"
#include "base/filesystem.h"
#include "base/narrowpath.h"
#include "base/path.h"
#include "base/tempfolder.h"
#include "frqmap/mapfiles.h"
#include "frqmap/mrqmap.h"
#include "resampler/hiddenrun.h"
#include "resampler/moreconfig.h"
#include "resampler/plaincopy.h"
#include "resampler/playmci.h"
#include "resampler/resamplerkind.h"
#include "voicebank/waveheader.h"

std::wstring PreviewLogText;

namespace {

constexpr wchar_t kOutputName[] = L"output.wav";
constexpr DWORD kPollMs = 100;
constexpr DWORD kLongestWaitMs = 10'000;

void Log(const std::wstring& text) {
  PreviewLogText += text;
}

// The one entry in a desc.mrq of its own.
bool WriteEntryBeside(const std::wstring& folder, const std::wstring& mapPath, const std::optional<MrqEntry>& entry) {
  if (!entry) return false;
  MrqStore store;
  const std::wstring key = MrqKey(mapPath);
  return store.AddFolder(folder) == 0 && store.SetEntry(key, *entry) == 0 && store.WriteEntry(key) == 0;
}

}  // namespace

// What the object and its thread share.
struct CPreview::Shared {
  std::wstring Folder;
  PreviewInput Input;
  std::atomic<bool> StopAsked = false;
  std::atomic<bool> Ended = true;
  PreviewEnd End = PreviewEnd::Well;  // the thread's until it has ended

  // The last render: the thread's alone.
  FrqMap LastMap;
  std::wstring LastPath;
  RenderSettings LastSettings;

  bool HasChanged() const;
  void RememberInput();
  bool PutMapBeside(const std::wstring& wave);
  int RenderAndPlay();
  int Render(const std::wstring& wave, const std::wstring& output, std::wstring& commandLine);
  void RenderUnderPlainName(std::wstring& commandLine);
  int Play(const std::wstring& output) const;
};

bool CPreview::Shared::HasChanged() const {
  return LastSettings != Input.Settings || LastPath != Input.WavePath || !Input.Map.Equals(LastMap);
}

void CPreview::Shared::RememberInput() {
  Input.Map.CopyTo(LastMap);
  LastPath = Input.WavePath;
  LastSettings = Input.Settings;
}

bool CPreview::Shared::PutMapBeside(const std::wstring& wave) {
  const std::wstring mapPath = MapPathFromWaveW(wave, Input.FrqType);
  if (Input.FrqType == FrqTypeMrq) return WriteEntryBeside(Folder, mapPath, Input.Entry);
  if (Input.FrqType == FrqTypeVs4ufrq) {
    // The library puts edits into a project that is there.
    CopyFilePlainly(MapPathFromWaveW(Input.WavePath, Input.FrqType), mapPath);
  }
  // A save renews the average of a map that has none in its file, and the next press would see another map.
  FrqMap saved;
  Input.Map.CopyTo(saved);
  if (SaveMap(saved, wave, Input.FrqType, nullptr) == 0) return true;
  Log(L"fail to save " + mapPath);
  return false;
}

// The output of the last render goes before anything asks for it, so that every press renders anew: resamplers have
// settings of their own, of which nothing is known here. Only the folder is kept where the input is the same.
int CPreview::Shared::RenderAndPlay() {
  End = PreviewEnd::NotPrepared;
  if (HasChanged()) TempFolder::Empty(Folder);
  // Texts of voicebanks part their folders by "/" too.
  const std::wstring wave = PathIn(Folder, PathFindFileNameW(Input.WavePath.c_str()));
  if (!CopyFilePlainly(Input.WavePath, wave)) {
    const DWORD error = GetLastError();
    Log(L"fail to copy " + Input.WavePath + L" to " + wave);
    return static_cast<int>(error);
  }
  if (!PutMapBeside(wave)) return -1;
  const std::wstring output = PathIn(Folder, kOutputName);
  if (FileExists(output) && !Disk().Delete(output)) {
    Log(L"fail to delete " + output);
    return -1;
  }
  RememberInput();
  End = PreviewEnd::NotStarted;
  std::wstring commandLine;
  if (Input.Settings.Direct) {
    CopyFilePlainly(wave, output);
  } else if (Render(wave, output, commandLine) != 0) {
    return -1;
  }
  if (!FileExists(output) && !IsNarrow(wave)) RenderUnderPlainName(commandLine);
  End = FileExists(output) ? PreviewEnd::NotPlayed : PreviewEnd::Silent;
  if (End == PreviewEnd::Silent) {
    Log(L"fail to render\n\n\"" + Input.ResamplerPath + L"\" " + commandLine + L"\n\noriginal wav is " +
        Input.WavePath);
    return -1;
  }
  const int result = Play(output);
  if (result == 0) End = PreviewEnd::Well;
  return result;
}

int CPreview::Shared::Render(const std::wstring& wave, const std::wstring& output, std::wstring& commandLine) {
  const int result = RunResamplerRender(Input.Window, commandLine, Input.ResamplerPath, wave, Input.Map.ShownAverage(),
                                        Input.Settings, output);
  // Nothing hangs on that setting any more; it is read where it once was asked for.
  if (result == 0 && GetResamplerKind(Input.ResamplerPath) == FrqTypeMrq) IsMoreCompatibilityOff(Input.ResamplerPath);
  return result;
}

// For resamplers that cannot open the wave by its own name, or in a folder with such a name.
void CPreview::Shared::RenderUnderPlainName(std::wstring& commandLine) {
  const std::optional<std::wstring> folder = NarrowForm(Folder);
  if (!folder) return;
  const std::wstring wave = PathIn(*folder, PlainWaveName(Input.WavePath));
  if (CopyFilePlainly(Input.WavePath, wave) && PutMapBeside(wave)) {
    Render(wave, PathIn(*folder, kOutputName), commandLine);
  }
}

int CPreview::Shared::Play(const std::wstring& output) const {
  if (PlayMci(output, 0, 0) != 0) {
    Log(L"fail to play " + output);
    return static_cast<int>(CloseMci());
  }
  Log(L"succeed to play " + output);
  while (!StopAsked && IsMciPlaying()) Sleep(kPollMs);
  CloseMci();
  return 0;
}

int RunResamplerRender(HWND owner, std::wstring& commandLine, const std::wstring& resamplerPath,
                       const std::wstring& inputWave, double frequency, const RenderSettings& settings,
                       const std::wstring& outputWave) {
  WaveHeader header;
  if (header.Load(inputWave, true) != 0) {
    Log(L"fail to open " + inputWave);
    return -1;
  }
  const double lengthMs = RenderLengthMs(header.format, header.dataSize);
  commandLine = RenderCommandLine(inputWave, outputWave, frequency, lengthMs, settings);
  if (RunHidden(owner, resamplerPath, commandLine, nullptr) == 0) return 0;
  Log(L"fail to shellexecute \"" + resamplerPath + L"\" " + commandLine);
  return -1;
}

CPreview::CPreview() : State(std::make_shared<Shared>()) {}

CPreview::~CPreview() {
  StopAndWait();
}

void CPreview::SetFolder(const std::wstring& folder) {
  State->Folder = folder;
}

void CPreview::ClearFolder() const {
  TempFolder::Empty(State->Folder);
}

void CPreview::Start(PreviewInput input) {
  Running = true;
  State->StopAsked = false;
  State->Ended = false;
  const HWND window = input.Window;
  State->Input = std::move(input);
  auto shared = std::make_unique<std::shared_ptr<Shared>>(State);
  Thread.reset(reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, ThreadProc, shared.get(), 0, nullptr)));
  if (Thread) {
    shared.release();
  } else {
    State->Ended = true;
    EditorSender(window).PostPreviewDone();
  }
}

unsigned WINAPI CPreview::ThreadProc(void* argument) {
  const std::unique_ptr<std::shared_ptr<Shared>> owned(static_cast<std::shared_ptr<Shared>*>(argument));
  Shared& shared = **owned;
  PreviewLogText.clear();
  int result = -1;
  try {
    result = shared.RenderAndPlay();
  } catch (const std::exception&) {
    // What memory does not hold is not played.
  }
  const HWND window = shared.Input.Window;
  shared.Ended = true;  // the next render may begin at any moment from here on
  EditorSender(window).PostPreviewDone();
  return static_cast<unsigned>(result);
}

void CPreview::Stop() {
  State->StopAsked = true;
}

bool CPreview::HasEnded() const {
  return State->Ended;
}

PreviewEnd CPreview::End() const {
  return State->End;
}

void CPreview::Finish() {
  Running = false;
  State->StopAsked = false;
}

void CPreview::StopAndWait() {
  Stop();
  if (Thread) WaitForSingleObject(Thread.get(), kLongestWaitMs);
  Thread.reset();  // not to be waited for twice
}
