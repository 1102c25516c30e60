// marks_of_maps [--alone]: the marks of the check in the map that stands on each line of the standard input, as
// `./bench voices` weighs it. With --alone it does not get to hear the recording.
//
// A line is the path of the wave and the pitches [Hz] of the map, 0 for none, as far apart as pitch_of_waves has them.
// A line comes out for each: reason and suggestion [Hz] of each frame.
#include <cmath>
#include <cstdio>
#include <iostream>
#include <sstream>
#include <string_view>
#include <vector>

#include "frqmap/frqmap.h"
#include "frqmap/levels.h"
#include "native/checkbysound.h"
#include "readsound.h"

namespace {

constexpr SampleCount kUsualHop = 256;

FrqMap MapOf(const std::vector<double>& hz, const Sound& sound, SampleCount hop) {
  FrqMap map;
  map.Create(static_cast<SampleCount>(hz.size()), FrqTypeFrq);
  map.Hop = hop;
  const std::vector<std::int16_t> samples = To16Bits(sound.samples);
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(samples.data());
  SetLevels(map, LevelsOfSamples({bytes, samples.size() * sizeof(samples[0])}, 1, hop));
  for (std::size_t i = 0; i < hz.size(); ++i) map.Frames.Own()[i].Frequency = hz[i] > 0.0 ? hz[i] : FrqNoPitch;
  return map;
}

void PrintMarks(const Sound& sound, const std::vector<double>& hz, bool isAlone) {
  const auto hop = static_cast<SampleCount>(std::lround(kUsualHop * sound.rate / 44100.0));
  FrqMap map = MapOf(hz, sound, hop);
  // A check of the map alone takes each for one at the usual rate.
  if (isAlone) map.Hop = kUsualHop;
  const CheckFrqSettings settings;
  const auto frames = MakeCheckFrames(map, L"");
  const auto regions = MakeCheckRegions(map);
  if (isAlone) {
    CheckMap(&settings, frames.get(), regions.get());
  } else {
    CheckMapBySound(settings, *frames, regions.get(), sound.samples, sound.rate);
  }
  for (std::size_t i = 0; i < hz.size(); ++i) {
    std::printf("%d %.2f ", frames->Frames[i].Mark, frames->Frames[i].SuggestedFrequency);
  }
  std::printf("\n");
}

}  // namespace

int main(int argc, char** argv) {
  const bool isAlone = argc > 1 && std::string_view(argv[1]) == "--alone";
  for (std::string line; std::getline(std::cin, line);) {
    const std::string path = line.substr(0, line.find('\t'));
    const std::optional<Sound> sound = ReadSound(path);
    if (!sound) {
      std::fprintf(stderr, "marks_of_maps: cannot read %s\n", path.c_str());
      return 1;
    }
    std::istringstream words(line.substr(path.size()));
    PrintMarks(*sound, {std::istream_iterator<double>(words), {}}, isAlone);
  }
  return 0;
}
