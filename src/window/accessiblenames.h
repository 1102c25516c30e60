// Names of controls for screen readers, where neither a text nor a label says what a control is.
//
// They are given by dynamic annotation, which needs no code in a control. It loads a library of the system's, so it
// waits until somebody asks for the dialog, as a screen reader does before it says anything.
#pragma once

#include <windows.h>

#include <span>

#include "window/controltexts.h"

// Names the controls of a dialog, and what they hold. Where the system cannot, nothing is named.
void NameControls(HWND dialog, std::span<const ControlText> texts);
