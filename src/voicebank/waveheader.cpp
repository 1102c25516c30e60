#include "voicebank/waveheader.h"

#include <windows.h>
#include <shlwapi.h>

#include <algorithm>
#include <cstring>

#include "base/handle.h"

namespace {

// Size of the "fmt " chunk that WaveFormat takes; the compiler may lay padding behind it.
constexpr std::uint32_t kFormatSize = 18;

struct Chunk {
  char id[4];
  std::uint32_t size;
  LONGLONG content;  // position of its first byte
};

// Walks the chunks of a RIFF file, touching little but their heads. The multimedia functions that do the same take no
// path beyond the user's own code page everywhere.
class RiffFile {
 public:
  explicit RiffFile(const std::wstring& path)
      : file_(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr)) {}

  bool DescendWave() {
    Chunk riff;
    char form[4];
    return file_ && ReadHead(riff) && IsId(riff.id, "RIFF") && Read(form, sizeof(form)) && IsId(form, "WAVE");
  }
  // The next chunk of that name, with the file standing at its content.
  bool Find(const char* id, Chunk& chunk) {
    while (ReadHead(chunk)) {
      if (IsId(chunk.id, id)) return true;
      Ascend(chunk);
    }
    return false;
  }
  // Behind a chunk; one of an odd size has a byte of padding.
  void Ascend(const Chunk& chunk) { position_ = chunk.content + chunk.size + chunk.size % 2; }

  bool Read(void* target, std::uint32_t size) {
    const LONGLONG buffered = position_ - blockStart_;
    if (buffered < 0 || buffered + size > static_cast<LONGLONG>(block_.size())) {
      if (size > kBlock / 2) return ReadAt(position_, target, size) == size && Advance(size);
      block_.resize(kBlock);
      block_.resize(ReadAt(position_, block_.data(), kBlock));
      blockStart_ = position_;
      if (block_.size() < size) return false;
    }
    std::memcpy(target, block_.data() + (position_ - blockStart_), size);
    return Advance(size);
  }
  // Bytes from here to the end of the file: what a chunk can hold at most.
  LONGLONG Left() const {
    LARGE_INTEGER size{};
    GetFileSizeEx(file_.get(), &size);
    return size.QuadPart - position_;
  }

 private:
  // Heads are read through a block, so that a file of thousands of small chunks, or of zeros, is no work either.
  static constexpr DWORD kBlock = 16384;

  static bool IsId(const char (&found)[4], const char* id) { return std::memcmp(found, id, sizeof(found)) == 0; }
  bool ReadHead(Chunk& chunk) {
    if (!Read(chunk.id, sizeof(chunk.id)) || !Read(&chunk.size, sizeof(chunk.size))) return false;
    chunk.content = position_;
    return true;
  }
  bool Advance(std::uint32_t size) {
    position_ += size;
    return true;
  }
  DWORD ReadAt(LONGLONG position, void* target, DWORD size) const {
    LARGE_INTEGER move;
    move.QuadPart = position;
    DWORD got = 0;
    if (!SetFilePointerEx(file_.get(), move, nullptr, FILE_BEGIN)) return 0;
    return ReadFile(file_.get(), target, size, &got, nullptr) ? got : 0;
  }

  FileHandle file_;
  LONGLONG position_ = 0;
  LONGLONG blockStart_ = 0;
  std::vector<char> block_;
};

bool HasWaveExtension(const std::wstring& path) {
  const wchar_t* const extension = PathFindExtensionW(path.c_str());
  return lstrcmpiW(extension, L".wav") == 0 || lstrcmpiW(extension, L".wave") == 0;
}

}  // namespace

void WaveHeader::Reset() {
  *this = WaveHeader();
}

int WaveHeader::Load(const std::wstring& path, bool headerOnly) {
  if (!HasWaveExtension(path)) return -1;
  Reset();
  loaded = LoadWav(path, headerOnly);
  if (!loaded) Reset();
  return loaded ? 0 : -1;
}

bool WaveHeader::LoadWav(const std::wstring& path, bool headerOnly) {
  RiffFile file(path);
  Chunk chunk;
  if (!file.DescendWave() || !file.Find("fmt ", chunk)) return false;
  if (!file.Read(&format, std::min(chunk.size, kFormatSize))) return false;
  file.Ascend(chunk);
  if (!file.Find("data", chunk)) return false;
  dataSize = chunk.size;
  if (headerOnly) return true;
  if (dataSize > file.Left()) return false;
  samples.resize(dataSize);
  return file.Read(samples.data(), dataSize);
}

double WaveHeader::LengthSeconds() const {
  if (format.bitsPerSample == 0 || format.channels == 0 || format.samplesPerSec == 0) return 0.0;
  const std::uint32_t samplesPerChannel = dataSize * 8u / format.bitsPerSample / format.channels;
  const std::uint64_t milliseconds = std::uint64_t{samplesPerChannel} * 1000 / format.samplesPerSec;
  return static_cast<double>(milliseconds) / 1000.0;
}
