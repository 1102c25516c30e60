// A gesture for whose step there is no memory. It stands, and the history begins anew.
//
// Apart from the other tests of the document: it puts its own operator new in place, which AddressSanitizer wants for
// itself.

#include <atomic>

#include "memoryfiles.h"

namespace {

std::atomic<std::size_t> mostBytes = SIZE_MAX;  // of one allocation

}  // namespace

// Inlined, the compiler would take the pairs apart and warn of the halves.
[[gnu::noinline]] void* operator new(std::size_t size) {
  void* const memory = size < mostBytes ? std::malloc(size) : nullptr;
  if (!memory) throw std::bad_alloc();
  return memory;
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
  std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

namespace {

TEST(DocumentMemory, AGestureThatMemoryDoesNotHoldTwiceStandsWithoutAStep) {
  constexpr SampleCount kFrames = 10'000;
  const auto set = [](FrqMap& map) {
    for (FrqFrame& frame : map.Frames) frame.Frequency = 400.0;
    return std::vector<int>{};
  };
  // Not even the map before; or, where the memory of an earlier gesture serves for it, not the difference. A stroke
  // likewise.
  for (const bool warm : {false, true}) {
    for (const bool stroke : {false, true}) {
      MemoryFiles files;
      Document document(files);
      OpenMaps(document, files, {PlainMap(kFrames), PlainMap(10)});
      document.EnsureLoaded(0, Document::OnFailure::EmptySaved);
      document.EnsureLoaded(1, Document::OnFailure::EmptySaved);
      document.Change(Gesture::SetFrequency, warm ? 0 : 1, [](FrqMap& map) {
        map.Frames.front().Frequency = 300.0;
        return std::vector{0};
      });
      mostBytes = kFrames * sizeof(FrameChange);
      if (stroke) {
        document.BeginStroke(Gesture::Stroke, 0);
        EXPECT_TRUE(document.StrokeChange(0, set));
        document.EndStroke();
      } else {
        document.Change(Gesture::Double, 0, set);
      }
      mostBytes = SIZE_MAX;
      EXPECT_EQ(document.Maps(0).Map->Frames.back().Frequency, 400.0);
      EXPECT_TRUE(document.Facts(0).Edited);
      EXPECT_EQ(document.Undo().What, StepResult::Nothing);
      document.Change(Gesture::TypeKey, 0, [](FrqMap& map) { return map.Average += 1.0, std::vector<int>{}; });
      EXPECT_EQ(document.Undo().What, StepResult::Done);
    }
  }
}

}  // namespace
