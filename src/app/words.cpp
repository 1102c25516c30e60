#include "app/words.h"

#include <algorithm>

#include "base/files.h"
#include "base/path.h"
#include "base/text.h"
#include "resources/ids.h"
#include "window/balloon.h"

namespace {

constexpr std::size_t kFailedNames = 3;

// The system's words end with a line break, and some leave a place for the file that they are about.
std::wstring SystemSentence(std::uint32_t error, const std::wstring& path) {
  std::wstring text = SystemErrorText(error);
  text.erase(text.find_last_not_of(L" \r\n") + 1);
  const std::size_t place = text.find(L"%1");
  return place == text.npos ? text : text.replace(place, 2, FileNameOf(path));
}

// The text continues another sentence.
std::wstring TextOfEnd(const ItemResult& result, const std::wstring& resampler) {
  const auto row = static_cast<UINT>(result.End) - static_cast<UINT>(ItemEnd::NotKept);
  const std::wstring text = LoadResString(IDS_JOB_BECAUSE_FIRST + row);
  if (result.End == ItemEnd::EndedBadly) return FormatText(text.c_str(), result.Error);
  if (result.End != ItemEnd::NotStarted) return text;
  const std::wstring missing = TextOfMissing(resampler);
  const std::wstring reason = SystemSentence(static_cast<std::uint32_t>(result.Error), resampler);
  return missing.empty() ? FormatText(text.c_str(), reason.c_str()) : missing;
}

}  // namespace

std::wstring NamesOf(const std::vector<std::wstring>& waves, std::size_t most) {
  std::wstring names;
  for (std::size_t i = 0; i < waves.size() && i < most; ++i) {
    if (i > 0) names += L", ";
    names += FileNameOf(waves[i]);
  }
  if (waves.size() > most) names += FormatText(LoadResString(IDS_ANDMORE).c_str(), waves.size() - most);
  return names;
}

// Where the letters of a language are no keys, the key stands behind the name in brackets.
std::wstring CommandName(HMENU menu, UINT command) {
  wchar_t text[256] = L"";
  GetMenuStringW(menu, command, text, 256, MF_BYCOMMAND);
  std::wstring name = text;
  name.erase(std::min(name.find(L'\t'), name.size()));
  if (name.ends_with(L"...")) name.erase(name.size() - 3);
  const std::size_t key = name.find(L'&');
  if (key == name.npos) return name;
  const bool inBrackets = key > 0 && name[key - 1] == L'(' && name.size() > key + 2 && name[key + 2] == L')';
  return inBrackets ? name.erase(key - 1, 4) : name.erase(key, 1);
}

std::wstring TextOfCounts(int done, const std::vector<std::wstring>& failed) {
  const auto number = static_cast<int>(failed.size());
  if (number == 0) return FormatText(LoadResString(IDS_JOB_DONE).c_str(), done);
  return FormatText(LoadResString(IDS_JOB_FAILED).c_str(), done, number, NamesOf(failed, kFailedNames).c_str());
}

std::wstring TextOf(const ItemResult& result, const std::wstring& resampler) {
  const std::wstring text = TextOfEnd(result, resampler);
  return text.substr(std::min(text.find_first_not_of(L' '), text.size()));
}

std::wstring TextOf(const JobSum& sum, const std::wstring& resampler) {
  if (sum.Made + sum.NotReached == 0 && sum.Failed.empty()) return LoadResString(IDS_NOTHINGAPPLIES);
  std::wstring text = TextOfCounts(sum.Made, sum.Failed);
  if (sum.NotReached > 0) text += FormatText(LoadResString(IDS_JOB_NOTREACHED).c_str(), sum.NotReached);
  if (!sum.Failed.empty()) text += TextOfEnd(sum.First, resampler);
  return text;
}

std::wstring TextOf(const CheckSum& sum) {
  std::wstring text;
  if (sum.End == CheckSum::Aborted) {
    text = FormatText(LoadResString(IDS_CHECK_STOPPED).c_str(), sum.Judged, sum.Maps);
  } else if (sum.Marks == 0) {
    text = FormatText(LoadResString(IDS_CHECK_NOTHING).c_str(), sum.Judged);
  }
  const auto unread = static_cast<int>(sum.Unread.size());
  if (unread == 0) return text;
  const std::wstring names = NamesOf(sum.Unread, kFailedNames);
  return text + FormatText(LoadResString(IDS_CHECK_SKIPPED).c_str(), unread, names.c_str());
}

std::wstring TextOfMissing(const std::wstring& resampler) {
  if (resampler.empty()) return LoadResString(IDS_NORESAMPLER);
  // A bare name is looked for by the system.
  if (FolderOf(resampler).empty() || FileExists(resampler)) return {};
  return FormatText(LoadResString(IDS_RESAMPLERGONE).c_str(), resampler.c_str());
}

std::wstring TextOf(const MapFault& fault, const std::wstring& wave) {
  if (fault.Why == MapFault::None) return {};
  const std::wstring name = FileNameOf(wave);
  const std::wstring format = LoadResString(IDS_FAULT_FIRST + static_cast<UINT>(fault.Why) - MapFault::Refused);
  return FormatText(format.c_str(), name.c_str(), SystemSentence(fault.Error, wave).c_str());
}

// A map that is not found in a file of many may be one that cannot be read.
std::wstring TextOfUnreadable(const Voicebank& bank, int index) {
  const EntryFacts facts = bank.Maps.Facts(index);
  const bool mayBeLost = bank.Files.Kind == FrqTypeMrq && !facts.HasMap && !facts.Path.empty() && !facts.Loaded;
  if (!facts.Unreadable && !mayBeLost) return {};
  return TextOf(bank.Files.FaultOf(facts.Path), facts.Path);
}

void TellIfUnreadable(HWND place, const Voicebank& bank, int index) {
  const std::wstring text = TextOfUnreadable(bank, index);
  if (!text.empty()) Balloon::Show(place, text);
}
