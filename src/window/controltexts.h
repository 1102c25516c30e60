// The texts about the controls of a dialog besides their own: tips and names. tips.rc holds them, by the number of the
// dialog's template.
#pragma once

#include <windows.h>

#include <span>

// One record of the resource.
struct ControlText {
  WORD Control;  // id
  WORD Tip;      // string that tells what the control is for
  WORD Name;     // string that a screen reader says; 0 where the control's text, or the label before it, is its name
};

// Empty for a dialog of which nothing is told.
std::span<const ControlText> ControlTextsOf(int form);

// Null for a control of which nothing is told.
const ControlText* ControlTextOf(std::span<const ControlText> texts, int control);
