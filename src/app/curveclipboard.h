// Copying the curve of the shown syllable to the clipboard, as rows of time and frequency, and pasting such rows.
//
// Reading such rows and laying them over a map is portable (frqmap/curvetext.h, curvepasting.h).
#pragma once

#include <windows.h>

#include "app/editcommands.h"
#include "app/framepane.h"
#include "app/shownmap.h"
#include "frqmap/curvepasting.h"

// The parts that both commands work with.
struct CurveWork {
  HWND Editor;
  Document& Syllables;
  const ShownMap& Map;
  FramePane& Frames;
  const EditCommands& Edits;
  FrqType Kind;  // the kind at work
};

// Copies the selected frames, or all of them if none is selected.
void CopyCurve(const CurveWork& work);

// Pastes from the first selected frame on, or else from the first of all, to the end of the rows, of the map, or of a
// selection of more than one frame, as one step. A word says what was expected where the clipboard holds anything else.
void PasteCurve(const CurveWork& work, PasteAs as);

// The keys of both commands mean the text itself in a box that holds text. True if a key was one of them, and is done.
bool TranslateClipboardKey(const MSG& message);
