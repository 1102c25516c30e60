// How a desc.mrq is written: an entry put over the old one or appended, made dead, and the file compacted.
//
// Other programs write these files too, and not all of them to the end. An entry is appended where the entries that can
// be read end, whatever lies behind them, and sound entries behind the count are counted from then on. So nothing that
// is written is hidden by what others left, and no map is lost that a reader would find.
//
// All of this works on a stream. A file's should be staged, because a write that fails leaves it half written.
#pragma once

#include <functional>

#include "frqmap/mrqfile.h"

// Called with each entry, as it lies in the stream, before it is written over or killed.
using MrqKeeping = std::function<void(const MrqHead&)>;

// Writes the body over that of the first entry of its name if it fits, else kills that one and appends. The file
// becomes one of version 2, also from a newer one. Gives the head of the written entry; none if the stream cannot be
// read or written.
std::optional<MrqHead> PutMrqEntry(FileStream& stream, const std::u16string& name, const Bytes& body,
                                   const MrqKeeping& keep = {});

// PutMrqEntry with a body made of an entry. False if that failed.
bool WriteMrqEntry(FileStream& stream, const std::u16string& name, const MrqEntry& entry, std::int32_t timestamp);

// Makes the first entry of that name a dead one, and uncounted ones of that name too. Their places and the count stay
// until the file is compacted. False if a reader still finds one of that name, or if the stream cannot be read or
// written.
bool KillMrqEntries(FileStream& stream, const std::u16string& name, const MrqKeeping& keep = {});

// Rebuilds the file without its dead entries, with the uncounted ones, and with all timestamps set anew. 1; 0 if not
// all of it can be read or written; -1 for a file of a newer version, which is left alone.
int CompactMrqEntries(FileStream& stream, std::int32_t timestamp, const MrqKeeping& keep = {});
