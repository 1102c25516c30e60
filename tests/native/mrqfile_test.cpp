// Damaged desc.mrq files: whatever they hold, nothing is read beyond them, and no writing costs a map that was there.
#include "frqmap/mrqfile.h"

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

// Whether the entries lead to the very end, where the next one will be looked for.
bool IsSound(MrqImage& image) {
  MrqScan scan(image);
  while (scan.Next()) continue;
  return !scan.HasFailed() && scan.Head().End() == image.Size();
}

// What is there already is saved once shorter and once longer than it was, and something new as well.
void ExpectWritingKeepsAll(const Bytes& file) {
  MrqImage before(file);
  for (const std::u16string name : {u"に.wav", u"na.wav", u"i へ.wav", u"new.wav"}) {
    for (const std::size_t frameCount : {5u, 50u}) {
      MrqImage image(file);
      MrqEntry entry;
      entry.Frequencies.assign(frameCount, 110.0);
      if (!WriteMrqEntry(image, name, entry, 1)) continue;
      Maps expected = ReadAll(before);
      Maps after = ReadAll(image);
      expected[name] = IsSound(before) ? entry.Frequencies : after[name];
      EXPECT_THAT(after, testing::IsSupersetOf(expected));
    }
  }
  MrqImage compacted(file);
  EXPECT_TRUE(CompactMrqEntries(compacted, 1) == 1 || compacted.Content == file);
  EXPECT_EQ(ReadAll(compacted), ReadAll(before));
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

// Takes what goes into its space, and then fails as a disk does.
struct FullDisk : MrqImage {
  using MrqImage::MrqImage;
  std::size_t Space = 0;

  bool WriteAt(std::int64_t position, ByteSpan bytes) override {
    const std::size_t taken = std::min(bytes.size(), Space - std::min(Space, static_cast<std::size_t>(position)));
    return MrqImage::WriteAt(position, bytes.first(taken)) && taken == bytes.size();
  }
};

TEST(MrqFile, AFullDiskCostsNoMapOfBeforeOrAfter) {
  FullDisk disk(testdata::FileBytes("mrq/02-in-place/desc.mrq"));
  const Bytes before = disk.Content;
  MrqEntry longer;
  longer.Frequencies.assign(50, 110.0);
  for (disk.Space = before.size(); disk.Space < before.size() + 200; ++disk.Space) {
    EXPECT_FALSE(WriteMrqEntry(disk, u"na.wav", longer, 1));
    ASSERT_EQ(disk.Content, before);
  }
  FullDisk grown(testdata::FileBytes("mrq/04-no-trailer/desc.mrq"));
  const Bytes withoutTrailers = grown.Content;
  grown.Space = withoutTrailers.size() + 1;
  EXPECT_EQ(CompactMrqEntries(grown, 1), 0) << "its entries get trailers";
  EXPECT_EQ(grown.Content, withoutTrailers);
}

}  // namespace
