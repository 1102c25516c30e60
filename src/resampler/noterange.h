// A range of notes as a user picks it: two notes, each in a box of names and a box of octaves.
#pragma once

#include <optional>
#include <string>

struct NoteRange {
  int Lowest = 24;     // as a note number
  int Semitones = 84;  // both ends counted

  friend bool operator==(const NoteRange&, const NoteRange&) = default;
};

// The range between two notes by name, in either order.
NoteRange NoteRangeBetween(const std::wstring& one, const std::wstring& other);

// Positions in the boxes of the twelve names, from "C", and of the octaves, from "1" to "7".
inline constexpr int kNoteBoxNames = 12;
inline constexpr int kNoteBoxOctaves = 7;
struct NoteBoxes {
  int Name = 0;
  int Octave = 0;

  friend bool operator==(const NoteBoxes&, const NoteBoxes&) = default;
};

// None for a note that the boxes do not hold.
std::optional<NoteBoxes> BoxesOfNote(int note);

// The texts in the boxes.
std::wstring NoteBoxName(int position);
std::wstring NoteBoxOctave(int position);
