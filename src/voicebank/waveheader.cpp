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

// Walks the chunks of a RIFF file, touching nothing but their heads. The multimedia functions that do the same take no
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
      if (!Ascend(chunk)) return false;
    }
    return false;
  }
  // Behind a chunk; one of an odd size has a byte of padding.
  bool Ascend(const Chunk& chunk) { return Seek(chunk.content + chunk.size + chunk.size % 2, FILE_BEGIN); }

  bool Read(void* target, std::uint32_t size) {
    DWORD got = 0;
    return ReadFile(file_.get(), target, size, &got, nullptr) && got == size;
  }
  // Bytes from here to the end of the file: what a chunk can hold at most.
  LONGLONG Left() {
    LARGE_INTEGER size{};
    GetFileSizeEx(file_.get(), &size);
    return size.QuadPart - Position();
  }

 private:
  static bool IsId(const char (&found)[4], const char* id) { return std::memcmp(found, id, sizeof(found)) == 0; }
  bool ReadHead(Chunk& chunk) {
    if (!Read(chunk.id, sizeof(chunk.id)) || !Read(&chunk.size, sizeof(chunk.size))) return false;
    chunk.content = Position();
    return true;
  }
  bool Seek(LONGLONG distance, DWORD origin, LARGE_INTEGER* position = nullptr) {
    LARGE_INTEGER move;
    move.QuadPart = distance;
    return SetFilePointerEx(file_.get(), move, position, origin) != 0;
  }
  LONGLONG Position() {
    LARGE_INTEGER position{};
    Seek(0, FILE_CURRENT, &position);
    return position.QuadPart;
  }

  FileHandle file_;
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
  if (!file.Read(&format, std::min(chunk.size, kFormatSize)) || !file.Ascend(chunk)) return false;
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
