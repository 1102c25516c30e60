// Damaged desc.mrq files: whatever they hold, nothing is read beyond them, and no writing costs a map that was there.
#include "frqmap/mrqwriting.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>

#include "native/testdata.h"

namespace {

using Maps = std::map<std::u16string, std::vector<double>>;

Maps ReadAll(MrqImage& image) {
  Maps maps;
  ReadAllMrqEntries(image, [&](const std::u16string& name, MrqEntry&& entry) {
    // A NaN equals nothing.
    std::ranges::replace_if(
        entry.Frequencies, [](double hz) { return std::isnan(hz); }, -1.0);
    maps[name] = std::move(entry.Frequencies);
  });
  return maps;
}

// An entry that is there already is saved once shorter and once longer than it was, and something new as well.
void ExpectWritingKeepsAll(const Bytes& file) {
  MrqImage before(file);
  for (const std::u16string name : {u"に.wav", u"na.wav", u"i へ.wav", u"new.wav"}) {
    for (const std::size_t frameCount : {5u, 50u}) {
      MrqImage image(file);
      MrqEntry entry;
      entry.Frequencies.assign(frameCount, 110.0);
      EXPECT_EQ(WriteMrqEntry(image, name, entry, 1), file.size() >= MrqHeaderBytes);
      if (file.size() < MrqHeaderBytes) continue;
      Maps expected = ReadAll(before);
      expected[name] = entry.Frequencies;
      EXPECT_THAT(ReadAll(image), testing::IsSupersetOf(expected));
    }
  }
  MrqImage compacted(file);
  EXPECT_TRUE(CompactMrqEntries(compacted, 1) == 1 || compacted.Content == file);
  EXPECT_THAT(ReadAll(compacted), testing::IsSupersetOf(ReadAll(before)));
}

TEST(MrqFile, DamageCostsNoMapThatCanStillBeRead) {
  for (const char* name : {"mrq/02-in-place/desc.mrq", "mrq/04-no-trailer/desc.mrq", "mrq/06-dead-entries/desc.mrq"}) {
    const Bytes whole = testdata::FileBytes(name);
    for (std::size_t at = 0; at <= whole.size(); ++at) {
      SCOPED_TRACE(std::string(name) + " " + std::to_string(at));
      ExpectWritingKeepsAll(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(at)));
      for (const std::int32_t value : {-1, 0, 1, 40, -0x7FFFFFFF - 1, 0x7FFFFFFF, 0x3FFFFFFF, 0x20000000}) {
        Bytes file = whole;
        std::memcpy(file.data() + at, &value, std::min(sizeof(value), whole.size() - at));
        ExpectWritingKeepsAll(file);
      }
    }
  }
}

// Entries found after a save, by what was left behind the entries na (of one frame), ni and na again (of two).
TEST(MrqFile, WhatOthersLeftHidesNoSave) {
  const auto entry = [](std::u16string name, std::size_t frames) {
    const Bytes body = EncodeMrqBody({256, 44100, std::vector<double>(frames, 99.0), 0, 0}, 1);
    Bytes bytes = EncodeMrqHead({0, name + u".wav", static_cast<std::int32_t>(body.size())});
    bytes.insert(bytes.end(), body.begin(), body.end());
    return bytes;
  };
  const Bytes stray = {6, 0, 0, 0, 'x', 0}, other = entry(u"nu", 30), cut(other.begin(), other.end() - 60);
  const std::tuple<int, Bytes, const char*> tests[] = {{3, {}, "na2 ni1 no5"},
                                                       {3, stray, "na2 ni1 no5"},
                                                       {3, cut, "na2 ni1 no5"},
                                                       {4, cut, "na2 ni1 no5"},
                                                       {8, {}, "na2 ni1 no5"},
                                                       {8, stray, "na2 ni1 no5"},
                                                       {2, {}, "na1 ni1 no5"},
                                                       {1, {}, "na1 ni1 no5"},
                                                       {-5, cut, "na1 ni1 no5"},
                                                       {0x7FFFFFFF, {}, "na2 ni1 no5"},
                                                       {3, entry(u"nu", 3), "na2 ni1 no5 nu3"},
                                                       {3, entry(u"no", 9), "na2 ni1 no5"},
                                                       {3, entry(u"no", 2), "na2 ni1 no5"},
                                                       {3, entry(u"ni", 7), "na2 ni1 no5"}};
  for (const auto& [count, behind, expected] : tests) {
    MrqImage image(EmptyMrqFile());
    std::memcpy(&image.Content[8], &count, sizeof(count));
    for (const Bytes& part : {entry(u"na", 1), entry(u"ni", 1), entry(u"na", 2), behind}) {
      image.WriteAt(image.Size(), part);
    }
    std::string found;
    EXPECT_TRUE(WriteMrqEntry(image, u"no.wav", {256, 44100, std::vector<double>(5, 99.0), 0, 0}, 1));
    for (const auto& [name, map] : ReadAll(image)) {
      found += (found.empty() ? "" : " ") + std::string{'n', static_cast<char>(name[1])} + std::to_string(map.size());
    }
    EXPECT_EQ(found, expected) << count << " " << behind.size();
    EXPECT_TRUE(KillMrqEntries(image, u"no.wav"));
    EXPECT_FALSE(ReadAll(image).contains(u"no.wav"));
  }
}

}  // namespace
