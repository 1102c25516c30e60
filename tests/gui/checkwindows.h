// The program with a stand-in for the check library, and the windows of the check.
#pragma once

#include "doubles/checkfrq/script.h"
#include "gui/program.h"
#include "native/testdata.h"

struct CheckTest : ProgramTest {
  ~CheckTest() override {
    Leave();
    FreeLibrary(double_);
  }

  // From here on the program finds its libraries in the system's folder and in this one, and no longer beside itself.
  static void FindLibrariesIn(const std::wstring& folder) {
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32 | LOAD_LIBRARY_SEARCH_USER_DIRS);
    SetDllDirectoryW(folder.c_str());
  }
  static std::wstring DoubleFolder(const std::string& name) {
    return std::filesystem::absolute(testdata::Path(std::string(MARLIT_CHECK_DOUBLES) + "/" + name)).wstring();
  }
  // The script of the stand-in, which stays loaded to keep it.
  CheckScript& Script() {
    FindLibrariesIn(DoubleFolder("checkfrq"));
    if (!double_) double_ = LoadLibraryW(L"checkfrq.dll");
    const FARPROC entry = GetProcAddress(double_, "Script");
    return *reinterpret_cast<CheckScript* (*)()>(reinterpret_cast<void*>(entry))();
  }
  // The check as the user runs it, with the settings as they come up.
  void RunCheck() const {
    InDialog(ID_TOOL_CHECK, IDC_CHECK_LOWNOTE, [](HWND dialog) { Close(dialog, IDOK); });
  }
  static HWND Bar() { return FindWindowW(L"#32770", L"Modify Frequency Maps"); }

  // A letter for each frame: "x" for a mark, "s" for one with a suggestion.
  std::string Marks(int syllable) const {
    std::string marks;
    for (const FrqFrame& frame : List().Map(syllable)->Frames) {
      marks += frame.Mark == 0 ? '.' : frame.SuggestedFrequency > 0.0 ? 's' : 'x';
    }
    return marks;
  }

 private:
  HMODULE double_ = nullptr;
};
