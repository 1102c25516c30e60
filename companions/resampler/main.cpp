// basic-resampler: makes the map of a recording where there is none, and renders a note with it.
//
// Its own file name decides which kind of map it makes: a copy called moresampler.exe writes an entry of desc.mrq. Exit
// code 0; 1 if something could not be read, made or written; 2 for a wrong call.
#include <windows.h>

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "arguments.h"
#include "base/systempath.h"
#include "mapfile.h"
#include "render.h"
#include "resampler/resamplerkind.h"
#include "voicebank/soundfile.h"

// The start-up code is not to look for files behind an argument that holds a "*" or a "?".
extern "C" {
int _dowildcard = 0;
}

namespace {

constexpr int kFailed = 1;
constexpr int kWrongCall = 2;

constexpr char kUsage[] =
    "usage: basic-resampler INPUT.WAV OUTPUT.WAV NOTE VELOCITY FLAGS OFFSET LENGTH\n"
    "                       [CONSONANT [CUTOFF [VOLUME [MODULATION [!TEMPO [PITCHBEND]]]]]]\n"
    "       basic-resampler INPUT.WAV nul    makes the frequency map alone\n";

// The path is told in UTF-8, because in the narrow encoding of the system it may lose characters.
void Say(const char* what, const std::wstring& path) {
  std::string name(path.size() * 3 + 1, '\0');
  WideCharToMultiByte(CP_UTF8, 0, path.c_str(), -1, name.data(), static_cast<int>(name.size()), nullptr, nullptr);
  std::fprintf(stderr, "basic-resampler: %s %s\n", what, name.c_str());
}

// The map of the wave, read or made and then written. None if it could not be written and nothing else needs it. A map
// that cannot be read stays as it is, for its user to see to.
std::optional<FrqMap> MapFor(const std::wstring& wavePath, FrqType kind, const Sound& sound, bool isNeeded) {
  if (HasMap(wavePath, kind)) {
    std::optional<FrqMap> map = ReadMapOf(wavePath, kind);
    if (!map) Say("cannot read the frequency map of", wavePath);
    return map ? map : isNeeded ? MakeMap(sound) : std::optional<FrqMap>();
  }
  FrqMap map = MakeMap(sound);
  if (WriteMapOf(wavePath, kind, map, static_cast<std::uint32_t>(sound.samples.size()))) return map;
  Say("cannot write the frequency map of", wavePath);
  return isNeeded ? std::optional(map) : std::nullopt;
}

int Run(const ResamplerCall& call, FrqType kind) {
  if (kind == FrqTypeVs4ufrq) {
    Say("cannot make maps of the kind .vs4ufrq, which need a library of their own:", call.input);
    return kFailed;
  }
  // Maps and desc.mrq lie beside the wave, whatever the current folder is.
  const std::wstring wavePath = FullPathOf(call.input);
  const std::optional<Sound> sound = ReadRecording(wavePath);
  if (!sound) {
    Say("cannot read", wavePath);
    return kFailed;
  }
  const std::optional<FrqMap> map = MapFor(wavePath, kind, *sound, call.note.has_value());
  if (!map) return kFailed;
  if (!call.note) return 0;
  const std::vector<std::int16_t> rendered = To16Bits(RenderNote(*sound, *map, *call.note));
  if (WriteFileAtOnce(FullPathOf(call.output), EncodeWaveFile(rendered, kRenderedRate))) return 0;
  Say("cannot write", call.output);
  return kFailed;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  const auto call = ParseCall(std::vector<std::wstring>(arguments + (count > 0 ? 1 : 0), arguments + count));
  if (call) return Run(*call, GetResamplerKind(ProgramPath()));
  std::fputs(kUsage, stderr);
  return kWrongCall;
}
