// HeardWave: a recording that the check has listened to, and the file form of those of a folder, in which they outlast
// the run.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "base/filesystem.h"
#include "check/checkrecords.h"
#include "check/hearing.h"

// The answer to one map of the recording, so that one that has not changed need not be asked about again.
struct KeptAnswer {
  struct Marked {
    std::int32_t Frame;
    std::int32_t Mark;
    double Suggestion;  // [Hz]

    bool operator==(const Marked&) const = default;
  };

  std::uint64_t Map = 0;  // HashOfMap
  std::vector<Marked> Marks;

  bool operator==(const KeptAnswer&) const = default;
};

struct HeardWave {
  FileFacts File;  // of the wave when it was read
  Hearing Heard;
  std::optional<KeptAnswer> Answer = {};  // the last one

  bool operator==(const HeardWave&) const = default;
};

// The waves of a folder that were heard, by their names without a folder.
using HeardWaves = std::map<std::wstring, std::shared_ptr<const HeardWave>>;

// The hash of all that the check looks at in a map: hop and pitch of its frames.
std::uint64_t HashOfMap(const CheckFrameRecord& map);

// AnswerIn takes the answer from the record of a map; WriteAnswer puts it into a record of the same map, and gives the
// number of marked frames.
KeptAnswer AnswerIn(const CheckFrameRecord& map);
std::int32_t WriteAnswer(const KeptAnswer& answer, CheckFrameRecord& map);

// The waves as bytes and back. `edition` names the rules: waves that others have heard are not read. No waves for bytes
// that are damaged.
Bytes EncodeHeardWaves(const HeardWaves& waves, std::uint64_t edition);
HeardWaves DecodeHeardWaves(ByteSpan bytes, std::uint64_t edition);
