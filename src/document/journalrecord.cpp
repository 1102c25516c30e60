#include "document/journalrecord.h"

#include <utility>

namespace {

constexpr std::uint32_t kVersion = 1;

using Record = JournalRecord;

void WriteText(ByteWriter& writer, const std::wstring& text) {
  writer.Write(static_cast<std::uint32_t>(text.size()));
  for (const wchar_t unit : text) writer.Write(static_cast<std::uint16_t>(unit));
}

std::wstring ReadText(ByteReader& reader) {
  const auto size = reader.Read<std::uint32_t>();
  std::wstring text;
  if (!reader.Holds(size, sizeof(std::uint16_t))) return reader.Fail(), text;
  text.reserve(size);
  for (std::uint32_t i = 0; i < size; ++i) text.push_back(static_cast<wchar_t>(reader.Read<std::uint16_t>()));
  return text;
}

bool HasChange(Record::Type type) {
  return type == Record::Done || type == Record::Stroke;
}

bool HasEntry(Record::Type type) {
  return type <= Record::Clean || type == Record::Dropped;
}

bool HasStamp(Record::Type type) {
  return type <= Record::Broken;
}

bool DecodeRecord(ByteReader& reader, Record& record) {
  const auto type = reader.Read<std::uint8_t>();
  if (type >= Record::kTypes) return false;
  record.What = static_cast<Record::Type>(type);
  if (HasEntry(record.What)) record.Entry = reader.Read<std::int32_t>();
  if (HasStamp(record.What)) {
    record.Path = ReadText(reader);
    record.Stamp = reader.Read<std::uint64_t>();
    record.Image = reader.Read<std::uint64_t>();
  }
  if (!HasChange(record.What)) return !reader.Failed();
  record.Change = Step::Decode(reader);
  return record.Change.has_value();
}

}  // namespace

void EncodeHead(ByteWriter& writer, const JournalHead& head) {
  writer.Write(kVersion);
  writer.Write(static_cast<std::int32_t>(head.Kind));
  WriteText(writer, head.Folder);
  WriteText(writer, head.Resampler);
  writer.Write(head.Time);
}

std::optional<JournalHead> DecodeHead(ByteSpan bytes) {
  ByteReader reader(bytes);
  JournalHead head;
  if (reader.Read<std::uint32_t>() != kVersion) return std::nullopt;
  head.Kind = static_cast<FrqType>(reader.Read<std::int32_t>());
  head.Folder = ReadText(reader);
  head.Resampler = ReadText(reader);
  head.Time = reader.Read<std::int64_t>();
  return reader.Failed() ? std::nullopt : std::optional(std::move(head));
}

void EncodeRecord(ByteWriter& writer, const JournalRecord& record) {
  if (HasChange(record.What)) return EncodeChange(writer, record.What, *record.Change);
  writer.Write(static_cast<std::uint8_t>(record.What));
  if (HasEntry(record.What)) writer.Write(static_cast<std::int32_t>(record.Entry));
  if (!HasStamp(record.What)) return;
  WriteText(writer, record.Path);
  writer.Write(record.Stamp);
  writer.Write(record.Image);
}

void EncodeChange(ByteWriter& writer, JournalRecord::Type type, const Step& step) {
  writer.Write(static_cast<std::uint8_t>(type));
  step.Encode(writer);
}

bool DecodeRecords(ByteSpan bytes, std::vector<JournalRecord>& records) {
  ByteReader reader(bytes);
  while (reader.Left() > 0) {
    JournalRecord record;
    if (!DecodeRecord(reader, record)) return false;
    records.push_back(std::move(record));
  }
  return true;
}
