// .dio and .pmk maps in a voicebank's folder: the wave beside them gives the levels and the number of samples.
#include <gtest/gtest.h>

#include "frqmap/mapfiles.h"
#include "native/vectors.h"
#include "win/scratch.h"

namespace {

using vectors::Json;

TEST(MapKindFiles, AreLoadedAndSavedWithWhatTheirWaveTells) {
  const Json kinds = Json::parse(vectors::OpenData("kinds.json"));
  for (const Json& test : kinds["maps"]) {
    SCOPED_TRACE(test["case"]);
    const ScratchFolder folder;
    const std::wstring name = vectors::Wide(test["file"]);
    folder.Write(name, vectors::FileBytes(test["file"]));
    if (!test["wave_file"].is_null()) {
      folder.Write(vectors::Wide(test["wave_file"]), vectors::FileBytes(test["wave_file"]));
    }
    FrqMap map;
    ASSERT_EQ(map.Load(NarrowPath(folder.Path(name)).value(), nullptr), test["map"].is_null() ? -1 : 0);
    EXPECT_EQ(map.Loaded, !test["map"].is_null());
    for (const Json& save : test["saves"]) {
      const std::wstring path = folder.Path(vectors::Wide(save["name"]));
      const std::optional<Bytes> before = ReadWholeFile(path);
      const bool saved = map.Save(NarrowPath(path).value(), nullptr) == 0;
      Bytes file = ReadWholeFile(path).value_or(Bytes());
      ASSERT_EQ(saved, !save["file"].is_null()) << save;
      const Bytes expected = saved ? vectors::FileBytes(save["file"]) : before.value_or(Bytes());
      // The last digits of an average that went through pow are any platform's own.
      const Json& average = save["average_at"];
      if (!average.is_null()) std::copy_n(&expected.at(average), sizeof(double), &file.at(average));
      EXPECT_EQ(file, expected) << save;
    }
  }
}

}  // namespace
