#include "frqmap/mrqfile.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace {

constexpr std::array<char, 4> kMagic = {'m', 'r', 'q', ' '};
constexpr std::int32_t kVersion = 2;
constexpr std::int64_t kCountAt = 8;
constexpr std::int64_t kBodyHeadBytes = 12;  // frame count, sample rate, hop
constexpr std::int64_t kTrailerBytes = 8;    // Timestamp, Unedited
constexpr std::int64_t kBlockBytes = 65536;
constexpr std::int64_t kLongestName = 32000;  // units; longer than any path: a longer one is no name

// A body without a trailer gives zeros for it. The frame count is checked once more, because another program may have
// written the file since the entry was found.
std::optional<MrqEntry> DecodeBody(ByteSpan body) {
  ByteReader reader(body);
  const auto frameCount = reader.Read<std::int32_t>();
  MrqEntry entry;
  entry.SampleRate = reader.Read<std::int32_t>();
  entry.Hop = reader.Read<std::int32_t>();
  if (!reader.Holds(frameCount, sizeof(float))) return std::nullopt;
  entry.Frequencies.resize(static_cast<std::size_t>(frameCount));
  for (double& frequency : entry.Frequencies) frequency = static_cast<double>(reader.Read<float>());
  entry.Timestamp = reader.Read<std::int32_t>();
  entry.Unedited = reader.Read<std::int32_t>();
  return entry;
}

}  // namespace

bool MrqImage::ReadAt(std::int64_t position, std::span<std::uint8_t> into) {
  if (position < 0 || position > Size() || static_cast<std::int64_t>(into.size()) > Size() - position) return false;
  std::copy_n(Content.begin() + static_cast<std::ptrdiff_t>(position), into.size(), into.begin());
  return true;
}

bool MrqImage::WriteAt(std::int64_t position, ByteSpan bytes) {
  const auto end = static_cast<std::size_t>(position) + bytes.size();
  if (end > Content.size()) Content.resize(end);
  std::ranges::copy(bytes, Content.begin() + static_cast<std::ptrdiff_t>(position));
  return true;
}

bool MrqImage::Truncate(std::int64_t size) {
  Content.resize(static_cast<std::size_t>(size));
  return true;
}

MrqScan::MrqScan(FileStream& stream) : stream_(stream), size_(stream.Size()), next_(MrqHeaderBytes) {
  const ByteSpan count = Window(kCountAt, 4);
  count_ = ByteReader(count).Read<std::int32_t>();
  failed_ = count.empty() || count_ < 0;
}

MrqScan::MrqScan(FileStream& stream, const MrqHead& from) : MrqScan(stream) {
  next_ = from.Start;
  ahead_ = from.Ahead;
}

bool MrqScan::Next() {
  if (failed_ || ahead_ >= count_) return false;
  failed_ = !ReadHead();
  return !failed_;
}

bool MrqScan::NextUncounted() {
  if (!ReadHead() || head_.End() > size_) return false;
  const auto isZero = [](char16_t unit) { return unit == u'\0'; };
  return head_.IsDead() ? std::ranges::all_of(head_.Name, isZero) : ReadMrqEntry().has_value();
}

// A body may reach beyond the file; the entry behind it is then not there.
bool MrqScan::ReadHead() {
  head_.Start = next_;
  const std::int64_t nameLength = ByteReader(Window(next_, 4)).Read<std::int32_t>();
  // A window of nothing reads as a name of no length, which ends the scan as well.
  if (nameLength < 1 || nameLength > kLongestName) return false;
  const std::int64_t nameBytes = nameLength * 2;
  const ByteSpan head = Window(next_, 8 + nameBytes);
  if (head.empty()) return false;

  head_.Name.resize(static_cast<std::size_t>(nameLength));
  std::memcpy(head_.Name.data(), head.data() + 4, static_cast<std::size_t>(nameBytes));
  head_.BodySize = ByteReader(head.last(4)).Read<std::int32_t>();
  head_.Ahead = ahead_++;
  next_ = head_.End();
  return head_.BodySize >= 0;
}

