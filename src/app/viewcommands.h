// The commands of the View menu that change how the frequency table looks. They go by the table alone, which holds what
// they set.
#pragma once

#include <windows.h>

#include "frqctrl/frqctrlmessages.h"

// The brightest spectrum; a smaller value is brighter.
inline constexpr int kBrightest = -3;
inline constexpr int kDarkest = 3;

// `command`: the id of a zoom step, a view made for the curve, the spectrum, a colour table or a step of brightness.
void ChangeView(const FrqCtrlSender& table, UINT command);
