// The process: what runs before any window exists, the hand-over to the two threads, and the end.
#pragma once

#include <string>

// Runs the program on an argument, empty for none, until its windows have gone, and gives the exit code.
int RunApplication(const std::wstring& argument);
