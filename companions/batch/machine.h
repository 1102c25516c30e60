// Questions and orders to the system beyond files. Each system has a source of its own behind this.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>

#include "frqmap/frqtype.h"

class MrqStore;

// A path as somebody typed it, in full and as the program keeps paths.
std::wstring FullPathOfTyped(const std::string& typed);

// The path for the standard library.
std::filesystem::path FilesystemPath(const std::wstring& path);

// A path, or a part of one, as users of the system write it, for people to read.
std::wstring TypedForm(std::wstring path);

// The program's own folder for what it keeps; empty if there is no place for one.
std::wstring KeepingFolder();

std::uint32_t ProcessNumber();

// Called before anything else: text is UTF-8 from then on, a pipe that closes makes a write fail, and no library comes
// from the folder that is current.
void PrepareProcess();
bool IsTerminal(std::FILE* file);

// Sets a handler that is called, on any thread, when the user asks the program to end. It must do nothing but what is
// safe in a signal handler.
void WhenInterrupted(void (*handler)());

// Has a resampler make the map of a wave, as the windows do. False with the reason if it could not be run or ended
// badly.
bool RunResampler(const std::wstring& resampler, const std::wstring& wave, FrqType kind, MrqStore& store,
                  std::string& reason);
