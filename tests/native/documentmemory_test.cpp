// A gesture for whose step, or for whose map, there is no memory. The history begins anew, or nothing changes.
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

constexpr SampleCount kFrames = 10'000;

// A document of one map, and what becomes of all its frames at 400 Hz, by a gesture or a stroke, while no allocation is
// of `most` bytes or more.
class MemoryEnds : public testing::TestWithParam<bool> {
 public:
  MemoryEnds() {
    OpenMaps(document_, files_, {PlainMap(kFrames)});
    document_.EnsureLoaded(0, Document::OnFailure::EmptySaved);
  }

  void SetAll(std::size_t most) {
    const auto set = [](FrqMap& map) {
      for (FrqFrame& frame : map.Frames.Own()) frame.Frequency = 400.0;
      return std::vector<int>{};
    };
    mostBytes = most;
    if (GetParam()) {
      document_.BeginStroke(Gesture::Stroke, 0);
      document_.StrokeChange(0, set);
      document_.EndStroke();
    } else {
      document_.Change(Gesture::Double, 0, set);
    }
    mostBytes = SIZE_MAX;
  }

  void TearDown() override {
    document_.Change(Gesture::TypeKey, 0, [](FrqMap& map) { return map.Average += 1.0, std::vector<int>{}; });
    EXPECT_EQ(document_.Undo().What, StepResult::Done) << "the history goes on";
  }

  MemoryFiles files_;
  Document document_{files_};
};

TEST_P(MemoryEnds, AGestureWhoseStepItDoesNotHoldStandsWithoutOne) {
  SetAll(kFrames * sizeof(FrqFrame) + 1);
  EXPECT_EQ(document_.Maps(0).Map->Frames.back().Frequency, 400.0);
  EXPECT_TRUE(document_.Facts(0).Edited);
  EXPECT_EQ(document_.Undo().What, StepResult::Nothing);
}

TEST_P(MemoryEnds, AMapThatItDoesNotHoldTwiceStaysAsItWas) {
  SetAll(kFrames * sizeof(FrqFrame));
  EXPECT_NE(document_.Maps(0).Map->Frames.back().Frequency, 400.0);
  EXPECT_TRUE(HaveSameImage(*document_.Maps(0).Map, *document_.Maps(0).Saved));
  EXPECT_FALSE(document_.Facts(0).Edited);
}

INSTANTIATE_TEST_SUITE_P(DocumentMemory, MemoryEnds, testing::Bool(),
                         [](const auto& test) { return test.param ? "Stroke" : "Gesture"; });

}  // namespace
