// A curve as a PitchTier of Praat (Boersma and Weenink): points in time with a frequency, and nothing where there is no
// pitch.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "batch/curvefile.h"

// The long text form, over `seconds`. Points without pitch are left out, levels too.
std::string PitchTier(std::span<const CurvePoint> points, double seconds);

// The long or the short text form. Of points in even steps those that are left out have no pitch, and here they are
// told as points without one. Of any others, as a hand puts them, the pitch goes from each to the next and stays at
// both ends, as Praat takes it.
CurveReading ReadPitchTier(std::string_view file);
