// The document as what the frequency table writes through: the mouse's strokes are its gestures.
#pragma once

#include "document/document.h"
#include "frqmap/mapediting.h"

class DocumentEditing : public MapEditing {
 public:
  explicit DocumentEditing(Document& document) : document_(document) {}

  bool MayShow(const FrqMap* reference, const FrqMap* map) const override;
  void BeginStroke(const FrqMap& map, StrokeKind kind) override;
  void EndStroke() override;
  bool IsStrokeOpen() const override;
  bool SetFrequency(FrqMap& map, SampleCount frame, double hz) override;
  bool SetKey(FrqMap& map, double hz) override;
  void Flatten(FrqMap& map, double hz) override;
  void Select(FrqMap& map, std::span<const int> frames) override;
  void SelectRange(FrqMap& map, SampleCount first, SampleCount last) override;
  void lock() const override { document_.lock(); }
  void unlock() const override { document_.unlock(); }

 private:
  Document& document_;
};
