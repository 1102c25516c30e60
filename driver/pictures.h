// Every window of the program as a picture, for the manual and for looking at.
#pragma once

#include <filesystem>

// Installs the program and voicebanks where the pictures show their paths and nothing may lie yet, and writes NAME.png
// for each picture. False if a window does not come.
bool TakePictures(const std::filesystem::path& into);
