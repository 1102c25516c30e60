// The commands of the Help menu. They are functions of the window they stand before and of nothing else.
#pragma once

#include <windows.h>

// Shows the manual beside the program, after a question.
void ShowManual(HWND owner);
void ShowAbout(HWND owner);
