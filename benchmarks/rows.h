// The rows of the benchmark table, by family: a new row goes into the source of its family, a new family gets a line
// here and one in main.cpp, or in main_native.cpp where it needs no Windows.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

// The work that a row weighs. It is set up by its constructor, ahead of all measuring, and cleared away by its
// destructor. Its two sides are called in turn and give their cost in the row's unit.
class Work {
 public:
  Work() = default;
  Work(const Work&) = delete;
  Work& operator=(const Work&) = delete;
  virtual ~Work() = default;

  virtual double Measured() = 0;
  virtual double Yardstick() = 0;
};

// The one of several goes that makes a sample. Least is for work of the processor alone, where whatever takes longer
// than the shortest was disturbed.
enum class Taken { Median, Least };

struct Row {
  std::string name;
  std::string unit;
  double aim;  // the largest ratio of measured to yardstick that is good enough
  std::function<std::unique_ptr<Work>()> setUp;
  Taken taken = Taken::Median;
};

// The row of a work that needs no argument.
template <typename T>
Row RowOf(const char* name, const char* unit, double aim, Taken taken = Taken::Median) {
  return {name, unit, aim, [] { return std::make_unique<T>(); }, taken};
}

// The program's windows at work; `voicebank` as below, with one of 20,000 waves beside it, "-20000" at its end.
std::vector<Row> EditorRows(const std::wstring& voicebank);

// marlit-batch on whole banks, natively. `resampler`: the path of basic-resampler.exe, for Wine.
std::vector<Row> BatchRows(const std::string& resampler);

// How well the check library finds what is wrong, natively, and its time in the form that users get.
std::vector<Row> CheckRows();
std::vector<Row> CheckLibraryRows();

// The history of edits, natively.
std::vector<Row> DocumentRows();

std::vector<Row> ExecutableRows();

// `voicebank`: full path of a folder of 5,000 waves with maps of the size of one frame. The content of the files does
// not matter, as none is opened.
std::vector<Row> FolderRows(const std::wstring& voicebank);

std::vector<Row> FrameListRows();

// A job of making maps, with several counts of workers.
std::vector<Row> JobRows();

std::vector<Row> MapFileRows();

// The thumbnails of a voicebank of 5,000, and a check of 1,000 maps.
std::vector<Row> GlanceRows();

// A map saved into a desc.mrq of 5,000 entries.
std::vector<Row> MrqRows();

// Maps converted by the thousand, a large oto.ini, the levels of a long wave.
std::vector<Row> VoicebankRows();

// Syllables found by a part of their name, natively.
std::vector<Row> NameRows();

// The analysis of pitch against those of others, where they are to be had, natively. Run from the root of the tree,
// where a script for Praat is looked for.
std::vector<Row> PeerRows();

// How well notes are rendered, natively. Run from the root of the tree, where a script for Praat is looked for.
std::vector<Row> RenderRows();

// The spectrum, natively. `command32` runs the program that measures it in the 32-bit build.
std::vector<Row> SpectrumRows(const std::string& command32);

// The frequency table painted anew over the spectrum, and a stroke in it.
std::vector<Row> TableRows();

// Pitch analysis against voices whose pitch is known, and the bundled resampler as a process on a wave of a minute.
std::vector<Row> ResamplerRows();
