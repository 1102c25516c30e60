# The overlap-add of Praat on a wave: as many times as long, with the pitch of a table of times [s] and frequencies [Hz]
# in the time of the result. Its sound is the yardstick of the notes that the resampler renders.
form Overlap-add
  sentence Wave
  sentence Pitch
  sentence Result
  real Stretch 1
endform
sound = Read from file: wave$
seconds = Get total duration
manipulation = To Manipulation: 0.005, 60, 1000
curve = Create PitchTier: "curve", 0, seconds
strings = Read Strings from raw text file: pitch$
lines = Get number of strings
for line to lines
  selectObject: strings
  text$ = Get string: line
  time = number (extractWord$ (text$, ""))
  hz = number (extractWord$ (text$, " "))
  selectObject: curve
  Add point: time / stretch, hz
endfor
lengths = Create DurationTier: "lengths", 0, seconds
Add point: 0, stretch
selectObject: manipulation, curve
Replace pitch tier
selectObject: manipulation, lengths
Replace duration tier
selectObject: manipulation
Get resynthesis (overlap-add)
Save as WAV file: result$
