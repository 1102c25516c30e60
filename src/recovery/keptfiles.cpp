#include "recovery/keptfiles.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "base/path.h"
#include "recovery/record.h"

namespace {

constexpr std::wstring_view kFileName = L"kept-";
constexpr std::uint32_t kHead = 0x3148544B;     // "KTH1"
constexpr std::uint32_t kContent = 0x3143544B;  // "KTC1"
constexpr std::int64_t kMostHead = 70'000;      // bytes: a path of any length that Windows knows, and the numbers

std::int32_t NumberOf(const std::wstring& name) {
  std::int32_t number = 0;
  for (const wchar_t digit : name.substr(kFileName.size())) number = number * 10 + (digit - L'0');
  return number;
}

// A head with the size of the content in it, so that a list reads no content.
Bytes EncodeHead(const KeptMap& kept) {
  ByteWriter writer;
  WriteText(writer, kept.MapPath);
  writer.Write(kept.Time);
  writer.Write(static_cast<std::uint32_t>(kept.Because));
  writer.Write(kept.Size);
  return Sealed(kHead, writer.Take());
}

struct Head {
  KeptMap Kept;
  std::int64_t Bytes = 0;  // of the head
};

std::optional<Head> ReadHead(FileStream& file, std::int64_t at) {
  Bytes bytes(static_cast<std::size_t>(std::clamp<std::int64_t>(file.Size() - at, 0, kMostHead)));
  if (bytes.empty() || !file.ReadAt(at, bytes)) return std::nullopt;
  const std::optional<ByteSpan> body = Unsealed(kHead, bytes);
  if (!body) return std::nullopt;
  ByteReader reader(*body);
  Head head;
  head.Kept.MapPath = ReadText(reader);
  head.Kept.Time = reader.Read<std::int64_t>();
  head.Kept.Because = static_cast<KeptBecause>(reader.Read<std::uint32_t>());
  head.Kept.Size = reader.Read<std::uint32_t>();
  head.Kept.At = at;
  head.Bytes = static_cast<std::int64_t>(kSealBytes + body->size());
  return head;
}

// A torn end, as a power cut leaves it, ends the list of its file.
void ListFile(FileSystem& files, const std::wstring& path, std::vector<KeptMap>& into) {
  const auto file = files.Open(path, FileMode::Read);
  std::int64_t at = 0;
  while (file) {
    std::optional<Head> head = ReadHead(*file, at);
    if (!head) return;
    const std::int64_t next = at + head->Bytes + static_cast<std::int64_t>(kSealBytes) + head->Kept.Size;
    if (next > file->Size()) return;
    head->Kept.File = path;
    into.push_back(std::move(head->Kept));
    at = next;
  }
}

struct KeptFile {
  std::wstring Path;
  FileFacts Facts;
};

std::vector<KeptFile> FilesUnder(FileSystem& files, const std::wstring& root) {
  std::vector<KeptFile> found;
  for (const std::wstring& run : files.List(root)) {
    const std::wstring folder = PathIn(root, run);
    for (const std::wstring& name : files.List(folder)) {
      if (!KeptFiles::IsKeptFile(name)) continue;
      const std::wstring path = PathIn(folder, name);
      if (const auto facts = files.FactsOf(path)) found.push_back({path, *facts});
    }
  }
  return found;
}

}  // namespace

bool KeptFiles::IsKeptFile(const std::wstring& name) {
  return name.starts_with(kFileName) && name.size() > kFileName.size() && name.size() < kFileName.size() + 7 &&
         std::all_of(name.begin() + kFileName.size(), name.end(), [](wchar_t c) { return c >= L'0' && c <= L'9'; });
}

bool KeptFiles::Wants(const std::wstring& mapPath) const {
  const std::lock_guard lock(mutex_);
  return !kept_.contains(mapPath);
}

void KeptFiles::Forget(const std::wstring& mapPath) {
  const std::lock_guard lock(mutex_);
  kept_.erase(mapPath);
}

void KeptFiles::ForgetAll() {
  const std::lock_guard lock(mutex_);
  kept_.clear();
}

bool KeptFiles::Keep(const std::wstring& mapPath, KeptBecause because, std::int64_t time, ByteSpan bytes) {
  Bytes record = EncodeHead({mapPath, time, because, static_cast<std::uint32_t>(bytes.size()), {}, 0});
  const Bytes content = Sealed(kContent, Bytes(bytes.begin(), bytes.end()));
  record.insert(record.end(), content.begin(), content.end());
  const std::lock_guard lock(mutex_);
  if (kept_.contains(mapPath)) return true;
  if (!OpenFile(record.size())) return false;
  // A record that is not whole would end the list for all that come behind it.
  if (!file_->WriteAt(end_, record)) {
    file_->Truncate(end_);
    return false;
  }
  end_ += static_cast<std::int64_t>(record.size());
  kept_.insert(mapPath);
  return true;
}

bool KeptFiles::OpenFile(std::size_t coming) {
  if (file_ && (end_ == 0 || end_ + static_cast<std::int64_t>(coming) <= limits_.FileBytes)) return true;
  file_.reset();
  KeepWithinLimit();
  const std::wstring path = PathIn(run_, std::wstring(kFileName) + std::to_wstring(number_ + 1));
  file_ = files_.Open(path, FileMode::Patch);
  if (!file_) return false;
  ++number_;
  end_ = file_->Size();
  return true;
}

// Deletes the oldest files before a new one is begun, so that the limit has room for a full one.
void KeptFiles::KeepWithinLimit() {
  std::vector<KeptFile> all = FilesUnder(files_, root_);
  std::int64_t bytes = limits_.FileBytes;
  for (const KeptFile& file : all) bytes += file.Facts.Size;
  std::ranges::sort(all, {}, [](const KeptFile& file) { return file.Facts.Written; });
  for (const KeptFile& file : all) {
    if (bytes <= limits_.MostBytes) return;
    if (files_.Delete(file.Path)) bytes -= file.Facts.Size;
  }
}

std::vector<KeptMap> KeptFiles::List() const {
  std::vector<KeptFile> all = FilesUnder(files_, root_);
  std::ranges::sort(all, [](const KeptFile& a, const KeptFile& b) {
    const std::wstring aFolder = FolderOf(a.Path), bFolder = FolderOf(b.Path);
    if (aFolder != bFolder) return aFolder < bFolder;
    return NumberOf(FileNameOf(a.Path)) < NumberOf(FileNameOf(b.Path));
  });
  std::vector<KeptMap> list;
  for (const KeptFile& file : all) ListFile(files_, file.Path, list);
  // The latest map comes first; of those of one second, as a job makes them, the one that was kept later.
  std::ranges::reverse(list);
  std::ranges::stable_sort(list, std::ranges::greater(), &KeptMap::Time);
  return list;
}

std::optional<Bytes> KeptFiles::Read(const KeptMap& kept) const {
  const auto file = files_.Open(kept.File, FileMode::Read);
  const std::optional<Head> head = file ? ReadHead(*file, kept.At) : std::nullopt;
  if (!head || head->Kept.MapPath != kept.MapPath || head->Kept.Size != kept.Size) return std::nullopt;
  const std::int64_t at = kept.At + head->Bytes;
  const std::size_t size = kSealBytes + kept.Size;
  if (at + static_cast<std::int64_t>(size) > file->Size()) return std::nullopt;
  Bytes record(size);
  if (!file->ReadAt(at, record)) return std::nullopt;
  const std::optional<ByteSpan> content = Unsealed(kContent, record);
  return content ? std::optional(Bytes(content->begin(), content->end())) : std::nullopt;
}
