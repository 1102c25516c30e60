// A curve as a PitchTier of Praat (Boersma and Weenink): points in time with a frequency, and nothing where there is no
// pitch.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "batch/curvefile.h"

// The points in the long text form, over `seconds`. Points without pitch are left out, levels too.
std::string PitchTier(std::span<const CurvePoint> points, double seconds);

// Reads the long or the short text form. Where points stand in even steps, those that are left out have no pitch and
// come back as points without one. Between points that stand otherwise, as a hand puts them, the pitch goes from each
// to the next, and it stays at both ends, as Praat takes it.
CurveReading ReadPitchTier(std::string_view file);