std::optional<MrqEntry> MrqScan::ReadMrqEntry() {
  const std::int64_t frameCount = ByteReader(Window(head_.BodyStart(), 4)).Read<std::int32_t>();
  if (frameCount < 1) return std::nullopt;
  std::int64_t bodyBytes = kBodyHeadBytes + frameCount * 4;
  const bool hasTrailer = head_.BodySize >= bodyBytes + kTrailerBytes;
  if (hasTrailer) bodyBytes += kTrailerBytes;
  if (bodyBytes > head_.BodySize || bodyBytes > size_ - head_.BodyStart()) return std::nullopt;

  Bytes body(static_cast<std::size_t>(bodyBytes));
  if (!Read(head_.BodyStart(), body)) return std::nullopt;
  return DecodeBody(body);
}

// A body that does not fit into the block is read directly, past it.
bool MrqScan::Read(std::int64_t position, std::span<std::uint8_t> into) {
  if (into.size() > kBlockBytes) {
    const bool isRead = stream_.ReadAt(position, into);
    isUnreadable_ = isUnreadable_ || !isRead;
    return isRead;
  }
  const ByteSpan window = Window(position, static_cast<std::int64_t>(into.size()));
  std::ranges::copy(window, into.begin());
  return !window.empty();
}

ByteSpan MrqScan::Window(std::int64_t position, std::int64_t size) {
  if (position > size_ || size > size_ - position) return {};
  if (position < blockStart_ || position + size > blockStart_ + static_cast<std::int64_t>(block_.size())) {
    blockStart_ = position;
    block_.resize(static_cast<std::size_t>(std::min(kBlockBytes, size_ - position)));
    if (!stream_.ReadAt(position, block_)) {
      block_.clear();
      isUnreadable_ = true;
      return {};
    }
  }
  return ByteSpan(block_).subspan(static_cast<std::size_t>(position - blockStart_), static_cast<std::size_t>(size));
}

Bytes EmptyMrqFile() {
  ByteWriter writer;
  writer.Write(kMagic);
  writer.Write(std::array{kVersion, std::int32_t{0}});
  return writer.Take();
}

std::optional<MrqHead> FindMrqEntry(FileStream& stream, const std::u16string& name) {
  MrqScan scan(stream);
  while (scan.Next()) {
    if (scan.Head().Name == name) return scan.Head();
  }
  return std::nullopt;
}

bool ReadAllMrqEntries(FileStream& stream, const std::function<void(const std::u16string&, MrqEntry&&)>& take) {
  MrqScan scan(stream);
  while (scan.Next()) {
    if (scan.Head().IsDead()) continue;
    if (std::optional<MrqEntry> entry = scan.ReadMrqEntry()) take(scan.Head().Name, std::move(*entry));
  }
  return !scan.HasFailed();
}

Bytes EncodeMrqBody(const MrqEntry& entry, std::int32_t timestamp) {
  ByteWriter writer;
  writer.Reserve(kBodyHeadBytes + entry.Frequencies.size() * sizeof(float) + kTrailerBytes);
  writer.Write(static_cast<std::int32_t>(entry.Frequencies.size()));
  writer.Write(entry.SampleRate);
  writer.Write(entry.Hop);
  for (const double frequency : entry.Frequencies) writer.Write(static_cast<float>(frequency));
  writer.Write(timestamp);
  writer.Write(entry.Unedited);
  return writer.Take();
}

Bytes EncodeMrqHead(const MrqHead& head) {
  ByteWriter writer;
  writer.Write(static_cast<std::int32_t>(head.Name.size()));
  for (const char16_t unit : head.Name) writer.Write(unit);
  writer.Write(head.BodySize);
  return writer.Take();
}

std::optional<MrqEntry> DecodeMrqEntry(ByteSpan entry) {
  MrqImage image(EmptyMrqFile());
  image.Content[kCountAt] = 1;
  image.WriteAt(image.Size(), entry);
  MrqScan scan(image);
  return scan.Next() && !scan.Head().IsDead() ? scan.ReadMrqEntry() : std::nullopt;
}
