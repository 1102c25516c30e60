#include "voicebank/otoini.h"

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <optional>
#include <utility>

namespace UtauCommon {

namespace {

// The number that a field begins with, rounded to a float as the host keeps it; 0 for none. The conversion knows more
// than the host does: hexadecimal is cut off before it, and infinities and texts for numbers that are none count as 0.
double NumberOf(std::wstring_view field) {
  const std::wstring text(field.substr(0, field.find_first_of(L"xX")));
  const float number = std::wcstof(text.c_str(), nullptr);
  return std::isfinite(number) ? number : 0.0;
}

// Cuts the text before the next comma off the front of `rest`.
std::optional<std::wstring_view> CutField(std::wstring_view& rest) {
  const std::size_t comma = rest.find(L',');
  if (comma == rest.npos) return std::nullopt;
  const std::wstring_view field = rest.substr(0, comma);
  rest.remove_prefix(comma + 1);
  return field;
}

// Reads a line. The last number runs to the end of it, with any further commas.
std::optional<OTOENTRY> ParseLine(std::wstring_view line) {
  const auto parts = SplitKeyValue(line);
  if (!parts) return std::nullopt;
  OTOENTRY entry;
  entry.wave = parts->key;
  std::wstring_view rest = parts->value;
  const auto alias = CutField(rest);
  if (!alias) return std::nullopt;
  entry.alias = *alias;
  for (double* const number : {&entry.offset, &entry.consonant, &entry.cutoff, &entry.preutterance}) {
    const auto field = CutField(rest);
    if (!field) return std::nullopt;
    *number = NumberOf(*field);
  }
  entry.overlap = NumberOf(rest);
  return entry;
}

// The path without its extension as the shell tells it: a dot before a blank or a folder begins none.
std::wstring WithoutExtension(const std::wstring& path) {
  const std::size_t dot = path.find_last_of(L"\\ .");
  return dot != path.npos && path[dot] == L'.' ? path.substr(0, dot) : path;
}

std::wstring NameInVoicebank(const OTOENTRY& entry) {
  return entry.subfolder.empty() ? entry.wave : entry.subfolder + L"\\" + entry.wave;
}

}  // namespace

void OTOINI::Parse(const LineSource& next, const std::wstring& subfolder) {
  std::wstring line;
  while (entries.size() < kMostEntries && next(line)) {
    std::optional<OTOENTRY> entry = ParseLine(line);
    if (!entry) continue;
    entry->subfolder = subfolder;
    Add(std::move(*entry));
  }
}

void OTOINI::Add(OTOENTRY entry) {
  const OTOENTRY& added = entries.emplace_back(std::move(entry));
  // The first entry of an alias or a name is found, so that a later one changes nothing.
  byAlias_.emplace(added.alias, &added);
  byName_.emplace(WithoutExtension(NameInVoicebank(added)), &added);
}

void OTOINI::Clear() {
  byAlias_.clear();
  byName_.clear();
  entries.clear();
}

const OTOENTRY* OTOINI::Find(const std::wstring& text) const {
  if (text.empty()) return nullptr;
  // An alias beats a name wherever it stands.
  const auto alias = byAlias_.find(text);
  if (alias != byAlias_.end()) return alias->second;
  const auto name = byName_.find(text);
  return name == byName_.end() ? nullptr : name->second;
}

std::wstring OTOINI::ResolveWavePath(const std::wstring& text) const {
  const OTOENTRY* const entry = Find(text);
  return entry ? baseFolder + L"\\" + NameInVoicebank(*entry) : std::wstring();
}

}  // namespace UtauCommon

std::wstring ResolveNoteWavePath(const UtauCommon::NOTE& note, const UtauCommon::OTOINI& otoIni) {
  const std::wstring alias = note.GetAlias();
  return otoIni.ResolveWavePath(alias.empty() ? note.GetLyric() : alias);
}
