// Calls into drivers of the system that may raise an exception of the processor's or of Windows' own making.
#pragma once

#include <windows.h>

using GuardedFunction = DWORD (*)(void* argument);

// What the function gives, or the code of the exception that it raised. What it held is not given back then: it must
// not own anything in C++ at that moment.
DWORD CallGuarded(GuardedFunction function, void* argument);
