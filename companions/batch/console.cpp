#include "batch/console.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "base/utf8.h"
#include "batch/machine.h"
#include "batch/reporttexts.h"

std::string Printable(std::wstring_view text) {
  std::wstring shown(text);
  std::ranges::replace_if(
      shown, [](wchar_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0); }, L'\uFFFD');
  return Utf8Of(shown);
}

std::string Counted(std::size_t number, std::string noun) {
  if (number != 1) noun += 's';
  return TextOfCount(static_cast<std::int64_t>(number)) + ' ' + noun;
}

std::string DurationText(double seconds) {
  const auto whole = static_cast<long>(std::ceil(std::max(seconds, 0.0)));
  std::array<char, 48> text{};
  if (whole < 60) {
    std::snprintf(text.data(), text.size(), "%ld s", whole);
  } else if (whole < 3600) {
    std::snprintf(text.data(), text.size(), "%ld min %02ld s", whole / 60, whole % 60);
  } else {
    std::snprintf(text.data(), text.size(), "%ld h %02ld min", whole / 3600, whole / 60 % 60);
  }
  return text.data();
}

Console::Console(bool isJson)
    : isJson_(isJson), showsProgress_(IsTerminal(stderr)), isOnTerminal_(IsTerminal(stdout)) {}

Console::~Console() {
  Flush();
  HideProgress();
}

bool Console::Write(std::string_view text) {
  if (isClosed_ || text.empty()) return !isClosed_;
  if (isShown_ && isOnTerminal_) HideProgress();
  isClosed_ = std::fwrite(text.data(), 1, text.size(), stdout) != text.size();
  if (isOnTerminal_) Flush();
  return !isClosed_;
}

// The output is flushed seldom: a call of the system for each line would take as long as the work that it tells of.
void Console::Flush() {
  if (!isClosed_) isClosed_ = std::fflush(stdout) != 0;
}

// Where both outputs are one file, lines stand in it in the order in which they were said.
void Console::Say(std::string_view line) {
  Flush();
  HideProgress();
  std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
}

void Console::BeginProgress(std::string doing, std::size_t total) {
  doing_ = std::move(doing);
  total_ = total;
  began_ = shown_ = Clock::now();
}

void Console::Progress(std::size_t done) {
  constexpr auto kBetween = std::chrono::milliseconds(200);
  const Clock::time_point now = Clock::now();
  if (!showsProgress_ || done == 0 || done >= total_ || now - shown_ < kBetween) return;
  shown_ = now;
  const double soFar = std::chrono::duration<double>(now - began_).count();
  const double left = soFar / static_cast<double>(done) * static_cast<double>(total_ - done);
  HideProgress();
  std::fprintf(stderr, "%s: %s of %s, %s left", doing_.c_str(), TextOfCount(static_cast<std::int64_t>(done)).c_str(),
               TextOfCount(static_cast<std::int64_t>(total_)).c_str(), DurationText(left).c_str());
  std::fflush(stderr);
  isShown_ = true;
}

void Console::EndProgress() {
  HideProgress();
  total_ = 0;
}

void Console::HideProgress() {
  if (!isShown_) return;
  std::fputs("\r\x1b[K", stderr);
  isShown_ = false;
}
