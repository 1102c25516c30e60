// The output of the program: results on the standard output, as lines for people or as lines of JSON, and faults,
// progress and the sum on the error output, so that a pipe gets results alone.
#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

// Keys stay in the order in which they were set.
using Json = nlohmann::ordered_json;

// A text in UTF-8 for a terminal or a file: control characters, which a name may hold, and bytes that are no text
// become U+FFFD.
std::string Printable(std::wstring_view text);

// A number with its noun: "1,234 maps", "1 map".
std::string Counted(std::size_t number, std::string noun);

// A duration in words: "4 s", "2 min 05 s", "1 h 12 min".
std::string DurationText(double seconds);

class Console {
 public:
  explicit Console(bool isJson);
  ~Console();
  Console(const Console&) = delete;
  Console& operator=(const Console&) = delete;

  bool IsJson() const { return isJson_; }

  // Writes a piece of the result, with its line breaks. False when nobody reads on. On a terminal it is there at once,
  // otherwise with the next Flush or Say.
  bool Write(std::string_view text);
  // Brings all that was written to whoever reads along.
  void Flush();
  bool IsClosed() const { return isClosed_; }

  // Writes a line on the error output.
  void Say(std::string_view line);

  // Show how far the work is, on a terminal alone, and not more often than somebody can read.
  void BeginProgress(std::string doing, std::size_t total);
  void Progress(std::size_t done);
  void EndProgress();

 private:
  using Clock = std::chrono::steady_clock;
  void HideProgress();

  const bool isJson_;
  const bool showsProgress_;
  const bool isOnTerminal_;
  bool isClosed_ = false;
  std::string doing_;
  std::size_t total_ = 0;
  Clock::time_point began_, shown_;
  bool isShown_ = false;
};
