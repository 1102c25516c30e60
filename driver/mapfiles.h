// The contents of a voicebank's files, read from their bytes and not by the program's own code. A map is a
// "frq" or a "frc", which differ in their head alone.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "base/bytes.h"

// By their names within a folder and those below it, with "/".
using Files = std::map<std::wstring, Bytes>;
Files FilesIn(const std::filesystem::path& folder);
// Whoever writes or replaces the file meanwhile is not held up.
Bytes ReadFile(const std::filesystem::path& file);
void WriteFile(const std::filesystem::path& file, const Bytes& bytes);
// Those that differ, are new or have gone, in the order of their names, a blank between them.
std::wstring ChangedFiles(const Files& before, const Files& after);

// The same as they are, in a folder that is made.
void WriteSampleBank(const std::filesystem::path& folder);

// "か_wav.frq" of "か.wav".
std::wstring MapNameOf(const std::wstring& wave);
// All waves have a file for their map, or a map with frames at that.
bool MapsAreThere(const std::filesystem::path& folder);
bool EveryWaveHasAMap(const Files& files);

// Of a map [Hz]; nothing of one that is not there or too short.
std::vector<double> FrequenciesOf(const Bytes& map);
double FrequencyOf(const Bytes& map, std::size_t frame);
double AverageOf(const Bytes& map);
// Bytes differ, and all of those are frequencies of frames between the first and the last.
bool OnlyFramesChanged(const Bytes& before, const Bytes& after, std::size_t first, std::size_t last);
// Multiplies frequencies of the map in a file.
void ScaleFrames(const std::filesystem::path& file, std::size_t first, std::size_t count, double factor);
