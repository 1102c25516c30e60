// The program but for its entry, so that tests can call it.
#pragma once

#include <string>
#include <vector>

// Runs the program and gives its exit code. `arguments` are in UTF-8, or the bytes that the system has for names,
// without the name of the program.
int RunProgram(const std::vector<std::string>& arguments);
