#include "voicebank/waveheader.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <new>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "base/files.h"
#include "base/filesystem.h"
#include "base/path.h"

namespace {

// Small reads go through a block, so that a file of thousands of small chunks, or of zeros, is no work either; large
// ones go straight to where they are wanted. The multimedia functions that do the same take no path beyond the user's
// own code page everywhere. A wave that is open in a wave editor is read as well.
class FileSource : public ByteSource {
 public:
  explicit FileSource(const std::wstring& path) : file_(Disk().Open(path, FileMode::Read)) {
    if (file_) size_ = file_->Size();
  }

  std::int64_t Size() const override { return size_; }

  std::size_t ReadAt(std::int64_t position, void* target, std::size_t size) override {
    if (size > kBlock) return ReadFileAt(position, target, size);
    const std::int64_t buffered = position - blockStart_;
    if (buffered < 0 || buffered + static_cast<std::int64_t>(size) > static_cast<std::int64_t>(block_.size())) {
      block_.resize(kBlock);
      block_.resize(ReadFileAt(position, block_.data(), kBlock));
      blockStart_ = position;
    }
    const auto start = static_cast<std::size_t>(position - blockStart_);
    const std::size_t got = std::min(size, block_.size() - start);
    std::memcpy(target, block_.data() + start, got);
    return got;
  }

 private:
  static constexpr std::size_t kBlock = 4096;  // a header with all that usually stands before the samples

  std::size_t ReadFileAt(std::int64_t position, void* target, std::size_t size) {
    const std::int64_t left = position < 0 ? 0 : std::max<std::int64_t>(size_ - position, 0);
    const auto there = static_cast<std::size_t>(std::min<std::int64_t>(left, static_cast<std::int64_t>(size)));
    return there > 0 && file_->ReadAt(position, {static_cast<std::uint8_t*>(target), there}) ? there : 0;
  }

  const std::unique_ptr<FileStream> file_;
  std::int64_t size_ = 0;
  std::int64_t blockStart_ = 0;
  std::vector<char> block_;
};

// A wave that memory cannot hold counts as one that cannot be read.
template <typename Decode>
std::optional<DecodedWave> DecodeIfItFits(Decode decode) {
  try {
    return decode();
  } catch (const std::bad_alloc&) {
  } catch (const std::length_error&) {
  }
  return std::nullopt;
}

// Extensions are plain ASCII, so no locale has a say.
bool HasExtension(const std::wstring& path, std::initializer_list<std::wstring_view> known) {
  std::wstring extension = path.substr(PathWithoutExtension(path).size());
  for (wchar_t& c : extension) c = c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
  return std::ranges::find(known, extension) != known.end();
}

}  // namespace

void WaveHeader::Reset() {
  *this = WaveHeader();
}

bool IsSoundFile(const std::wstring& path) {
  return HasExtension(path, {L".wav", L".wave", L".aif", L".aiff"});
}

int WaveHeader::Load(const std::wstring& path, bool headerOnly) {
  if (HasExtension(path, {L".wav", L".wave"})) return LoadWav(path, headerOnly);
  if (HasExtension(path, {L".aif", L".aiff"})) return LoadAiff(path);
  return -1;
}

int WaveHeader::LoadWithin(const std::wstring& path, std::uint32_t mostBytes, double mostSeconds) {
  const auto isWithin = [&] { return dataSize <= mostBytes && LengthSeconds() <= mostSeconds; };
  if (!HasExtension(path, {L".wav", L".wave"})) return Load(path, false) == 0 && isWithin() ? 0 : -1;
  Reset();
  FileSource file(path);
  if (Take(DecodeIfItFits([&] { return DecodeWav(file, true); })) != 0 || !isWithin()) return -1;
  Reset();
  return Take(DecodeIfItFits([&] { return DecodeWav(file, false); }));
}

int WaveHeader::LoadWav(const std::wstring& path, bool headerOnly) {
  Reset();
  FileSource file(path);
  return Take(DecodeIfItFits([&] { return DecodeWav(file, headerOnly); }));
}

int WaveHeader::LoadAiff(const std::wstring& path) {
  Reset();
  return Take(DecodeIfItFits([&]() -> std::optional<DecodedWave> {
    const std::optional<Bytes> file = ReadWholeFile(path);
    return file ? DecodeAiff(*file) : std::nullopt;
  }));
}

int WaveHeader::Take(std::optional<DecodedWave> wave) {
  if (!wave) return -1;
  format = wave->format;
  samples = std::move(wave->samples);
  extension = std::move(wave->extension);
  dataSize = wave->dataSize;
  loaded = true;
  return 0;
}

double WaveHeader::LengthSeconds() const {
  if (format.bitsPerSample == 0 || format.channels == 0 || format.samplesPerSec == 0) return 0.0;
  const std::uint32_t samplesPerChannel = dataSize * 8u / format.bitsPerSample / format.channels;
  const std::uint64_t milliseconds = std::uint64_t{samplesPerChannel} * 1000 / format.samplesPerSec;
  return static_cast<double>(milliseconds) / 1000.0;
}
