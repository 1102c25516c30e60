// The content of a journal as bytes and back: its head, and records of all that a document has told.
//
// It stands apart from the file (journalfile.h), which frames and checks the bytes, and from the replay of the records.
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
  std::wstring Folder;     // the path by which the list has opened it
  std::wstring Resampler;  // path, empty for none
  std::int64_t Time = 0;   // [s since 1970] when the folder was opened
};

struct JournalRecord {
  enum Type : std::uint8_t {
    Read,      // the map of Path was read: Stamp and Image of its file. Image is 0 where there is no map
    Saved,     // the map was saved, with the Stamp and Image of its file then
    Broken,    // a save has failed and has left that Stamp
    Edited,    // the edited mark is set
    Clean,     // the edited mark is cleared
    Done,      // Change is a new step
    Stroke,    // Change is an open stroke so far, in the place of an earlier one
    NoStroke,  // the stroke has ended
    Undone,    // the next step is undone
    Redone,    // the next step is done again
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

// Fields that a type has no place for are left out.
void EncodeRecord(ByteWriter& writer, const JournalRecord& record);
// Encodes a record of the types Done and Stroke.
void EncodeChange(ByteWriter& writer, JournalRecord::Type type, const Step& step);
// Adds all records that lie there. False if they are not whole; then those ahead of the fault have been added.
bool DecodeRecords(ByteSpan bytes, std::vector<JournalRecord>& records);
