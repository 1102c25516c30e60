#include "voicebank/wavefile.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>
#include <utility>

namespace {

// Size of the "fmt " chunk that WaveFormat takes; the compiler may lay padding behind it.
constexpr std::uint32_t kFormatSize = 18;

using ChunkId = std::array<char, 4>;

bool Is(const ChunkId& found, std::string_view id) {
  return std::string_view(found.data(), found.size()) == id;
}

struct Chunk {
  ChunkId id;
  std::uint32_t size;
  std::int64_t content;  // position of its first byte
};

class RiffWalk {
 public:
  explicit RiffWalk(ByteSource& file) : file_(file) {}

  bool DescendWave() {
    Chunk riff;
    ChunkId form;
    return ReadHead(riff) && Is(riff.id, "RIFF") && Read(form.data(), form.size()) && Is(form, "WAVE");
  }
  // The next chunk of that name, standing at its content.
  bool Find(std::string_view id, Chunk& chunk) {
    for (int i = 0; i < kMostChunks && ReadHead(chunk); ++i) {
      if (Is(chunk.id, id)) return true;
      Ascend(chunk);
    }
    return false;
  }
  // Goes behind a chunk; one of an odd size has a byte of padding.
  void Ascend(const Chunk& chunk) { position_ = chunk.content + chunk.size + chunk.size % 2; }
  bool Read(void* target, std::size_t size) {
    if (file_.ReadAt(position_, target, size) != size) return false;
    position_ += static_cast<std::int64_t>(size);
    return true;
  }
  // Bytes from here to the end of the file: what a chunk can hold at most.
  std::int64_t Left() const { return file_.Size() - position_; }

 private:
  // Gigabytes of zeros are a hundred million empty chunks, and no wave.
  static constexpr int kMostChunks = 1000000;

  bool ReadHead(Chunk& chunk) {
    if (!Read(chunk.id.data(), chunk.id.size()) || !Read(&chunk.size, sizeof(chunk.size))) return false;
    chunk.content = position_;
    return true;
  }

  ByteSource& file_;
  std::int64_t position_ = 0;
};

// Takes big-endian numbers and blocks off the front of an AIFF file.
class AiffReader {
 public:
  explicit AiffReader(ByteSpan bytes) : rest_(bytes) {}

  std::size_t Left() const { return rest_.size(); }
  // Takes as many bytes as there are, up to `size`.
  ByteSpan Take(std::size_t size) {
    const ByteSpan taken = rest_.first(std::min(size, rest_.size()));
    rest_ = rest_.subspan(taken.size());
    return taken;
  }
  // Takes a number of `size` bytes, which must be there.
  std::uint32_t TakeNumber(std::size_t size) {
    std::uint32_t number = 0;
    for (const std::uint8_t byte : Take(size)) number = number << 8 | byte;
    return number;
  }
  ChunkId TakeId() {
    ChunkId id{};
    std::ranges::copy(Take(id.size()), id.begin());
    return id;
  }

 private:
  ByteSpan rest_;
};

// The chunks of an AIFF file in any order, until all of them have been seen.
class AiffChunks {
 public:
  bool ReadAll(AiffReader file) {
    while (!hasForm_ || !hasFormat_ || !hasSound_) {
      // Without this a file that lacks a chunk would be walked for ever.
      if (file.Left() < kHeadSize || !ReadChunk(file)) return false;
    }
    return true;
  }

  DecodedWave Finish(std::size_t fileSize) const {
    DecodedWave wave;
    wave.format = format_;
    const std::uint64_t most = std::max<std::uint64_t>(std::uint64_t{fileSize} * 2, kAlwaysFilled);
    wave.dataSize = static_cast<std::uint32_t>(std::min<std::uint64_t>(soundSize_, most));
    wave.samples.assign(sound_.begin(), sound_.end());
    wave.samples.resize(wave.dataSize);
    if (format_.bitsPerSample == 16) SwapWords(wave.samples);
    return wave;
  }

