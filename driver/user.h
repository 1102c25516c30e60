// A user at the program, which runs as a process of its own: single steps with keyboard and mouse, each of which comes
// back when what it does can be seen at the windows. A window that does not come ends the way with an exception.
#pragma once

#include <windows.h>

#include <filesystem>
#include <functional>
#include <string>

#include "driver/hands.h"
#include "driver/programs.h"

// A sort of dialog, told by the id and the class of a control in it, which are the same in both languages.
struct DialogKind {
  int Control;
  const wchar_t* ControlClass;
};
extern const DialogKind kQuestion, kOption, kConvert, kCreating, kCheck, kModifyBar, kWarning, kFolderDialog,
    kThumbnails, kAbout, kRangeOfAnalysis, kInitializeMrq, kKeptMaps, kMapChanged;

// The folder of the program and of what comes along with it: this one's.
std::filesystem::path ProgramFolder();
// As before the first start of all: no settings, and no resampler chosen.
void ForgetSettings();
void ChooseResampler(const std::filesystem::path& resampler);
bool IsResamplerChosen();

class User {
 public:
  virtual ~User();

 protected:
  // Starts the program without looking for its windows, or with both of them standing.
  void StartOnly(const std::filesystem::path& program, const std::filesystem::path& argument);
  void Start(const std::filesystem::path& program, const std::filesystem::path& argument = {});
  void FindMainWindows();
  // By itself, and says that all went well.
  bool EndsWell() const { return ExitCodeOf(process_.get()) == 0; }
  bool GoesOn() const;
  void Kill();

  HWND Editor() const { return editor_; }
  HWND List() const { return list_; }
  HWND Item(int id) const { return GetDlgItem(editor_, id); }
  HWND Table() const;

  // Waits for a dialog, and for a moment until the keys are its; or until it has gone.
  HWND Dialog(const DialogKind& kind) const;
  void AwaitEndOf(const DialogKind& kind, UINT limit = limitMs) const;
  static void Await(const char* what, const std::function<bool()>& state, UINT limit = limitMs);
  // Until both windows have dealt with what has been sent to them.
  void AwaitAnswer() const;

  // The text that a window or a row shows.
  static std::wstring TextOf(HWND window);
  std::wstring FrameText(int frame) const;
  int FrameCount() const;
  int RowCount() const;
  int SelectedRow() const;

  // In front by a click on its caption, unless it is there, as soon as it takes one.
  void Front(HWND window) const;
  void ToEditor() const { Front(editor_); }
  // In the editor, from what window soever.
  void PressInEditor(std::wstring_view keys) const;
  // The keys behind F10, which leads into the menu.
  void Menu(std::wstring_view keys) const;
  // Into the box that has the focus, whose old text goes.
  static void TypeOver(const std::wstring& text);
  // In their list, which takes the keys then.
  void ClickFrames() const;
  // By Ctrl with the arrow keys to a row of the list.
  void GoTo(int row) const;
  // A frame of the syllable in view, and as many behind it.
  void SelectFrames(int first, int more = 0) const;
  void SetFrame(int frame, double hz) const;
  // By the menu; of a voicebank of which all maps can be made.
  void CreateMissingMaps(const std::filesystem::path& bank) const;
  void Enlarge(int dx, int dy) const;
  void DragBelowEditor(HWND window) const;
  // Types a path into the options, and a number of workers unless that is empty; OK is left to do.
  HWND TypeOptions(const std::filesystem::path& resampler, const std::wstring& workers = L"") const;

 private:
  UniqueHandle<KernelTraits> process_;
  DWORD id_ = 0;
  HWND editor_ = nullptr;
  HWND list_ = nullptr;
};
