// Calls into drivers and libraries of others that may raise an exception of the processor's or of Windows' own making,
// as a division by zero or an access to memory that is not there.
#pragma once

#include <windows.h>

using GuardedFunction = DWORD (*)(void* argument);

// The result of the function, or the code of the exception that it raised, which is never 0. The function is left then
// without running destructors: it must not own anything in C++ at that moment. A stack that has run out is not caught.
DWORD CallGuarded(GuardedFunction function, void* argument);

// Calls what needs no result in the same way: false if it raised an exception. `call` owns nothing, as above.
template <typename Call>
bool HasReturned(Call&& call) {
  const auto run = [](void* argument) -> DWORD { return (*static_cast<Call*>(argument))(), 0; };
  return CallGuarded(run, &call) == 0;
}
