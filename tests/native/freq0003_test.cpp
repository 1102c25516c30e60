// FREQ0003 files: real, foreign and damaged ones are read as they should be, and written byte for byte.
#include "frqmap/freq0003.h"

#include <gtest/gtest.h>

#include "native/vectors.h"

namespace {

using vectors::FileBytes;
using vectors::Json;

TEST(Freq0003, ReadsEveryMapThatIsWholeAndRefusesTheOthers) {
  for (const Json& test : vectors::Expected("maps")) {
    SCOPED_TRACE(test["case"]);
    const std::optional<FrqMap> map = DecodeFreq0003(FileBytes(test["file"]));
    ASSERT_EQ(map.has_value(), test["load"] == "ok" || test["load"] == "open");
    if (!map) continue;
    std::vector<double> frequencies;
    for (const FrqFrame& frame : map->Frames) {
      frequencies.push_back(frame.Frequency);
      EXPECT_EQ(frame.Voiced, frame.Frequency > 55.0);
    }
    const Json& expected = test.contains("map") ? test["map"] : test["if_ok"];
    EXPECT_EQ(frequencies, vectors::Numbers(expected["frequency"]));
    EXPECT_EQ(map->FrameCount, expected["frame_count"]);
  }
}

TEST(Freq0003, WritesTheBytesThatResamplersRead) {
  for (const Json& test : vectors::Expected("maps")) {
    for (const auto& [name, kind] : {std::pair("frq", FrqTypeFrq), std::pair("frc", FrqTypeFrc)}) {
      if (!test.contains("saves") || test["saves"][name]["result"] != 0) continue;
      const FrqMap map = *DecodeFreq0003(FileBytes(test["file"]));
      EXPECT_EQ(EncodeFreq0003(map, kind), FileBytes(test["saves"][name]["file"])) << test["case"] << name;
    }
  }
}

TEST(Freq0003, AnUnchangedMapIsWrittenBackAsItWas) {
  for (const auto& [file, kind] : {std::pair("voice/ば_wav.frq", FrqTypeFrq), std::pair("voice/ば_wav.frc", FrqTypeFrc),
                                   std::pair("bad/frq-hop-0_wav.frq", FrqTypeFrq)}) {
    EXPECT_EQ(EncodeFreq0003(*DecodeFreq0003(FileBytes(file)), kind), FileBytes(file)) << file;
  }
}

TEST(Freq0003, AMapCutOffAnywhereIsRefused) {
  const Bytes whole = FileBytes("bad/frq-amplitude-nan_wav.frq");
  for (std::size_t size = 0; size < whole.size(); ++size) {
    // A block of exactly this size, so that a read past the end does not go unseen.
    const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
    EXPECT_FALSE(DecodeFreq0003(cut)) << size;
  }
}

}  // namespace
