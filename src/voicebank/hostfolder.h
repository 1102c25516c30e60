// Where the host application lies on this machine.
#pragma once

#include <string>

// The folder of the program that the system opens project files (.ust) with; empty if there is none.
std::wstring AssociatedHostFolder();

// The same, or else the folder that the host is installed in by default, whether it is there or not.
std::wstring FindHostFolder();
