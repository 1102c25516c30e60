// The question before edits are thrown away, the same wherever that happens, and their end where no map is read anew.
#pragma once

#include <windows.h>

class Document;

// True if nothing is edited or the user lets it go. No is the default, and saving is not offered.
bool ConfirmDiscard(HWND owner, const Document& syllables);

// Nothing counts as edited any more; the maps stay as they are.
void DropEdits(Document& syllables);
