#include "document/knownfile.h"

#include <exception>

void KnownFile::SetAsSaved() {
  image_.reset();
  isUnknown_ = false;
}

void KnownFile::SetAsSaved(std::uint64_t stamp) {
  SetAsSaved();
  stamp_ = stamp;
}

void KnownFile::SetContent(const FrqMap& map) {
  image_.emplace(map);
  isUnknown_ = false;
}

void KnownFile::OnSaved(DocumentFiles& files, const std::wstring& path, const FrqMap& map) {
  try {
    stamp_ = files.Stamp(path);
    SetContent(map);
  } catch (const std::exception&) {
    isUnknown_ = true;
  }
}

void KnownFile::OnBroken(DocumentFiles& files, const std::wstring& path) {
  isUnknown_ = true;
  try {
    stamp_ = files.Stamp(path);
  } catch (const std::exception&) {
    // Without memory the stamp stays the old one, so that the content is compared once it is known again.
  }
}

void KnownFile::BeforeRenewal(const FrqMap& saved) {
  if (!image_) image_.emplace(saved);
}

void KnownFile::AfterRenewal(const FrqMap& saved) {
  if (!isUnknown_ && image_ && image_->IsOf(saved)) image_.reset();
}

std::optional<MapImage> KnownFile::Content(const FrqMap& saved) const {
  try {
    return image_ ? *image_ : MapImage(saved);
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

bool KnownFile::Holds(const FrqMap& map, const FrqMap& saved, DocumentFiles& files, const std::wstring& path) {
  if (isUnknown_) {
    try {
      FrqMap file;
      if (files.Load(file, path) != 0) return false;
      SetContent(file);
    } catch (const std::exception&) {
      return false;
    }
  }
  return image_ ? image_->IsOf(map) : HaveSameImage(map, saved);
}

// Where a save of ours has broken off, the change is our own.
bool KnownFile::IsChangedOutside(const FrqMap& saved, DocumentFiles& files, const std::wstring& path) {
  if (isUnknown_) return false;
  try {
    const std::uint64_t stamp = files.Stamp(path);
    if (stamp == 0 || stamp == stamp_) return false;
    FrqMap file;
    if (files.Load(file, path) != 0) return false;
    const std::optional<MapImage> known = Content(saved);
    if (!known || !known->IsOf(file)) return true;
    stamp_ = stamp;
    return false;
  } catch (const std::exception&) {
    return true;  // without memory nobody knows
  }
}