 private:
  static constexpr std::size_t kHeadSize = 8;
  // Sound that a file lacks is silence up to this size [bytes] however short the file is.
  static constexpr std::uint64_t kAlwaysFilled = 1 << 20;
  static constexpr std::uint32_t kAiffFormatSize = 18;

  bool ReadChunk(AiffReader& file) {
    const ChunkId id = file.TakeId();
    const std::uint32_t size = file.TakeNumber(4);
    if (Is(id, "FORM")) return hasForm_ = Is(file.TakeId(), "AIFF");
    if (Is(id, "COMM")) return hasFormat_ = ReadFormat(file, size);
    if (Is(id, "SSND")) return hasSound_ = ReadSound(file, size);
    file.Take(size);
    return true;
  }

  bool ReadFormat(AiffReader& file, std::uint32_t size) {
    if (size != kAiffFormatSize || file.Left() < size) return false;
    format_.formatTag = 1;
    format_.channels = static_cast<std::uint16_t>(file.TakeNumber(2));
    frames_ = file.TakeNumber(4);
    format_.bitsPerSample = static_cast<std::uint16_t>(file.TakeNumber(2));
    file.TakeNumber(2);  // the exponent of the rate, an extended number of 80 bits
    format_.samplesPerSec = file.TakeNumber(2);
    file.Take(6);
    format_.blockAlign = static_cast<std::uint16_t>(std::uint32_t{format_.channels} * format_.bitsPerSample / 8);
    format_.avgBytesPerSec = format_.blockAlign * format_.samplesPerSec;
    return true;
  }

  // The offset that the chunk begins with is not applied.
  bool ReadSound(AiffReader& file, std::uint32_t size) {
    if (size < kHeadSize || file.Left() < kHeadSize) return false;
    file.Take(kHeadSize);
    soundSize_ = size - static_cast<std::uint32_t>(kHeadSize);
    sound_ = file.Take(soundSize_);
    return true;
  }

  void SwapWords(std::vector<std::uint8_t>& samples) const {
    const std::size_t words = std::min<std::size_t>(frames_, samples.size() / 2);
    for (std::size_t word = 0; word < words; ++word) std::swap(samples[2 * word], samples[2 * word + 1]);
  }

  bool hasForm_ = false;
  bool hasFormat_ = false;
  bool hasSound_ = false;
  WaveFormat format_;
  std::uint32_t frames_ = 0;
  std::uint32_t soundSize_ = 0;  // as the chunk claims
  ByteSpan sound_;               // the part of it that is there
};

}  // namespace

std::optional<DecodedWave> DecodeWav(ByteSource& file, bool headerOnly) {
  RiffWalk walk(file);
  DecodedWave wave;
  Chunk chunk;
  if (!walk.DescendWave() || !walk.Find("fmt ", chunk)) return std::nullopt;
  if (!walk.Read(&wave.format, std::min(chunk.size, kFormatSize))) return std::nullopt;
  if (chunk.size > kFormatSize) {
    wave.extension.resize(std::min<std::size_t>(chunk.size - kFormatSize, wave.format.extraSize));
    if (!walk.Read(wave.extension.data(), wave.extension.size())) return std::nullopt;
  }
  walk.Ascend(chunk);
  if (!walk.Find("data", chunk)) return std::nullopt;
  wave.dataSize = chunk.size;
  if (headerOnly) return wave;
  if (wave.dataSize > walk.Left()) return std::nullopt;
  wave.samples.resize(wave.dataSize);
  if (!walk.Read(wave.samples.data(), wave.dataSize)) return std::nullopt;
  return wave;
}

std::optional<DecodedWave> DecodeAiff(ByteSpan file) {
  AiffChunks chunks;
  if (!chunks.ReadAll(AiffReader(file))) return std::nullopt;
  return chunks.Finish(file.size());
}
