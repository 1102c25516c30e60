// The making of one map by a worker of a job, from the end of the map that is there to the new one.
//
// A resampler is asked for the wave by its own path, as hosts ask it. Where that path is none that every program can
// open, nobody knows what comes of it: then the map that was there is held, a resampler that made nothing is asked once
// more for a plain copy of the wave, and without a new map the old one comes back.
#pragma once

#include <windows.h>

#include <string>

#include "frqmap/frqtype.h"
#include "frqmap/mrqstore.h"
#include "resampler/jobsum.h"
#include "resampler/noterange.h"

struct MapOrder {
  HWND Owner = nullptr;  // the window for what the system may have to show
  std::wstring Resampler;
  FrqType Kind = FrqTypeFrq;
  NoteRange Vs4uRange{};
  bool Vs4uUseFrq = true;
  bool KeepsEntry = false;  // the entry in desc.mrq stays, only the resampler's analysis is renewed
};

// Gives Made whether or not there is a map now: the files show that.
ItemResult MakeMap(const MapOrder& order, const std::wstring& wave, MrqStore& store);
