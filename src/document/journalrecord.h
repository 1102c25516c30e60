// What stands in a journal: its head, and records of what a document has told, as bytes and back.
//
// Apart from the file, which frames and checks them, and from what is made of them again.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "document/step.h"
#include "frqmap/frqtype.h"

// The voicebank that a journal is of.
struct JournalHead {
  FrqType Kind = FrqTypeUnknown;
  std::wstring Folder;     // as the list has opened it
  std::wstring Resampler;  // path, empty for none
  std::int64_t Time = 0;   // [s since 1970] when the folder was opened
};

struct JournalRecord {
  enum Type : std::uint8_t {
    Read,      // the map is what the file holds, of the path: Stamp and Image. Image is 0 where there is none
    Saved,     // the file holds the map, likewise
    Broken,    // a save has failed and has left that Stamp
    Edited,    // the edited mark is set
    Clean,     // it is cleared
    Done,      // Change is a new step
    Stroke,    // Change is an open stroke so far, in the place of an earlier one
    NoStroke,  // the stroke has ended
    Undone,    // the next step back
    Redone,    // the next step forth
    Dropped,   // the entry goes out of all steps
    Cleared,   // all steps go
  };
  static constexpr int kTypes = Cleared + 1;

  Type What = Cleared;
  int Entry = -1;  // index of the syllable when it was written; a journal names it with its first Read
  std::wstring Path = {};
  std::uint64_t Stamp = 0;  // see DocumentFiles
  std::uint64_t Image = 0;  // see ImageHash
  std::optional<Step> Change = {};
};

void EncodeHead(ByteWriter& writer, const JournalHead& head);
std::optional<JournalHead> DecodeHead(ByteSpan bytes);

// What a type has no place for is left out.
void EncodeRecord(ByteWriter& writer, const JournalRecord& record);
// Done and Stroke.
void EncodeChange(ByteWriter& writer, JournalRecord::Type type, const Step& step);
// Adds all records that lie there. False if they are not whole; then those ahead of the fault have been added.
bool DecodeRecords(ByteSpan bytes, std::vector<JournalRecord>& records);
