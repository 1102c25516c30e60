// The sentences in which the editor and the list say what has happened, made of what is known of it.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "app/voicebank.h"
#include "check/checkrun.h"
#include "frqmap/mapfault.h"
#include "resampler/jobsum.h"

// The names of waves in one line, only the first ones if there are many.
std::wstring NamesOf(const std::vector<std::wstring>& waves, std::size_t most = 8);

// The name of a command in a menu, without its access key, its shortcut and the dots of a dialog.
std::wstring CommandName(HMENU menu, UINT command);

// Says how many are done, and which are not.
std::wstring TextOfCounts(int done, const std::vector<std::wstring>& failed);
// Says the same of a job, with the cause of its first failure. `resampler` is the one that it ran.
std::wstring TextOf(const JobSum& sum, const std::wstring& resampler);
// Says how one run of the resampler ended.
std::wstring TextOf(const ItemResult& result, const std::wstring& resampler);
// Why a resampler cannot run, as the continuation of another sentence; empty if it is there.
std::wstring TextOfMissing(const std::wstring& resampler);
// The sum of a check; empty where its marks tell all.
std::wstring TextOf(const CheckSum& sum);
// Empty without a fault.
std::wstring TextOf(const MapFault& fault, const std::wstring& wave);

// Why the map of a syllable cannot be read; empty where it can, or where there is none.
std::wstring TextOfUnreadable(const Voicebank& bank, int index);
// Says so at `place`.
void TellIfUnreadable(HWND place, const Voicebank& bank, int index);
