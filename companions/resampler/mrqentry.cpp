#include "mrqentry.h"

#include "base/path.h"
#include "base/utf16.h"

std::u16string MrqNameOf(const std::wstring& wavePath) {
  const std::wstring name = FileNameOf(wavePath);
  return Utf16Of(name.substr(0, name.rfind(L'.')) + L".wav");
}

MrqEntry EntryOfMade(const FrqMap& map) {
  MrqEntry entry;
  entry.Hop = map.Hop;
  entry.Unedited = 1;
  for (const FrqFrame& frame : map.Frames) entry.Frequencies.push_back(frame.Voiced ? frame.Frequency : 0.0);
  return entry;
}
