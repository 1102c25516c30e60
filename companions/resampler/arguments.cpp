#include "arguments.h"

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <cwctype>

#include "base/note.h"
#include "base/notename.h"

namespace {

// The places in the command line.
enum Place : std::size_t {
  kInput,
  kOutput,
  kNoteName,
  kVelocity,
  kFlags,
  kOffset,
  kLength,
  kConsonant,
  kCutoff,
  kVolume,
  kModulation,
  kTempo,
  kPitchBend,
};

constexpr double kLongestMs = 600'000.0;  // ten minutes; more is a slip, and would not fit into a process of 32 bits
constexpr int kLowestNote = 12;
constexpr int kHighestNote = 127;
constexpr std::size_t kMostBends = 1'000'000;

// Whether the last component of a path is the null device.
bool IsNul(const std::wstring& path) {
  std::wstring name = path.substr(path.find_last_of(L"\\/") + 1);
  std::ranges::transform(name, name.begin(), [](wchar_t c) { return static_cast<wchar_t>(std::towlower(c)); });
  return name == L"nul";
}

class NumberReader {
 public:
  explicit NumberReader(const std::vector<std::wstring>& arguments) : arguments_(arguments) {}

  // Sets the target if there is such an argument; one that is no number, or not in the range, has failed.
  void Read(std::size_t place, double least, double most, double& target) {
    if (place >= arguments_.size()) return;
    const std::wstring& argument = arguments_[place];
    const wchar_t* const text = argument.c_str() + (place == kTempo && argument.starts_with(L'!') ? 1 : 0);
    wchar_t* end = nullptr;
    const double value = std::wcstod(text, &end);
    failed_ = failed_ || end == text || *end != L'\0' || !(value >= least && value <= most);
    target = value;
  }
  bool Failed() const { return failed_; }

 private:
  const std::vector<std::wstring>& arguments_;
  bool failed_ = false;
};

std::optional<NoteToRender> ParseNote(const std::vector<std::wstring>& arguments) {
  if (arguments.size() <= kLength) return std::nullopt;
  const int number = NoteNumberFromName(arguments[kNoteName]);
  if (number < kLowestNote || number > kHighestNote) return std::nullopt;
  NoteToRender note;
  note.hz = NoteToHz(number);
  NumberReader numbers(arguments);
  numbers.Read(kVelocity, 0.0, 1000.0, note.velocity);
  numbers.Read(kOffset, -kLongestMs, kLongestMs, note.offsetMs);
  numbers.Read(kLength, 0.0, kLongestMs, note.lengthMs);
  numbers.Read(kConsonant, -kLongestMs, kLongestMs, note.consonantMs);
  numbers.Read(kCutoff, -kLongestMs, kLongestMs, note.cutoffMs);
  numbers.Read(kVolume, 0.0, 1000.0, note.volume);
  numbers.Read(kModulation, -1000.0, 1000.0, note.modulation);
  numbers.Read(kTempo, 1.0, 10000.0, note.tempo);
  if (numbers.Failed() || note.lengthMs <= 0.0) return std::nullopt;
  if (arguments.size() > kPitchBend) note.pitchBend = DecodePitchBend(arguments[kPitchBend]);
  if (note.pitchBend.empty()) note.pitchBend = {0.0};
  return note;
}

// The digit that a character stands for in base 64; -1 for a character that is none.
int DigitOf(wchar_t c) {
  constexpr std::wstring_view kAlphabet = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  const std::size_t digit = kAlphabet.find(c);
  return digit == kAlphabet.npos ? -1 : static_cast<int>(digit);
}

}  // namespace

std::optional<ResamplerCall> ParseCall(const std::vector<std::wstring>& arguments) {
  if (arguments.size() <= kOutput || arguments[kInput].empty() || arguments[kOutput].empty()) return std::nullopt;
  if (IsNul(arguments[kOutput])) return ResamplerCall{arguments[kInput], L"", std::nullopt};
  const std::optional<NoteToRender> note = ParseNote(arguments);
  if (!note) return std::nullopt;
  return ResamplerCall{arguments[kInput], arguments[kOutput], note};
}

std::vector<double> DecodePitchBend(std::wstring_view text) {
  constexpr int kNegative = 2048;
  std::vector<double> cents;
  while (text.size() >= 2 && cents.size() < kMostBends) {
    if (text.front() == L'#') {
      const std::size_t end = text.find(L'#', 1);
      if (end == text.npos || cents.empty()) break;
      const unsigned long more = std::wcstoul(std::wstring(text.substr(1, end - 1)).c_str(), nullptr, 10);
      cents.resize(cents.size() + std::min<std::size_t>(more, kMostBends - cents.size()), cents.back());
      text.remove_prefix(end + 1);
      continue;
    }
    const int high = DigitOf(text[0]), low = DigitOf(text[1]);
    if (high < 0 || low < 0) break;
    const int value = high * 64 + low;
    cents.push_back(value < kNegative ? value : value - 2 * kNegative);
    text.remove_prefix(2);
  }
  return cents;
}
