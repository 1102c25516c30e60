// A variable of the environment, put back at the end of the scope: another test may run behind this one in its process.
#pragma once

#include <windows.h>

#include <string>

#include "base/systempath.h"

// One that is empty counts as missing, as it does to the program.
class ScratchVariable {
 public:
  explicit ScratchVariable(const wchar_t* name) : name_(name), before_(EnvironmentText(name)) {}
  ScratchVariable(const wchar_t* name, const std::wstring& value) : ScratchVariable(name) { Set(value); }
  ~ScratchVariable() { Set(before_); }
  ScratchVariable(const ScratchVariable&) = delete;
  ScratchVariable& operator=(const ScratchVariable&) = delete;

  void Set(const std::wstring& value) const { SetEnvironmentVariableW(name_, value.empty() ? nullptr : value.c_str()); }

 private:
  const wchar_t* const name_;
  const std::wstring before_;
};
