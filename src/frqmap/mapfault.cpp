#include "frqmap/mapfault.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string_view>

#include "base/bytes.h"
#include "base/path.h"
#include "frqmap/mapkind.h"
#include "frqmap/mrqfile.h"

namespace {

using enum MapFault::Reason;

constexpr std::int64_t kMostBytes = std::int64_t{64} << 20;  // of a file that is read at all

// Of a kind that nothing is known of but its name, only no bytes at all are a fault.
MapFault::Reason FaultOfBytes(const Bytes& file, const MapKind& kind, std::int64_t waveBytes) {
  const std::string_view beginning = kind.Beginning;
  const std::size_t compared = std::min(beginning.size(), file.size());
  const bool begins = std::equal(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(compared), beginning.begin(),
                                 [](std::uint8_t byte, char c) { return byte == static_cast<std::uint8_t>(c); });
  if (!begins) return Foreign;
  if (file.empty() || file.size() < beginning.size()) return CutShort;
  if (!kind.Decode || kind.Decode(file, waveBytes)) return None;
  return kind.IsWhole && kind.IsWhole(file) ? Foreign : CutShort;
}

// An entry that cannot be read is passed by where the file is read. One that is not there is no fault.
MapFault FaultOfEntry(FileSystem& files, FileStream& stream, const std::wstring& mapPath) {
  MrqScan scan(stream);
  const std::wstring wanted = FileNameOf(PathWithExtension(mapPath, L".wav"));
  const std::u16string name(wanted.begin(), wanted.end());
  while (scan.Next()) {
    if (scan.Head().Name == name) return {scan.ReadMrqEntry() ? None : Foreign};
  }
  if (scan.IsUnreadable()) return {Refused, files.LastError()};
  const bool isNew = stream.Size() == 0;
  return {scan.HasFailed() && !isNew ? CutShort : None};
}

}  // namespace

MapFault FindMapFault(FileSystem& files, const std::wstring& mapPath, FrqType kind) {
  const bool isEntry = kind == FrqTypeMrq;
  const std::wstring path = isEntry ? PathIn(FolderOf(mapPath), L"desc.mrq") : mapPath;
  if (isEntry && !files.FactsOf(path)) return {};
  const std::unique_ptr<FileStream> stream = files.Open(path, FileMode::Read);
  if (!stream) return {Refused, files.LastError()};
  if (isEntry) return FaultOfEntry(files, *stream, mapPath);
  const std::int64_t size = stream->Size();
  if (size > kMostBytes) return {Foreign};
  Bytes bytes(static_cast<std::size_t>(std::max<std::int64_t>(size, 0)));
  if (!bytes.empty() && !stream->ReadAt(0, bytes)) return {Refused, files.LastError()};
  const std::optional<FileFacts> wave = files.FactsOf(WavePathFromMapW(mapPath));
  const MapKind* const row = FindMapKind(kind);
  return {row ? FaultOfBytes(bytes, *row, wave ? wave->Size : 0) : None};
}
