// moreconfig.txt, the settings that one family of resamplers keeps beside its program.
#pragma once

#include <string>

// Whether the settings beside this resampler switch its compatibility with plain resamplers off. False without such a
// file or line.
bool IsMoreCompatibilityOff(const std::wstring& resamplerPath);
