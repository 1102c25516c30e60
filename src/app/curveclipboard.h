// Copying the curve of the shown syllable to the clipboard, as rows of time and frequency, and pasting such rows.
//
// What the rows are read as, and what becomes of them in a map, is portable (frqmap/curvetext.h, curvepasting.h).
#pragma once

#include <windows.h>

#include "app/editcommands.h"
#include "app/framepane.h"
#include "app/shownmap.h"
#include "frqmap/curvepasting.h"

// Where it happens: the editor's window and its parts.
struct CurveWork {
  HWND Editor;
  Document& Syllables;
  const ShownMap& Map;
  FramePane& Frames;
  const EditCommands& Edits;
  FrqType Kind;  // at work
};

// The selected frames, or all of them if none is.
void CopyCurve(const CurveWork& work);

// From the first selected frame on, or from the first one of all: to the end of the rows, of the selection, if it has
// more than one frame, or of the map. A word says what was expected where the clipboard holds anything else. One step.
void PasteCurve(const CurveWork& work, PasteAs as);

// In a box that holds text the keys of both mean that text. True if a key was one of them, and is dealt with.
bool TranslateClipboardKey(const MSG& message);
