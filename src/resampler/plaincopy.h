// PlainCopy: a wave under a name that every resampler can open, in a folder of its own.
//
// Many resamplers take their arguments in the user's code page, or into a buffer of 260 characters. Such a one finds no
// wave in the folder of a user called José, or another one than was meant. It is given a copy, and what it makes of
// that goes to where it belongs. The copy goes with the object.
#pragma once

#include <string>

#include "base/tempfolder.h"
#include "frqmap/frqtype.h"
#include "frqmap/mrqstore.h"

// A name of plain ASCII with the extension of the wave.
std::wstring PlainWaveName(const std::wstring& wave);

// Copies a file, whatever the paths, without the mark of one that is read-only: nothing could replace it.
bool CopyFilePlainly(const std::wstring& from, const std::wstring& to);

class PlainCopy {
 public:
  explicit PlainCopy(const std::wstring& wave);
  ~PlainCopy();
  PlainCopy(const PlainCopy&) = delete;
  PlainCopy& operator=(const PlainCopy&) = delete;

  // The path of the copy; empty if there can be none.
  const std::wstring& Wave() const { return copy_; }

  // Puts the map of the copy and all that was made along with it beside the wave itself, or into the wave's entry of
  // the store. False if there is no map, or if it cannot be put there.
  bool BringMapBack(FrqType kind, MrqStore& store) const;

 private:
  static bool BringBack(const std::wstring& from, const std::wstring& to);
  bool BringEntryBack(MrqStore& store) const;

  const std::wstring wave_;
  TempFolder folder_;
  std::wstring copy_;
};
