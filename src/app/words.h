// The sentences in which the editor and the list say what has happened, made of what is known of it.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "app/voicebank.h"
#include "check/checkrun.h"
#include "frqmap/mapfault.h"
#include "resampler/jobsum.h"

// The names of waves in one line; of many the first ones.
std::wstring NamesOf(const std::vector<std::wstring>& waves, std::size_t most = 8);

// What a menu calls a command, without its access key, its shortcut and the dots of a dialog.
std::wstring CommandName(HMENU menu, UINT command);

// How many are done, and which are not.
std::wstring TextOfCounts(int done, const std::vector<std::wstring>& failed);
// The same of a job, with what the first that failed has met. `resampler` is the one that it ran.
std::wstring TextOf(const JobSum& sum, const std::wstring& resampler);
// What one run of it has met.
std::wstring TextOf(const ItemResult& result, const std::wstring& resampler);
// Why nothing comes of a resampler, as the continuation of another sentence; empty if it is there.
std::wstring TextOfMissing(const std::wstring& resampler);
// Of a check; empty where its marks tell all.
std::wstring TextOf(const CheckSum& sum);
// Empty without a fault.
std::wstring TextOf(const MapFault& fault, const std::wstring& wave);

// Why the map of a syllable cannot be read; empty where it can, or where there is none.
std::wstring TextOfUnreadable(const Voicebank& bank, int index);
// Says that at `place`.
void TellIfUnreadable(HWND place, const Voicebank& bank, int index);
