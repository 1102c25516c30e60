// The context of a command: the call, its output, and its results.
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "batch/banks.h"
#include "batch/console.h"
#include "batch/facts.h"
#include "batch/order.h"
#include "batch/workers.h"
#include "frqmap/mapfault.h"

// The results of a run in numbers, added up in the order of the waves.
struct Tally {
  std::size_t Syllables = 0;
  std::size_t Maps = 0;      // looked at, made or changed
  std::size_t Found = 0;     // findings
  std::size_t Affected = 0;  // syllables with any
  std::size_t Frames = 0;    // changed by a fix
  std::size_t Failed = 0;    // could not be read or written

  Tally& operator+=(const Tally& other);
};

// The results for one wave: lines for the standard output, lines for the error output, and its share of the numbers.
struct Outcome {
  std::string Lines;
  std::vector<std::string> Faults;
  Tally Sum;
};

enum class ExitCode { Done = 0, Found = 1, WrongCall = 2, Failed = 3 };

struct Context {
  const Order& Call;
  Console& Out;
  const std::atomic<bool>& Stop;  // the user has asked for the end
  Tally Sum{};

  int Threads() const;
  // Tells and counts a fault of one file, after which the run goes on.
  void Fail(const std::string& line);
  // The exit code that the numbers come to.
  ExitCode End() const;
};

// One wave of a bank, for a command.
struct WaveTask {
  Bank& Of;
  const std::wstring& Wave;
  std::string Name;  // for people, with the bank's folder where there are several
};

// The banks of the folders of a call. A folder that is no bank, or has no wave, is told as a fault.
std::vector<std::unique_ptr<Bank>> BanksOf(Context& context);

// All waves of the banks, in order. A task is made when its turn comes: those of a large bank take megabytes together.
class WaveTasks {
 public:
  explicit WaveTasks(const std::vector<std::unique_ptr<Bank>>& banks);
  std::size_t Count() const { return starts_.back(); }
  WaveTask operator[](std::size_t index) const;

 private:
  const std::vector<std::unique_ptr<Bank>>& banks_;
  std::vector<std::size_t> starts_;  // of the waves of each bank, and the end of the last one's
};

// Has `work(task)` done for each wave of the banks, on as many threads as the call allows, and its results taken in
// order by `take(result)`, which gives whether to go on. `doing` names the work for the progress.
template <typename Result, typename Work, typename Take>
void WorkThrough(Context& context, const std::vector<std::unique_ptr<Bank>>& banks, const std::string& doing,
                 const Work& work, const Take& take) {
  const WaveTasks tasks(banks);
  context.Out.BeginProgress(doing, tasks.Count());
  std::atomic<bool> ends = false;
  const auto doOne = [&](std::size_t index) -> Result {
    if (context.Stop) ends = true;
    return work(tasks[index]);
  };
  const auto takeOne = [&](std::size_t index, Result&& result) {
    if (!take(std::move(result)) || context.Stop) ends = true;
    context.Out.Progress(index + 1);
  };
  RunInOrder<Result>(tasks.Count(), context.Threads(), ends, doOne, takeOne, [&] { context.Out.Flush(); });
  context.Out.EndProgress();
  if (context.Stop) context.Out.Say("marlit-batch: ended early, as asked; what was begun is finished");
}

// WorkThrough for a command that puts out lines.
void ForEachWave(Context& context, const std::vector<std::unique_ptr<Bank>>& banks, const std::string& doing,
                 const std::function<Outcome(const WaveTask&)>& work);

// The system's reason for what failed last in a file, in words: "access denied".
std::string LastFault();
std::string FaultText(std::uint32_t error);
// The reason for which a map cannot be read, and the line that tells it.
std::string FaultText(const MapFault& fault);
std::string ReadFault(const WaveTask& task, const MapFacts& map);

// A line of JSON, with its end.
std::string LineOf(const Json& json);
// A pitch as the windows write notes, with the cents above or below: "A3 +12".
std::string NoteText(double hz);
