// The keyboard and the mouse, as hands on them: what is pressed goes to the window that has the focus, what is clicked
// to the one that lies under the mouse. Places are in pixels of the screen.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

// Keys one after the other, with a blank between them: "F10 e m", "Ctrl+Shift+S". "Down*8" is eight times the same.
void Press(std::wstring_view keys);

// Any letters, whatever keys they have.
void Type(const std::wstring& text);

void PointAt(POINT place);
// The right button: `right`. A click at the place of the last one waits until it is no double click.
void Click(POINT place, bool right = false);
void DoubleClick(POINT place);
// Presses at the first of the places, releases at the last.
void Drag(const std::vector<POINT>& places);
// Towards the user is less than 0. `held` is a key that is down meanwhile.
void TurnWheel(int notches, WORD held);
