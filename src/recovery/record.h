// Records as the files of the recovery folder hold them: a mark, the size of the body, its checksum, and the body.
#pragma once

#include <cstring>
#include <optional>
#include <string>

#include "base/bytes.h"
#include "base/utf16.h"
#include "base/wordhash.h"

inline constexpr std::size_t kSealBytes = 16;

inline std::uint64_t ChecksumOf(ByteSpan bytes) {
  WordHash hash;
  hash.Add(bytes);
  return hash.Value();
}

inline Bytes Sealed(std::uint32_t mark, const Bytes& body) {
  ByteWriter writer;
  writer.Reserve(kSealBytes + body.size());
  writer.Write(mark);
  writer.Write(static_cast<std::uint32_t>(body.size()));
  writer.Write(ChecksumOf(body));
  if (!body.empty()) std::memcpy(writer.Append(body.size()), body.data(), body.size());
  return writer.Take();
}

// The body of the record that these bytes begin with; none if it bears another mark or was not written whole.
inline std::optional<ByteSpan> Unsealed(std::uint32_t mark, ByteSpan record) {
  ByteReader reader(record);
  const bool isMarked = reader.Read<std::uint32_t>() == mark;
  const auto size = reader.Read<std::uint32_t>();
  const auto sum = reader.Read<std::uint64_t>();
  if (!isMarked || !reader.Holds(size, 1)) return std::nullopt;
  const ByteSpan body = record.subspan(kSealBytes, size);
  return ChecksumOf(body) == sum ? std::optional(body) : std::nullopt;
}

inline void WriteBlock(ByteWriter& writer, ByteSpan bytes) {
  writer.Write(static_cast<std::uint32_t>(bytes.size()));
  if (!bytes.empty()) std::memcpy(writer.Append(bytes.size()), bytes.data(), bytes.size());
}

inline Bytes ReadBlock(ByteReader& reader) {
  const ByteSpan block = reader.Take(reader.Read<std::uint32_t>());
  return Bytes(block.begin(), block.end());
}

// Writes a text in UTF-16, its length first.
inline void WriteText(ByteWriter& writer, const std::wstring& text) {
  const std::u16string units = Utf16Of(text);
  writer.Write(static_cast<std::uint32_t>(units.size()));
  for (const char16_t unit : units) writer.Write(unit);
}

inline std::wstring ReadText(ByteReader& reader) {
  const auto size = reader.Read<std::uint32_t>();
  std::u16string units;
  if (!reader.Holds(size, sizeof(char16_t))) return {};
  units.resize(size);
  for (char16_t& unit : units) unit = reader.Read<char16_t>();
  return WideOf(units);
}
