// A wave rendered by the resampler in a private folder with a map that is given: nothing of the voicebank is touched.
// It stands apart from the previews, since two maps are compared by such renderings as well.
//
// Any thread may render, each in a folder of its own.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "frqmap/frqmap.h"
#include "frqmap/mrqfile.h"
#include "resampler/commandline.h"

// The log of the last preview, of failures and successes, with paths and the command line. No window shows it.
extern std::wstring PreviewLogText;
void LogPreview(const std::wstring& text);
void ClearPreviewLog();

// The end of a preview that the user is told.
enum class PreviewEnd {
  Well,         // played, or stopped
  NotPrepared,  // the wave or its map could not be put into the folder
  NotStarted,   // the resampler could not be started
  Silent,       // it ran and rendered nothing
  NotPlayed,    // the system does not play it
};

struct PreviewInput {
  std::wstring WavePath;
  ::FrqType FrqType = FrqTypeFrq;
  FrqMap Map;
  std::optional<MrqEntry> Entry;  // for a map in desc.mrq: the entry in the list's store, which
                                  // is not the edits; users know to save before they press Play
  bool IgnoresEntry = false;      // that kind too goes by the map, not by its entry
  RenderSettings Settings;
  std::wstring ResamplerPath;
  HWND Window = nullptr;  // owns what the system may have to show, and is posted the end
};

inline constexpr wchar_t kRenderedName[] = L"output.wav";

// Copies wave and map into the folder and has the resampler make kRenderedName there. Gives 0, with `end` NotPlayed
// until somebody has played it; else an error, with `end` for the step that has failed.
int RenderPreview(const std::wstring& folder, const PreviewInput& input, PreviewEnd& end);
// Renders a whole wave at its key [Hz], shifted by semitones, with the map beside it. Gives 0, or -1 if the wave cannot
// be read or the resampler cannot be started; the file shows whether it rendered anything. `commandLine` is what it was
// called with.
int RunResamplerRender(HWND owner, std::wstring& commandLine, const std::wstring& resamplerPath,
                       const std::wstring& inputWave, double frequency, const RenderSettings& settings,
                       const std::wstring& outputWave);
