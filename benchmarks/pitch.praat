# The pitch of a wave by Praat's cross-correlation, in the range and at the step [s] of ours; prints the seconds that it
# took. Its start and the reading do not count.
form Pitch
  sentence Wave
  real Step 0.005
  real Lowest 60
  real Highest 1200
endform
sound = Read from file: wave$
stopwatch
pitch = To Pitch (cc): step, lowest, 15, "no", 0.03, 0.45, 0.01, 0.35, 0.14, highest
writeInfoLine: fixed$ (stopwatch, 6)
