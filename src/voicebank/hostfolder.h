// The folder in which the host application lies on this machine.
#pragma once

#include <string>

// The folder of the program that the system opens project files (.ust) with; empty if there is none.
std::wstring AssociatedHostFolder();

// The associated folder, or else the one that the host is installed in by default, whether that is there or not.
std::wstring FindHostFolder();
