#include "app/discardquestion.h"

#include <mutex>

#include "base/text.h"
#include "document/document.h"
#include "resources/ids.h"
#include "window/messagebox.h"

bool ConfirmDiscard(HWND owner, const Document& syllables) {
  if (syllables.State().Edited == 0) return true;
  return ShowMessage(owner, LoadResString(IDS_DISCARD), MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) == IDYES;
}

void DropEdits(Document& syllables) {
  const std::lock_guard many(syllables);
  for (int index = 0; index < syllables.State().Entries; ++index) {
    if (syllables.Facts(index).Edited) syllables.SetEdited(index, false, true);
  }
}
