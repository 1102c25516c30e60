#include "frqmap/mrqsaving.h"

#include <algorithm>
#include <utility>

#include "base/path.h"
#include "base/stagedstream.h"

namespace {

// In memory an entry takes twice its place in the file, in a process of 32 bits.
constexpr std::int64_t kLargestFile = std::int64_t{64} << 20;

constexpr std::uint32_t kFileTooLarge = 223;  // ERROR_FILE_TOO_LARGE
constexpr std::uint32_t kFileCorrupt = 1392;  // ERROR_FILE_CORRUPT

enum class Kept { Yes, NoRoom, Unreadable };

// The path that the entry would have as a map of its own, by which the guard knows it.
std::wstring MapPathOf(const std::wstring& path, const std::u16string& entry) {
  const std::wstring name(entry.begin(), std::ranges::find(entry, u'\0'));
  return PathIn(FolderOf(path), PathWithoutExtension(name) + L".mrq");
}

Kept KeepEntry(const std::wstring& path, FileStream& stream, const MrqHead& head) {
  if (!IsPlainMrqName(head.Name)) return Kept::Yes;
  const std::wstring map = MapPathOf(path, head.Name);
  if (!PresentGuard().Wants(map)) return Kept::Yes;
  Bytes bytes(static_cast<std::size_t>(std::min(head.End(), stream.Size()) - head.Start));
  if (!stream.ReadAt(head.Start, bytes)) return Kept::Unreadable;
  return PresentGuard().Keep(map, bytes) ? Kept::Yes : Kept::NoRoom;
}

// A file that is open for one change. The lock goes with it.
class MrqPatch {
 public:
  MrqPatch(FileSystem& files, const std::wstring& path) : files_(files), path_(path) {
    PresentGuard().Mend(path);
    file_ = files.Open(path, FileMode::Shared);
    if (!file_) return;
    staged_.emplace(files, *file_, path);
    if (staged_->IsOpen() && staged_->Size() > kLargestFile) {
      files.SetLastError(kFileTooLarge);
      staged_.reset();
    } else if (staged_->Size() == 0) {
      staged_->WriteAt(0, EmptyMrqFile());
    }
  }

  bool IsOpen() const { return staged_ && staged_->IsOpen(); }
  FileStream& Stream() { return *staged_; }

  // An entry goes to the guard before it is lost. Where it cannot be read now, the change fails.
  MrqKeeping Keeping() {
    return [this](const MrqHead& head) {
      if (KeepEntry(path_, *staged_, head) == Kept::Unreadable) keepError_ = files_.LastError();
    };
  }

  bool Commit(const std::function<bool()>& isThere = {}) {
    const bool isTooLarge = staged_->Size() > kLargestFile;  // nobody here would read it again
    if (keepError_ == 0 && !isTooLarge) return staged_->Commit(isThere);
    files_.SetLastError(isTooLarge ? kFileTooLarge : keepError_);
    return false;
  }

  // An entry counts as saved only if a reader finds it in the file itself.
  bool CommitEntry(const MrqHead& entry, const Bytes& body) {
    return Commit([&] {
      const bool isThere = IsInFile(entry, body);
      if (!isThere && files_.LastError() == 0) files_.SetLastError(kFileCorrupt);
      return isThere;
    });
  }

 private:
  // The scan begins at the entry: the way there was gone before the writing, behind the same lock.
  bool IsInFile(const MrqHead& entry, const Bytes& body) {
    MrqScan scan(*file_, entry);
    if (!scan.Next() || scan.Head().Name != entry.Name) return false;
    Bytes there(body.size());
    return file_->ReadAt(entry.BodyStart(), there) && there == body;
  }

  FileSystem& files_;
  const std::wstring path_;
  std::unique_ptr<FileStream> file_;
  std::optional<StagedStream> staged_;
  std::uint32_t keepError_ = 0;
};

}  // namespace

std::unique_ptr<FileStream> OpenMrqFile(FileSystem& files, const std::wstring& path) {
  std::unique_ptr<FileStream> file = files.Open(path, FileMode::Read);
  return file && file->Size() <= kLargestFile ? std::move(file) : nullptr;
}

bool SaveMrqEntry(FileSystem& files, const std::wstring& path, const std::u16string& name, const MrqEntry& entry,
                  std::int32_t timestamp) {
  MrqPatch patch(files, path);
  if (!patch.IsOpen()) return false;
  const Bytes body = EncodeMrqBody(entry, timestamp);
  const std::optional<MrqHead> head = PutMrqEntry(patch.Stream(), name, body, patch.Keeping());
  return head && patch.CommitEntry(*head, body);
}

bool RemoveMrqEntry(FileSystem& files, const std::wstring& path, const std::u16string& name) {
  MrqPatch patch(files, path);
  if (!patch.IsOpen()) return false;
  const bool isGone = KillMrqEntries(patch.Stream(), name, patch.Keeping());
  return patch.Commit() && isGone;
}

bool KeepMrqEntry(FileSystem& files, const std::wstring& path, const std::u16string& name) {
  if (!PresentGuard().Wants(MapPathOf(path, name))) return true;
  const std::unique_ptr<FileStream> file = OpenMrqFile(files, path);
  const std::optional<MrqHead> head = file ? FindMrqEntry(*file, name) : std::nullopt;
  return !head || KeepEntry(path, *file, *head) == Kept::Yes;
}

int CompactMrqFile(const std::wstring& path, std::int32_t timestamp, FileSystem& files) {
  MrqPatch patch(files, path);
  if (!patch.IsOpen()) return 0;
  const int result = CompactMrqEntries(patch.Stream(), timestamp, patch.Keeping());
  return result != 1 || patch.Commit() ? result : 0;
}

bool IsPlainMrqName(std::u16string_view name) {
  const std::u16string_view shown = name.substr(0, name.find(u'\0'));
  return shown.find_first_of(u"\\/:") == shown.npos && shown != u"." && shown != u"..";
}
