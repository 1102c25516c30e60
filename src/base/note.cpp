#include "base/note.h"

#include <cmath>

// The quotient of natural logarithms and not std::log2: stored averages hang on the last digits of this very form.
double HzToNote(double hz) {
  return 12.0 * std::log(hz / 440.0) / std::log(2.0) + 69.0;
}

double NoteToHz(double note) {
  return 440.0 * std::pow(2.0, (note - 69.0) / 12.0);
}
