// Edits that are thrown away: the question before it, the same wherever that would happen, and their end where no map
// is read anew.
#pragma once

#include <windows.h>

class Document;

// True if nothing is edited or the user lets it go. No is the default, and saving is not offered.
bool ConfirmDiscard(HWND owner, const Document& syllables);

// Nothing counts as edited any more; the maps stay as they are.
void DropEdits(Document& syllables);
