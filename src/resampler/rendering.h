// A wave rendered by the resampler in a private folder with a map that is given, as previews are: nothing of the
// voicebank is touched. Apart from the previews, since what compares two maps renders so as well.
//
// Any thread may render, each in a folder of its own.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "frqmap/frqmap.h"
#include "frqmap/mrqfile.h"
#include "resampler/commandline.h"

// What went wrong, and what went well, in the last preview, with paths and the command line. No window shows it.
extern std::wstring PreviewLogText;
void LogPreview(const std::wstring& text);
void ClearPreviewLog();

// What of it the user is told.
enum class PreviewEnd {
  Well,         // or stopped
  NotPrepared,  // the wave or its map could not be put into the folder
  NotStarted,   // the resampler could not be started
  Silent,       // it ran and rendered nothing
  NotPlayed,    // the system does not play it
};

struct PreviewInput {
  std::wstring WavePath;
  ::FrqType FrqType = FrqTypeFrq;
  FrqMap Map;
  std::optional<MrqEntry> Entry;  // of the kind that keeps its maps in desc.mrq: what the list's store holds, which
                                  // is not the edits; users know to save before they press Play
  bool IgnoresEntry = false;      // the map counts with that kind too
  RenderSettings Settings;
  std::wstring ResamplerPath;
  HWND Window = nullptr;  // owns what the system may have to show, and is posted the end
};

inline constexpr wchar_t kRenderedName[] = L"output.wav";

// Copies wave and map into the folder and has the resampler make kRenderedName there. 0, with `end` NotPlayed, which it
// is until somebody has played it; else an error, and what of the steps has failed.
int RenderPreview(const std::wstring& folder, const PreviewInput& input, PreviewEnd& end);
// Renders a whole wave, at its average pitch [Hz] shifted by semitones, with the map beside it. 0, or -1 if the wave
// cannot be read or the resampler cannot be started; whether it rendered anything, the file shows. `commandLine` is
// what it was called with.
int RunResamplerRender(HWND owner, std::wstring& commandLine, const std::wstring& resamplerPath,
                       const std::wstring& inputWave, double frequency, const RenderSettings& settings,
                       const std::wstring& outputWave);
