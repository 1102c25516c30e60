// Filling the list from the argument of the process, or with another folder.
#include <windows.h>

#include <atomic>
#include <utility>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "app/voicebankscan.h"
#include "base/files.h"
#include "base/path.h"
#include "base/text.h"
#include "resources/ids.h"
#include "voicebank/pluginfile.h"
#include "window/balloon.h"
#include "window/disabledwindow.h"
#include "window/waitcursor.h"

namespace {

void ScanWaiting(VoicebankScan& scan, const std::wstring& folder, HWND thumbnail) {
  const WaitCursor waiting;
  const DisabledWindow disabled(thumbnail);
  scan.AddVoicebank(folder);
}

// The editor is being built on the main thread; it is sure to come.
void WaitForWindow(const std::atomic<HWND>& window) {
  while (!window) Sleep(100);
}

// The name of a wave as seen from the folder: its path behind the folder and the separator.
std::wstring NameIn(const std::wstring& folder, const std::wstring& path) {
  const std::size_t skipped = folder.size() + (folder.ends_with(L'\\') ? 0 : 1);
  return skipped < path.size() ? path.substr(skipped) : std::wstring();
}

}  // namespace

// False if the argument names nothing that exists. A plug-in file stands for the syllables of the notes that the host
// handed over, once each, and not for the whole voicebank.
bool CFileListDlg::FillFromArguments() {
  if (argument_.empty()) return true;
  bank_.Files.Store.Clear();
  const int fill = fillCount_;
  const bool isFolder = FolderExists(argument_);
  if (!isFolder && !FileExists(argument_)) return false;
  PluginAnswer = !isFolder && IsPluginFile(argument_);
  VoicebankScan scan(bank_.Files.Kind, bank_.Files.Store);
  if (isFolder) {
    Folder = argument_;
    ScanWaiting(scan, Folder, Windows.Thumbnail.Hwnd);
  } else if (PluginAnswer) {
    const PluginSyllables called = ReadPluginSyllables(argument_);
    Folder = called.Voicebank;
    for (const std::wstring& path : called.Paths) scan.AddSyllable(path);
  } else {
    Folder = FolderOf(argument_);
    scan.AddSyllable(argument_);
  }
  syllables_.Open(scan.TakeSorted());
  bank_.Run.BeginJournal(Folder, bank_.Files.Kind);
  if (isFolder || PluginAnswer) {
    WaitForWindow(Editor->Hwnd);
    const std::wstring opened = Folder;
    ToEditor().FolderOpened(opened.c_str());
  }
  // The editor may have opened another folder while it was told of this one.
  if (fill == fillCount_) ShowRows();
  return true;
}

// Whoever opens a folder has asked about unsaved edits before: they end here. The old syllables stay until the editor
// has taken the null maps: it points into them, and may paint while it waits in its send. A row that is on its way to
// the editor when this comes in between is given up (ShowSyllable).
void CFileListDlg::OpenFolder(const wchar_t* path) {
  Balloon::Hide();  // it tells of another folder
  const SyllableEntries old = syllables_.Open({});
  rows_.Forget();
  ++fillCount_;
  if (path != Folder.c_str()) Folder = path;
  const std::wstring opened = Folder;
  bank_.Files.Store.Clear();
  VoicebankScan scan(bank_.Files.Kind, bank_.Files.Store);
  ScanWaiting(scan, opened, Windows.Thumbnail.Hwnd);
  syllables_.Open(scan.TakeSorted());
  bank_.Run.BeginJournal(opened, bank_.Files.Kind);
  rows_.UpdateColumns(bank_.Files.Kind);
  ShowRows();
  ToEditor().SetMap(nullptr, nullptr);
  ToEditor().FolderOpened(opened.c_str());
  rows_.Select(0);
  Windows.ToThumbnail().PostRefreshAll();
  TellIfNoWaves();
}

// A host is told nothing: it knows what it has handed over.
void CFileListDlg::TellIfNoWaves() const {
  if (rows_.Count() == 0 && !PluginAnswer) Balloon::Show(rows_.Window(), LoadResString(IDS_NOWAVES));
}

void CFileListDlg::ShowRows() {
  const FrqType kind = bank_.Files.Kind;
  std::vector<SyllableRow> rows(static_cast<std::size_t>(syllables_.State().Entries));
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const EntryFacts facts = syllables_.Facts(static_cast<int>(i));
    rows[i] = {NameIn(Folder, facts.Path), facts.HasMap, HasLlsm(facts.Path, kind), facts.Edited};
  }
  rows_.Fill(rows);
}
