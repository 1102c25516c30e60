// A note from a recording and its map, by pitch-synchronous overlap-add (Moulines and Charpentier 1990,
// "Pitch-synchronous waveform processing techniques for text-to-speech synthesis using diphones").
//
// The recording is cut into grains of two periods, as the map has them, and the grains are laid out anew in the
// distance that the note's pitch asks for. Where the map has no pitch the grains are of about one length, and of a
// random one where noise is stretched. Sound begins and ends by a ramp.
#pragma once

#include <vector>

#include "arguments.h"
#include "frqmap/frqmap.h"
#include "voicebank/sound.h"

// Samples per second of every note that is rendered: hosts join notes without looking at their rates.
inline constexpr int kRenderedRate = 44100;

// A map with the pitch and the levels of a recording, of the kind .frq, with the average of its two middle semitones.
// It has one frame for each begun hop, as all maps that we make.
FrqMap MakeMap(const Sound& sound);

// The note, of exactly its length. Silence where the offset and the cutoff leave nothing of the recording.
std::vector<float> RenderNote(const Sound& sound, const FrqMap& map, const NoteToRender& note);
