#include "document/journalfile.h"

#include <map>
#include <utility>

#include "base/wordhash.h"

namespace {

constexpr std::uint32_t kMagic = 0x4E524A4D;  // "MJRN"

std::uint64_t ChecksumOf(std::uint64_t seed, std::int64_t position, std::int64_t time, ByteSpan records) {
  WordHash hash(seed);
  hash.Add(static_cast<std::uint64_t>(position));
  hash.Add(static_cast<std::uint64_t>(time));
  hash.Add(records);
  return hash.Value();
}

// Reads frame after frame; gives none at the end, and where a frame is not whole.
class FrameReader {
 public:
  explicit FrameReader(FileStream& stream) : stream_(stream), size_(stream.Size()) {}

  std::optional<Bytes> Next() {
    Bytes head(kFrameHead);
    if (size_ - end_ < static_cast<std::int64_t>(kFrameHead) || !stream_.ReadAt(end_, head)) return std::nullopt;
    ByteReader reader(head);
    const auto magic = reader.Read<std::uint32_t>();
    const auto size = reader.Read<std::uint32_t>();
    const auto time = reader.Read<std::int64_t>();
    const auto checksum = reader.Read<std::uint64_t>();
    const std::int64_t start = end_ + static_cast<std::int64_t>(kFrameHead);
    if (magic != kMagic || size > size_ - start) return std::nullopt;
    Bytes records(size);
    if (!stream_.ReadAt(start, records) || ChecksumOf(seed_, end_, time, records) != checksum) return std::nullopt;
    if (end_ == 0) seed_ = checksum;
    end_ = start + size;
    time_ = time;
    return records;
  }

  std::int64_t Time() const { return time_; }

 private:
  FileStream& stream_;
  const std::int64_t size_;
  std::int64_t end_ = 0;
  std::int64_t time_ = 0;
  std::uint64_t seed_ = 0;
};

std::vector<std::wstring> EditedPaths(const std::vector<JournalRecord>& records) {
  struct Fact {
    std::wstring Path;
    bool Edited = false;
  };
  std::map<int, Fact> facts;
  for (const JournalRecord& record : records) {
    if (record.What == JournalRecord::Read) facts[record.Entry].Path = record.Path;
    if (record.What == JournalRecord::Edited) facts[record.Entry].Edited = true;
    if (record.What == JournalRecord::Clean) facts[record.Entry].Edited = false;
  }
  std::vector<std::wstring> paths;
  for (const auto& [entry, fact] : facts) {
    if (fact.Edited && !fact.Path.empty()) paths.push_back(fact.Path);
  }
  return paths;
}

}  // namespace

ByteWriter NewFrame() {
  ByteWriter writer;
  writer.Append(kFrameHead);
  return writer;
}

void JournalFile::Begin(Bytes head) {
  Remove();
  head_ = std::move(head);
}

// The file is emptied before it is deleted: a scanner that has it open may keep it from going.
void JournalFile::Remove() {
  if (stream_) stream_->Truncate(0);
  Close();
  files_.Delete(path_);
}

bool JournalFile::Append(Bytes frame, std::int64_t time) {
  if (!stream_ && !Open()) return false;
  if (end_ + std::ssize(frame) > kMostBytes) return Remove(), false;
  return Write(frame, time);
}

bool JournalFile::Open() {
  stream_ = files_.Open(path_, FileMode::Patch);
  end_ = 0;
  seed_ = 0;
  if (stream_ && stream_->Truncate(0) && Write(head_, 0)) return true;
  stream_.reset();
  return false;
}

bool JournalFile::Write(Bytes& frame, std::int64_t time) {
  const ByteSpan records = ByteSpan(frame).subspan(kFrameHead);
  const std::uint64_t checksum = ChecksumOf(seed_, end_, time, records);
  ByteWriter head;
  head.Write(kMagic);
  head.Write(static_cast<std::uint32_t>(records.size()));
  head.Write(time);
  head.Write(checksum);
  const Bytes bytes = head.Take();
  std::memcpy(frame.data(), bytes.data(), bytes.size());
  if (!stream_->WriteAt(end_, frame)) return false;
  if (end_ == 0) seed_ = checksum;
  end_ += std::ssize(frame);
  return true;
}

std::optional<JournalContent> ReadJournal(FileSystem& files, const std::wstring& path) {
  const auto stream = files.Open(path, FileMode::Read);
  if (!stream) return std::nullopt;
  FrameReader frames(*stream);
  const std::optional<Bytes> first = frames.Next();
  std::optional<JournalHead> head = first ? DecodeHead(*first) : std::nullopt;
  if (!head) return std::nullopt;
  JournalContent content;
  content.Head = std::move(*head);
  while (const std::optional<Bytes> records = frames.Next()) {
    const std::size_t before = content.Records.size();
    if (!DecodeRecords(*records, content.Records)) {
      content.Records.resize(before);
      break;
    }
    content.Time = frames.Time();
  }
  if (content.Records.empty()) return std::nullopt;
  content.Edited = EditedPaths(content.Records);
  return content;
}
