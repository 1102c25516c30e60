// EditCommands: what becomes of edits and maps: saved, read again, thrown away, taken back, with the questions before
// and the words after.
//
// It runs on the main thread. The file work of many maps is the list's, which is asked for it; what has changed the
// document tells. The state of the commands is the caller's to update.
#pragma once

#include <windows.h>

#include "app/editorsettings.h"
#include "app/framepane.h"
#include "app/messages.h"
#include "app/shownmap.h"
#include "app/voicebank.h"

class EditCommands {
 public:
  EditCommands(Voicebank& bank, ShownMap& map, FramePane& frames, const EditorSettings& settings)
      : bank_(bank), syllables_(bank.Maps), map_(map), frames_(frames), settings_(settings) {}

  // The editor's window when it has come; where the words that need no box stand.
  void Attach(HWND editor) { editor_ = editor; }
  // For a key that finds nothing to undo, or to redo. Its menu item is grey, so that no command comes of it.
  void TellIfNothing(bool redo);
  // A word at the table that needs no box.
  void Tell(const std::wstring& title, const std::wstring& text) const;
  // What a command has done to many maps, under its name; `isCompact`: the files that hold the maps of a folder are
  // tidy. Where they are not, nothing is lost.
  void TellSum(UINT command, std::wstring text, bool isCompact) const;
  // What was to be kept and could not be: settings, and maps before they were overwritten. Once a run for each, and
  // when no other word stands.
  void TellIfNotKept() const;

  // True if nothing is edited or the user lets it go (discardquestion.h).
  bool ConfirmDiscard() const;

  // Both ask before they overwrite what another program has made of a map.
  void Save(const FileListSender& list);
  void SaveAll(const FileListSender& list);
  // A map without edits is not even read: what changed it from outside does not come in here. The button says so.
  void PressReload(const FileListSender& list);
  void ReloadIfEdited(const FileListSender& list);
  // The edits of one syllable go without a question.
  void ReloadSyllable(const FileListSender& list);
  void ReloadAll(const FileListSender& list);
  // One question covers the unsaved edits too.
  void RemoveAll(const FileListSender& list);
  void Undo(const FileListSender& list) { StepBack(list, false); }
  void Redo(const FileListSender& list) { StepBack(list, true); }

 private:
  void SaveAsking(const FileListSender& list, int index);
  void ReloadFile(const FileListSender& list, int index);
  void FinishSave(DWORD error, bool isLeftEdited);
  void StepBack(const FileListSender& list, bool redo);

  Voicebank& bank_;
  Document& syllables_;  // of bank_
  ShownMap& map_;
  FramePane& frames_;
  const EditorSettings& settings_;
  HWND editor_ = nullptr;
};
