// The resampler that comes with the program, which is in use where nobody has named another one.
#pragma once

#include <string>

// The resampler's full path, beside the program; empty if it is not there.
std::wstring BundledResampler();
