#include "voicebank/notelist.h"

#include <algorithm>
#include <cwchar>
#include <limits>
#include <utility>

namespace UtauCommon {

namespace {

constexpr wchar_t kNameKey[] = L"[]";

// More notes than a project of the host can hold; a file with more would take the memory.
constexpr std::size_t kMostNotes = 1000000;

bool IsDigit(wchar_t c) {
  return c >= L'0' && c <= L'9';
}

// The number that a text begins with.
std::int32_t IntegerOf(const std::wstring& text) {
  using Limits = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(
      std::clamp<long long>(std::wcstoll(text.c_str(), nullptr, 10), Limits::min(), Limits::max()));
}

}  // namespace

NoteType NOTE::GetType() const {
  static constexpr struct {
    const wchar_t* name;
    NoteType type;
  } kNames[] = {
      {L"#VERSION", NoteTypeVersion}, {L"#SETTING", NoteTypeSetting},   {L"#PREV", NoteTypePrev},
      {L"#NEXT", NoteTypeNext},       {L"#TRACKEND", NoteTypeTrackEnd}, {L"#INSERT", NoteTypeInsert},
      {L"#DELETE", NoteTypeDelete},
  };
  const std::wstring name = GetValue(kNameKey);
  if (name.size() > 1 && name[0] == L'#' && IsDigit(name[1])) return NoteTypeNumbered;
  for (const auto& known : kNames) {
    if (name == known.name) return known.type;
  }
  return NoteTypeOther;
}

bool NOTE::IsCounted() const {
  const NoteType type = GetType();
  return type == NoteTypePrev || type == NoteTypeNumbered || type == NoteTypeNext || type == NoteTypeInsert;
}

std::wstring NOTE::GetValue(const std::wstring& key) const {
  const auto found = entries.find(key);
  return found == entries.end() ? std::wstring() : found->second;
}

std::int32_t NOTE::GetLength() const {
  return IntegerOf(GetValue(L"Length"));
}

std::wstring NOTELIST::GetSetting(const std::wstring& key) const {
  const NOTE* const setting = FindSetting();
  return setting ? setting->GetValue(key) : std::wstring();
}

const NOTE* NOTELIST::FindFirst(NoteType type) const {
  const auto found = std::find_if(notes.begin(), notes.end(), [type](const NOTE& n) { return n.GetType() == type; });
  return found == notes.end() ? nullptr : &*found;
}

void NOTELIST::Parse(const LineSource& next) {
  Clear();
  ReadSections(next);
  SetPositions();
  LinkAndNumber();
}

// Lines ahead of the first section make one without a name.
void NOTELIST::ReadSections(const LineSource& next) {
  NOTE current;
  const auto finish = [&] {
    if (!current.entries.empty()) notes.push_back(std::exchange(current, NOTE()));
  };
  std::wstring line;
  while (notes.size() < kMostNotes && next(line)) {
    if (line.starts_with(L'[')) {
      finish();
      // The last character goes whatever it is: the host writes a bracket there.
      current.entries[kNameKey] = line.size() > 1 ? line.substr(1, line.size() - 2) : std::wstring();
    } else if (const auto entry = SplitKeyValue(line)) {
      current.entries[std::wstring(entry->key)] = entry->value;
    }
  }
  finish();
}

// The sum wraps where the lengths of a broken file exceed its range.
void NOTELIST::SetPositions() {
  std::uint32_t sum = 0;
  for (NOTE& note : notes) {
    if (!note.IsCounted()) continue;
    note.position = static_cast<std::int32_t>(sum);
    sum += static_cast<std::uint32_t>(note.GetLength());
  }
}

// The first section is number 0 whatever it is, and takes that number only if it is counted.
void NOTELIST::LinkAndNumber() {
  NOTE* before = nullptr;
  std::int32_t number = 0;
  for (NOTE& note : notes) {
    note.prev = before;
    if (before) before->next = &note;
    before = &note;
    note.index = note.IsCounted() ? number++ : 0;
  }
}

}  // namespace UtauCommon
