// Note numbers: 69 is A4 at 440 Hz, a semitone is 1, fractions are allowed.
#pragma once

// The note of a frequency [Hz]: 12 * log2(hz / 440) + 69 (twelve-tone equal temperament).
double HzToNote(double hz);

// The frequency [Hz] of a note: 440 * 2^((note - 69) / 12), the inverse of HzToNote.
double NoteToHz(double note);
