// TableModel: what the frequency table shows and how: its maps, where it is scrolled to, its view and its limits.
//
// Arithmetic without a window. The painter draws it, the mouse and the scroll bars change it, and the control carries
// the settings that its private messages bring into it. The maps are not owned and not locked here: whoever asks for
// several things about a map that hang together holds its MapEditing.
#pragma once

#include <cstdint>
#include <optional>

#include "base/sample.h"
#include "frqctrl/geometry.h"
#include "frqmap/frqmap.h"

// The part of the table that a point belongs to.
struct TableSpot {
  enum { Nothing, Grip, Plot } Place = Nothing;
  SampleCount Column = -1;  // of the map, -1 for none; told on the grip too
};

struct TableModel {
  // Columns between two vertical lines, whatever the map's hop; also the page of the horizontal scroll bar.
  static constexpr int BarInterval = 17;
  static constexpr int Brightest = -3;  // of Brightness
  static constexpr int Darkest = 3;
  static constexpr int ColorTableCount = 6;
  static constexpr int WheelNotch = 120;

  FrqMap* Map = nullptr;                 // shown and edited
  const FrqMap* ReferenceMap = nullptr;  // last saved state, shown behind it
  FrqType Kind = FrqTypeUnknown;         // the kind that the editor works in
  StrokeLimits Limits;
  bool ReadOnly = false;  // no edit by the left button
  TableGeometry Geometry;
  PixelRect AverageGrip;         // the average line can be taken hold of here, see HoldKeyLineAt
  SampleCount CaretColumn = -1;  // of the keys; -1 while the table has no focus
  int RulerY = -1;               // of the line at the mouse; -1 for none
  // True once a view was made for the curve: another map's comes into view too, and level bars in its way are paler.
  bool FollowsCurve = false;
  int ViewMode = 0;    // 0 grid, 1 spectrum
  int Brightness = 0;  // Brightest to Darkest
  int ColorTable = 0;  // 0 to ColorTableCount - 1

  // The setters with a result refuse what is out of range: they answer false and change nothing.
  bool SetViewMode(int mode);
  bool SetBrightness(int brightness);
  bool SetColorTable(int table);
  void SetZoom(int zoom);                                       // limited
  void SetLimits(const double* highest, const double* lowest);  // null: stays
  void SetThumbnail(bool on);
  // Shows the maps from the first column on.
  void SetMaps(const FrqMap* reference, FrqMap* map);

  bool IsMapLoaded() const { return Map && Map->Loaded; }
  // A thumbnail never shows the spectrum.
  bool ShowsSpectrum() const { return ViewMode == 1 && !Geometry.ThumbnailMode; }
  // Frames of the map, 0 without one.
  SampleCount ColumnCount() const { return Map ? Map->FrameCount : 0; }
  // The columns that the scroll bar reaches are those of the map, or, where this is true, the entries of the spectrum.
  bool ScrollsOverSpectrum() const { return ColumnCount() <= 0 && ViewMode == 1; }
  // Samples of a column of the spectrum.
  double ColumnHop() const;

  // Frequency [Hz] that the pencil gives at y.
  double FrequencyAtY(int y) const;
  // The answer is strict: nothing outside the plot and the grip, and no column outside the map.
  TableSpot SpotAt(int x, int y) const;
  // The map's column at x, or the one nearest to it; -1 without a column.
  SampleCount NearestColumn(int x) const;
  // True between the left and the right edge of the grip, at any height.
  bool IsOverLabels(int x) const { return x >= AverageGrip.left && x < AverageGrip.right; }
  // The average line of a map was drawn at y: from `left` to the plot, the last such line can be taken hold of.
  void HoldKeyLineAt(int left, int y);

  // The vertical bar counts downward from the top note.
  int VerticalPosition() const { return kTopNote - Geometry.BottomNote; }
  void SetVerticalPosition(int position) { Geometry.BottomNote = kTopNote - position; }

  // One notch of the wheel is four columns or one semitone; the view stays within the map and the notes.
  void ScrollColumnsByWheel(int delta);
  void ScrollNotesByWheel(int delta);
  // The column with which a view from `first` on has to begin to show `column` with two columns to spare. `first`
  // itself for a column near an edge, nothing for one well within; below 0 at the map's begin.
  std::optional<SampleCount> FirstColumnToShow(SampleCount column, SampleCount first) const;
  // Scrolls so that the plot holds these frames, or as many as it can from the first one on, and the middle of their
  // curve. False if it does already.
  bool ScrollToFrames(SampleCount first, SampleCount last);

  // Whole columns that the plot holds.
  SampleCount ColumnsInView() const;
  // The frames with a pitch from the first to the last, with the lowest and the highest note of them.
  struct Extent {
    SampleCount First, Last;
    double LowestNote, HighestNote;
  };
  // None without a pitch.
  std::optional<Extent> ExtentOfCurve() const;
  // The same for its selected part, if there is one with a pitch.
  std::optional<Extent> ExtentAtWork() const;

  // Fit takes the greatest zoom at which the curve is all seen, or the least; Centre leaves the zoom. The curve, or its
  // selected part, is in the middle then. False without a curve.
  bool Fit();
  bool Centre();
  // Takes a step of the zoom after which the middle of the curve, or of its selected part, is where it was before, so
  // far as whole rows and columns allow. False at the last step.
  bool ZoomInPlace(bool down);

 private:
  std::optional<Extent> ExtentOf(SampleCount first, SampleCount last, bool selectedOnly) const;
  // Scrolls so that the middle of a column and of a note come to a place in the plot.
  void PlaceAt(double x, double y, double column, double note);
};
