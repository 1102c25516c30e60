// KnownFile: the document's knowledge of the file behind a syllable's map: its content, and whether somebody else has
// changed that since.
//
// The file holds the saved map as a rule, and then nothing is kept here but a stamp. After a save that failed, or one
// of many, the saved map shows something else, and an image of the file's content stands in for it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "document/documentfiles.h"
#include "document/mapimage.h"

class KnownFile {
 public:
  // The stamp of the file as it was last read or written here (DocumentFiles::Stamp).
  std::uint64_t Stamp() const { return stamp_; }

  // The file holds the saved map.
  void SetAsSaved();
  void SetAsSaved(std::uint64_t stamp);
  // The file holds this map. Throws std::bad_alloc.
  void SetContent(const FrqMap& map);

  // The map has been written (OnSaved), or a save of it has broken off (OnBroken), so that the file may have changed by
  // our own hand.
  void OnSaved(DocumentFiles& files, const std::wstring& path, const FrqMap& map);
  void OnBroken(DocumentFiles& files, const std::wstring& path);

  // Called before and after a change of the saved map that no file is told of. BeforeRenewal throws std::bad_alloc.
  void BeforeRenewal(const FrqMap& saved);
  void AfterRenewal(const FrqMap& saved);

  // The image of the file's content; none where memory does not hold it.
  std::optional<MapImage> Content(const FrqMap& saved) const;
  // Whether the file holds the map. After a save that broke off the file itself is asked; one that cannot be read holds
  // none.
  bool Holds(const FrqMap& map, const FrqMap& saved, DocumentFiles& files, const std::wstring& path);
  // Whether another program has given the file another content. A file that was only written again has not changed, and
  // overwriting one that holds no map loses nothing, so that it has not either.
  bool IsChangedOutside(const FrqMap& saved, DocumentFiles& files, const std::wstring& path);

 private:
  std::uint64_t stamp_ = 0;
  std::optional<MapImage> image_;  // of the file's content, where that is not the saved map
  bool isUnknown_ = false;  // a save has broken off, or memory did not hold its image: the file has to be asked
};
