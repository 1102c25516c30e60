#include "app/leftedits.h"

#include <exception>
#include <utility>

#include "app/words.h"
#include "base/text.h"
#include "document/mapimage.h"
#include "resources/ids.h"
#include "window/messagebox.h"

namespace {

// Whether a journal has something to ask about. One that cannot be opened now, or that memory does not hold, waits for
// a later start with more luck. One that holds nothing is given up.
bool ReadOrDrop(Recovery& safety, const std::wstring& journal, std::optional<JournalContent>& content) {
  try {
    if (!Disk().Open(journal, FileMode::Read)) return false;
    content = ReadJournal(Disk(), journal);
  } catch (const std::exception&) {
    return false;
  }
  if (content && !content->Edited.empty()) return true;
  safety.Drop(journal);
  return false;
}

// 0 if there is no map, and for all kinds but the one whose broken saves the next start always takes back: a folder that
// was made anew under the same name, with the same maps, is not what was edited.
std::uint64_t ImageInFile(VoicebankFiles& files, const std::wstring& wave) {
  FrqMap map;
  return files.Kind == FrqTypeVs4ufrq && files.Load(map, wave) == 0 ? ImageHash(map) : 0;
}

// Folders are the same however they were typed.
bool IsSameFolder(const std::wstring& a, const std::wstring& b) {
  return lstrcmpiW(a.c_str(), b.c_str()) == 0;
}

}  // namespace

std::optional<LeftEdits> FindLeftEdits(Voicebank& bank, const std::wstring& folder) {
  for (const std::wstring& journal : bank.Run.Safety.Journals()) {
    std::optional<JournalContent> content;
    if (!ReadOrDrop(bank.Run.Safety, journal, content)) continue;
    // Edits of another folder, or of a disk that is not there now, wait.
    if (!folder.empty() && !IsSameFolder(content->Head.Folder, folder)) continue;
    if (!Disk().FactsOf(content->Head.Folder)) continue;
    // These files are separate, since the kind at work may be another one.
    VoicebankFiles files;
    files.Kind = content->Head.Kind;
    std::vector<std::wstring> waves = JournalReplay::UnchangedOf(
        *content, [&files](const std::wstring& wave) { return files.Stamp(wave); },
        [&files](const std::wstring& wave) { return ImageInFile(files, wave); });
    return LeftEdits{journal, std::move(*content), std::move(waves)};
  }
  return std::nullopt;
}

bool AskForLeftEdits(HWND owner, const LeftEdits& edits) {
  const std::wstring text =
      FormatText(LoadResString(IDS_RECOVER_ASK).c_str(), edits.Content.Head.Folder.c_str(),
                 NamesOf(edits.Waves).c_str(), LocalTimeText(edits.Content.Time).c_str());
  return ShowMessage(owner, text, MB_YESNO | MB_ICONQUESTION) == IDYES;
}

std::wstring TextOf(const RestoreReport& report) {
  if (report.Others.empty()) return LoadResString(IDS_RECOVER_DONE);
  std::vector<std::wstring> waves;
  for (const RestoreReport::Untouched& other : report.Others) waves.push_back(other.Path);
  return FormatText(LoadResString(IDS_RECOVER_CHANGED).c_str(), NamesOf(waves).c_str());
}
