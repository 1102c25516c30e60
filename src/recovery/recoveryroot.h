// Where the machine has its place for what must not be lost.
#pragma once

#include <string>

// Marlit\Recovery in the user's own local folder; empty if there is none.
std::wstring RecoveryRoot();
