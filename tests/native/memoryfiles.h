// Files of a document in memory, with faults at will, and what of a map counts as its content.
#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <functional>
#include <map>
#include <new>
#include <string>
#include <vector>

#include "document/document.h"

inline void ClearMarks(FrqMap& map) {
  for (FrqFrame& frame : map.Frames.Own()) frame.Mark = 0, frame.SuggestedFrequency = 0.0;
  map.HasMarks = false;
}

// A file holds no marks, and no average where that is derived. The next call alone meets the fault.
struct MemoryFiles : DocumentFiles {
  enum class Fault { None, Fails, Throws };

  std::map<std::wstring, FrqMap> Files;
  std::map<std::wstring, std::uint64_t> Stamps;  // how often each was written
  Fault Next = Fault::None;
  int AnalysesGone = 0;

  int Load(FrqMap& map, const std::wstring& wavePath) override {
    map.Frames.Own().resize(3);  // what a reading that throws leaves behind
    const auto file = Files.find(wavePath);
    if (Meets() || file == Files.end()) {
      map.Clear();
      return 7;
    }
    map = file->second;
    return 0;
  }

  int Save(FrqMap& map, const std::wstring& wavePath, std::uint32_t& error) override {
    error = 5;
    if (map.DerivedAverage) map.Average = map.ComputeAverage(-1);
    if (Meets()) return 9;
    error = 0;
    if (map.Frames.empty()) return -1;
    Put(wavePath, map);
    return 0;
  }

  std::uint64_t Stamp(const std::wstring& wavePath) override {
    const auto stamp = Stamps.find(wavePath);
    return Files.contains(wavePath) && stamp != Stamps.end() ? stamp->second : 0;
  }

  bool Delete(const std::wstring& wavePath) override { return !Meets() && Files.erase(wavePath) > 0; }

  void DeleteAnalysis(const std::wstring&) override {
    ++AnalysesGone;
    throw std::bad_alloc();  // of which nobody has to know
  }

  void Put(const std::wstring& wavePath, FrqMap map) {
    ClearMarks(map);
    map.Loaded = true;
    map.Modified = false;
    if (map.DerivedAverage) map.Average = 0.0;
    Files[wavePath] = std::move(map);
    ++Stamps[wavePath];
  }

 private:
  bool Meets() {
    const Fault fault = std::exchange(Next, Fault::None);
    if (fault == Fault::Throws) throw std::bad_alloc();
    return fault == Fault::Fails;
  }
};

using Words = std::vector<std::uint64_t>;
constexpr std::size_t kFrameWords = 5;

// Everything that an undo brings back, bit for bit, or what of it a file holds.
inline Words ContentOf(const FrqMap& map, bool ofFile = false) {
  const auto bits = [](double number) { return std::bit_cast<std::uint64_t>(number); };
  Words words;
  words.reserve(map.Frames.size() * 8 + 2);
  for (const FrqFrame& frame : map.Frames) {
    words.push_back(bits(frame.Frequency));
    if (ofFile) continue;
    words.push_back(frame.Voiced);
    words.push_back(frame.Mark);
    words.push_back(bits(frame.SuggestedFrequency));
    words.push_back(bits(frame.Amplitude));
  }
  if (!map.DerivedAverage) words.push_back(bits(map.Average));
  if (!map.HasProject) return words;
  for (const VsControlPoint& point : map.Project.Points()) {
    words.push_back(static_cast<std::uint64_t>(point.Pitch) << 32 | static_cast<std::uint32_t>(point.HasPitch));
    words.push_back(bits(point.Dynamics));
  }
  return words;
}

inline FrqMap PlainMap(SampleCount frames) {
  FrqMap map;
  map.Create(frames, FrqTypeFrq);
  for (SampleCount i = 0; i < frames; ++i) map.SetFrequency(map.PositionOf(i), 200.0 + i % 100);
  map.Average = 220.0;
  map.Loaded = true;
  return map;
}

// A change that sets one frame.
inline std::function<std::vector<int>(FrqMap&)> Setting(double hz, int row = 2) {
  return [=](FrqMap& map) {
    map.SetFrequency(map.PositionOf(row), hz);
    return std::vector<int>{row};
  };
}

// The mark of a check on one frame, if there is one.
inline std::function<void(FrqMap&)> Marking(std::size_t row, double hz, std::uint32_t mark = 1) {
  return [=](FrqMap& map) {
    if (row >= map.Frames.size()) return;
    map.Frames.Own()[row].Mark = mark;
    map.Frames.Own()[row].SuggestedFrequency = hz;
    map.HasMarks = true;
  };
}

// Syllables "0", "1" and so on, their maps loaded.
inline std::vector<FoundSyllable> OpenMaps(Document& document, MemoryFiles& files, const std::vector<FrqMap>& maps) {
  std::vector<FoundSyllable> found;
  for (const FrqMap& map : maps) {
    found.push_back({std::to_wstring(found.size()), true, 20});
    files.Put(found.back().Path, map);
  }
  document.Open(found);
  for (int i = 0; i < std::ssize(maps); ++i) document.EnsureLoaded(i, Document::OnFailure::EmptySaved);
  return found;
}

// The document counts as its entries tell one by one.
inline void ExpectCounts(const Document& document) {
  const DocumentState state = document.State();
  int edited = 0, maps = 0;
  for (int entry = 0; entry < state.Entries; ++entry) {
    edited += document.Facts(entry).Edited;
    maps += document.Facts(entry).HasMap;
  }
  EXPECT_EQ(std::pair(state.Edited, state.Maps), std::pair(edited, maps));
  EXPECT_EQ(state.CurrentEdited, document.Facts(document.Current()).Edited);
}
