#include "app/puttingback.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "base/text.h"
#include "dialogs/keptfilesdlg.h"
#include "frqmap/mapfiles.h"
#include "resources/ids.h"

namespace {

class PuttingBack {
 public:
  PuttingBack(const FileListSender& list, Voicebank& bank, const EditCommands& edits)
      : list_(list), bank_(bank), edits_(edits) {}

  // The sentence that tells how it went; empty if the user went back.
  std::wstring Run(const std::vector<KeptMap>& chosen) {
    const std::vector<int> entries = EntriesOf(chosen);
    const bool isEdited =
        std::ranges::any_of(entries, [this](int entry) { return bank_.Maps.Facts(entry).Edited; });
    if (isEdited && !edits_.ConfirmDiscard()) return {};
    const int failed = PutBack(chosen);
    const int done = static_cast<int>(chosen.size()) - failed;
    // Syllables without a map get one; for the others the map in memory counts no longer.
    list_.RefreshMaps();
    for (const int entry : entries) bank_.Maps.ReadAfresh(entry, Document::OnFailure::EmptySaved, true);
    list_.PostRefreshThumbnail();
    if (failed == 0) return FormatText(LoadResString(IDS_KEPT_DONE).c_str(), done);
    return FormatText(LoadResString(IDS_KEPT_FAILED).c_str(), done, failed) + SystemErrorText(error_);
  }

 private:
  // The syllables of the open voicebank whose maps are among the chosen ones.
  std::vector<int> EntriesOf(const std::vector<KeptMap>& chosen) const {
    std::vector<int> entries;
    const FrqType kind = bank_.Files.Kind;
    for (int index = 0; index < bank_.Maps.State().Entries; ++index) {
      const std::wstring path = MapPathFromWaveW(bank_.Maps.Facts(index).Path, kind);
      if (std::ranges::find(chosen, path, &KeptMap::MapPath) != chosen.end()) entries.push_back(index);
    }
    return entries;
  }

  // Gives how many could not be put back. The maps that are there now are kept in turn.
  int PutBack(const std::vector<KeptMap>& chosen) {
    const KeptBecauseScope because(bank_.Run.Safety, KeptBecause::PutBack);
    int failed = 0;
    for (const KeptMap& kept : chosen) {
      const std::optional<Bytes> bytes = bank_.Run.Safety.Kept().Read(kept);
      bank_.Run.Safety.Kept().Forget(kept.MapPath);
      SetLastError(ERROR_FILE_CORRUPT);
      if (bytes && RestoreMapFile(kept.MapPath, *bytes, &bank_.Files.Store) == 0) continue;
      if (failed++ == 0) error_ = GetLastError();
    }
    return failed;
  }

  const FileListSender& list_;
  Voicebank& bank_;
  const EditCommands& edits_;
  DWORD error_ = 0;
};

}  // namespace

void AddPutBackItem(HMENU menu) {
  AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
  AppendMenuW(menu, MF_STRING, ID_EDIT_PUTBACK, LoadResString(IDS_KEPT_COMMAND).c_str());
}

void PutKeptMapsBack(HWND editor, const FileListSender& list, Voicebank& bank, const EditCommands& edits) {
  PuttingBack work(list, bank, edits);
  CKeptFilesDlg dialog;
  dialog.ParentWindow = editor;
  dialog.Kept = &bank.Run.Safety.Kept();
  dialog.PutBack = [&work](const std::vector<KeptMap>& chosen) { return work.Run(chosen); };
  dialog.Run(false);
}
