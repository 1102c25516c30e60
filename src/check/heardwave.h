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
    std::int32_t frame;
    std::int32_t mark;
    double suggestion;  // [Hz]

    bool operator==(const Marked&) const = default;
  };

  std::uint64_t map = 0;  // HashOfMap
  std::vector<Marked> marked;

  bool operator==(const KeptAnswer&) const = default;
};

struct HeardWave {
  FileFacts file;  // as it was when it was read
  Hearing hearing;
  std::optional<KeptAnswer> answer = {};  // the last one

  bool operator==(const HeardWave&) const = default;
};

// By the name of the wave, without a folder.
using HeardWaves = std::map<std::wstring, std::shared_ptr<const HeardWave>>;

// Of what the check looks at in a map: hop and pitch of its frames.
std::uint64_t HashOfMap(const CheckFrameRecord& map);

// The answer that the record of a map holds, and back into a record of the same map, which gives the number of marked
// frames.
KeptAnswer AnswerIn(const CheckFrameRecord& map);
std::int32_t WriteAnswer(const KeptAnswer& answer, CheckFrameRecord& map);

// `edition` names the rules: what others have heard is not read. None for bytes that are damaged.
Bytes EncodeHeardWaves(const HeardWaves& waves, std::uint64_t edition);
HeardWaves DecodeHeardWaves(ByteSpan bytes, std::uint64_t edition);
