// KnownFile: what the document knows of the file behind a syllable's map: what it holds, and whether somebody else has
// changed it since.
//
// The file holds the saved map as a rule, and then nothing is kept here but a stamp. Behind a save that failed, or one
// of many, the saved map shows something else, and an image of what the file holds stands in for it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "document/documentfiles.h"
#include "document/mapimage.h"

class KnownFile {
 public:
  // Of the file as it was last read or written here (DocumentFiles::Stamp).
  std::uint64_t Stamp() const { return stamp_; }

  // The saved map is what the file holds.
  void SetAsSaved();
  void SetAsSaved(std::uint64_t stamp);
  // This map is. Throws std::bad_alloc.
  void SetContent(const FrqMap& map);

  // The map has been written, or a save of it has broken off, so that the file may be another one by our own hand.
  void OnSaved(DocumentFiles& files, const std::wstring& path, const FrqMap& map);
  void OnBroken(DocumentFiles& files, const std::wstring& path);

  // Around a change of the saved map that no file is told of. The first throws std::bad_alloc.
  void BeforeRenewal(const FrqMap& saved);
  void AfterRenewal(const FrqMap& saved);

  // None where memory does not hold it.
  std::optional<MapImage> Content(const FrqMap& saved) const;
  // Whether the file holds the map. Behind a save that broke off the file itself is asked; one that cannot be read
  // holds none.
  bool Holds(const FrqMap& map, const FrqMap& saved, DocumentFiles& files, const std::wstring& path);
  // Whether another program has given the file another content. One that was only written again has not changed, and
  // one that holds no map costs nothing.
  bool IsChangedOutside(const FrqMap& saved, DocumentFiles& files, const std::wstring& path);

 private:
  std::uint64_t stamp_ = 0;
  std::optional<MapImage> image_;  // where the saved map does not say it
  bool isUnknown_ = false;  // a save has broken off, or memory did not hold its image: the file has to be asked
};
