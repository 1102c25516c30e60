#include "frqmap/mapfault.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <string_view>

#include "base/bytes.h"
#include "base/path.h"
#include "frqmap/dio.h"
#include "frqmap/freq0003.h"
#include "frqmap/mrqfile.h"
#include "frqmap/pmk.h"

namespace {

using enum MapFault::Reason;

constexpr std::int64_t kMostBytes = std::int64_t{64} << 20;  // of a file that is read at all

// What a file of the kind begins with. Only the letters count where other writers use digits of their own.
std::string_view BeginningOf(FrqType kind) {
  switch (kind) {
    case FrqTypeFrq:
    case FrqTypeFrc: return "FREQ";
    case FrqTypeDio: return "wrld-dio";
    case FrqTypePmk: return {"\x13\0", 2};
    default: return {};
  }
}

// A .pmk whose records are all there may still tell no length that makes sense.
bool HoldsRecords(const Bytes& pmk) {
  constexpr std::size_t kRecordBytes = 8;
  ByteReader reader(pmk);
  reader.Read<std::array<char, 2>>();
  reader.Read<double>();
  const auto count = reader.Read<std::int32_t>();
  return reader.Holds(count, kRecordBytes);
}

MapFault::Reason FaultOfBytes(const Bytes& file, FrqType kind, std::int64_t waveBytes) {
  const std::string_view beginning = BeginningOf(kind);
  const std::size_t compared = std::min(beginning.size(), file.size());
  const bool begins = std::equal(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(compared), beginning.begin(),
                                 [](std::uint8_t byte, char c) { return byte == static_cast<std::uint8_t>(c); });
  if (!begins) return Foreign;
  if (file.empty() || file.size() < beginning.size()) return CutShort;
  switch (kind) {
    case FrqTypeFrq:
    case FrqTypeFrc: return DecodeFreq0003(file) ? None : CutShort;
    case FrqTypeDio: return DecodeDio(file) ? None : CutShort;
    case FrqTypePmk:
      if (DecodePmk(file, waveBytes)) return None;
      return HoldsRecords(file) ? Foreign : CutShort;
    default: return None;
  }
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
  return {FaultOfBytes(bytes, kind, wave ? wave->Size : 0)};
}
