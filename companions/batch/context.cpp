#include "batch/context.h"

#include <algorithm>
#include <set>
#include <thread>

#include "base/filesystem.h"
#include "base/notename.h"
#include "base/utf8.h"
#include "batch/machine.h"
#include "batch/reporttexts.h"
#include "frqctrl/tablereading.h"

namespace {

// The reason for which a folder is no bank. One that cannot be listed has no listing.
std::string WhyNoBank(const std::wstring& folder) {
  const std::optional<FileFacts> facts = Disk().FactsOf(folder);
  if (!facts) return LastFault();
  if (!facts->IsFolder) return "is a file, not a folder";
  return FolderListing::Read(folder) ? "no waves there" : "cannot be listed: access denied";
}

std::string NameOfTask(const Bank& bank, const std::wstring& wave, bool isOneOfMany) {
  const std::string name = Printable(TypedForm(bank.NameOf(wave)));
  return isOneOfMany ? Printable(TypedForm(bank.Folder())) + '/' + name : name;
}

}  // namespace

Tally& Tally::operator+=(const Tally& other) {
  Syllables += other.Syllables;
  Maps += other.Maps;
  Found += other.Found;
  Affected += other.Affected;
  Frames += other.Frames;
  Failed += other.Failed;
  return *this;
}

int Context::Threads() const {
  if (Call.Jobs > 0) return Call.Jobs;
  return static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
}

void Context::Fail(const std::string& line) {
  ++Sum.Failed;
  if (Out.IsJson()) Out.Write(LineOf({{"type", "fault"}, {"text", line}}));
  Out.Say("marlit-batch: " + line);
}

ExitCode Context::End() const {
  if (Stop || Out.IsClosed() || Sum.Failed > 0) return ExitCode::Failed;
  return Sum.Found > 0 ? ExitCode::Found : ExitCode::Done;
}

std::vector<std::unique_ptr<Bank>> BanksOf(Context& context) {
  std::vector<std::unique_ptr<Bank>> banks;
  std::set<std::wstring> seen;
  bool anyFound = false;
  for (const std::string& typed : context.Call.Folders) {
    const std::wstring folder = FullPathOfTyped(typed);
    std::vector<std::unique_ptr<Bank>> found = FindBanks(folder, context.Call.Recursive);
    std::erase_if(found, [](const auto& bank) { return bank->Waves().empty(); });
    if (found.empty()) context.Fail(Printable(TypedForm(folder)) + ": " + WhyNoBank(folder));
    for (auto& bank : found) {
      // A folder that is named twice is worked on once.
      if (!seen.insert(bank->Folder()).second) continue;
      bank->KeepOnly(context.Call.Only);
      if (!bank->Waves().empty()) banks.push_back(std::move(bank));
    }
    anyFound = anyFound || !found.empty();
  }
  if (anyFound && banks.empty()) context.Fail("no wave fits " + context.Call.Only);
  return banks;
}

WaveTasks::WaveTasks(const std::vector<std::unique_ptr<Bank>>& banks) : banks_(banks), starts_(1, 0) {
  for (const auto& bank : banks) starts_.push_back(starts_.back() + bank->Waves().size());
}

WaveTask WaveTasks::operator[](std::size_t index) const {
  const auto after = std::ranges::upper_bound(starts_, index);
  Bank& bank = *banks_[static_cast<std::size_t>(after - starts_.begin()) - 1];
  const std::wstring& wave = bank.Waves()[index - *std::prev(after)];
  return {bank, wave, NameOfTask(bank, wave, banks_.size() > 1)};
}

void ForEachWave(Context& context, const std::vector<std::unique_ptr<Bank>>& banks, const std::string& doing,
                 const std::function<Outcome(const WaveTask&)>& work) {
  WorkThrough<Outcome>(context, banks, doing, work, [&](Outcome&& outcome) {
    context.Sum += outcome.Sum;
    for (const std::string& fault : outcome.Faults) context.Fail(fault);
    return context.Out.Write(outcome.Lines);
  });
}

std::string FaultText(std::uint32_t error) {
  switch (error) {
    case 2: return "not found";
    case 3: return "no such folder";
    case 4: return "too many open files";
    case 5: return "access denied";
    case 8: return "out of memory";
    case 13: return "this kind cannot hold the map";
    case 19: return "the disk is write-protected";
    case 32:
    case 33: return "in use by another program";
    case 38: return "the file ends too early";
    case 112: return "the disk is full";
    case 206: return "the path is too long";
    case 223: return "the file is too large";
    case 1392: return "the file is damaged";
    default: return "system error " + std::to_string(error);
  }
}

std::string LastFault() {
  return FaultText(Disk().LastError());
}

std::string FaultText(const MapFault& fault) {
  switch (fault.Why) {
    case MapFault::None: return "";
    case MapFault::Refused: return FaultText(fault.Error);
    case MapFault::CutShort: return "cut short";
    case MapFault::Foreign: return "no map of its kind";
    case MapFault::NoLibrary: return "needs a library that is not there";
    case MapFault::NoNarrowPath: return "its library cannot be given the path";
  }
  return "";
}

std::string ReadFault(const WaveTask& task, const MapFacts& map) {
  return task.Name + ": the " + NameOfKind(map.Kind) + " map cannot be read: " + FaultText(map.Fault);
}

std::string LineOf(const Json& json) {
  return json.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
}

std::string NoteText(double hz) {
  const std::optional<PitchReading> pitch = ReadPitch(hz);
  if (!pitch) return "-";
  const std::wstring name = NoteNameFromNumber(pitch->Note);
  if (name.empty()) return Fixed(hz, 0) + " Hz";
  std::string text = Utf8Of(name);
  if (pitch->Cents != 0) text.append(pitch->Cents < 0 ? " " : " +").append(std::to_string(pitch->Cents));
  return text;
}
