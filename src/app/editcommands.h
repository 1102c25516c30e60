// EditCommands: saving maps, reading them again, throwing edits away and taking steps back, with the questions before
// and the words after.
//
// It runs on the main thread. It asks the list for the file work of many maps; the document tells what has changed. Its
// caller updates the state of the commands.
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

  // The editor's window, once it has come, is where the words that need no box stand.
  void Attach(HWND editor) { editor_ = editor; }
  // Answers a key that finds nothing to undo or redo. Its menu item is grey, so that no command comes of it.
  void TellIfNothing(bool redo);
  // Says a word at the table that needs no box.
  void Tell(const std::wstring& title, const std::wstring& text) const;
  // Tells under a command's name what it has done to many maps. `isCompact`: the files that hold the maps of a folder
  // are tidy; nothing is lost where they are not.
  void TellSum(UINT command, std::wstring text, bool isCompact) const;
  // Tells what could not be kept: settings, and maps before they were overwritten. It does so once a run for each, when
  // no other word stands.
  void TellIfNotKept() const;

  // True if nothing is edited or the user lets it go (discardquestion.h).
  bool ConfirmDiscard() const;

  // Both ask before they overwrite what another program has made of a map.
  void Save(const FileListSender& list);
  void SaveAll(const FileListSender& list);
  // A map without edits is not even read, so that outside changes do not come in here. The button says so.
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
  Document& syllables_;  // bank_'s document
  ShownMap& map_;
  FramePane& frames_;
  const EditorSettings& settings_;
  HWND editor_ = nullptr;
};
