// Waves that the check has heard, in the form in which they are kept.
#include "check/heardwave.h"

#include "frqmap/checkmark.h"
#include "native/family.h"

namespace {

constexpr std::uint64_t kEdition = 7;

HeardWaves Waves() {
  HeardWave answered{{.Size = 44, .Written = 5}, {256, 44100.0, 700, {{220.5f, 0.9f, 0}, {55.0f, 0.0f, 1}}}};
  answered.Answer = {9, {{0, CheckMarkGap, 220.5}, {1, CheckMarkNoise, 0.0}}};
  const HeardWave unasked{{.Size = 3, .Written = -1}, {1, 8000.0, 0, {}}};
  return {{L"あ.wav", std::make_shared<const HeardWave>(answered)}, {L"", std::make_shared<const HeardWave>(unasked)}};
}

TEST(HeardWaves, ComeBackAsTheyWereAndNeverFromDamagedBytesOrAnotherEdition) {
  const HeardWaves waves = Waves();
  Bytes bytes = EncodeHeardWaves(waves, kEdition);
  const HeardWaves back = DecodeHeardWaves(bytes, kEdition);
  ASSERT_EQ(back.size(), waves.size());
  for (const auto& [name, wave] : waves) EXPECT_EQ(*back.at(name), *wave);

  EXPECT_TRUE(DecodeHeardWaves(bytes, kEdition + 1).empty());
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    EXPECT_TRUE(DecodeHeardWaves(ByteSpan(bytes).first(size), kEdition).empty()) << size;
    bytes[size] ^= 0x10;
    EXPECT_TRUE(DecodeHeardWaves(bytes, kEdition).empty()) << size;
    bytes[size] ^= 0x10;
  }
}

TEST(HeardWaves, AnAnswerIsOfOneMapAndReplacesAllMarks) {
  const FrqMap map = MapOf(std::vector<double>(4, 220.0));
  const auto record = MakeCheckFrames(map, L"");
  const std::uint64_t hash = HashOfMap(*record);
  record->Frames[1].Mark = CheckMarkFar;
  record->Frames[1].SuggestedFrequency = 330.0;
  const KeptAnswer answer = AnswerIn(*record);
  EXPECT_EQ(answer.Map, hash) << "marks are no part of it";

  record->Frames[3].Mark = CheckMarkFar;
  EXPECT_EQ(WriteAnswer(answer, *record), 1);
  EXPECT_EQ(AnswerIn(*record), answer);
  EXPECT_EQ(WriteAnswer({hash, {{-1, 1, 0.0}, {4, 1, 0.0}}}, *record), 0) << "no frames of the map";

  record->Frames[3].Frequency *= 1.0000001;
  EXPECT_NE(HashOfMap(*record), hash);
  record->Frames[3].Frequency = 220.0;
  record->Hop = 441;
  EXPECT_NE(HashOfMap(*record), hash);
}

}  // namespace
