// report: a page that shows banks.
#include <algorithm>
#include <array>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <map>
#include <numeric>

#include "base/path.h"
#include "base/utf8.h"
#include "batch/commands.h"
#include "batch/html.h"
#include "batch/judging.h"
#include "batch/machine.h"
#include "batch/reportpage.h"
#include "batch/survey.h"
#include "frqmap/mapkind.h"

namespace {

// The one that most waves have a map of; the first of several.
FrqType KindOfMost(const std::vector<std::unique_ptr<Bank>>& banks) {
  FrqType most = FrqTypeFrq;
  std::size_t mostMaps = 0;
  for (const FrqType kind : KindNumbers()) {
    std::size_t maps = 0;
    for (const auto& bank : banks) {
      maps += static_cast<std::size_t>(
          std::ranges::count_if(bank->Waves(), [&](const std::wstring& wave) { return bank->HasMap(wave, kind); }));
    }
    if (maps > mostMaps) {
      mostMaps = maps;
      most = kind;
    }
  }
  return most;
}

std::string Today() {
  const std::time_t now = std::time(nullptr);
  std::array<char, 16> text{};
  if (const std::tm* const local = std::localtime(&now)) std::strftime(text.data(), text.size(), "%Y-%m-%d", local);
  return text.data();
}

// A file as seen from a folder, so that a page can be moved along with its bank; in full where they share nothing.
std::wstring SeenFrom(const std::wstring& folder, const std::wstring& file) {
  std::wstring from = PathIn(folder, L"");
  std::wstring up;
  while (!file.starts_with(from)) {
    const std::wstring above = PathIn(FolderOf(from.substr(0, from.size() - 1)), L"");
    if (above.size() >= from.size() || above.size() < 2) return file;
    from = above;
    up += L"..\\";
  }
  return up + file.substr(from.size());
}

struct NamedRow {
  ReportRow Row;
  std::string Fault;  // why the map that is shown cannot be read; empty if it can
};

class Reporting {
 public:
  Reporting(Context& context, const std::vector<std::unique_ptr<Bank>>& banks, FrqType kind, std::wstring folder)
      : context_(context), kind_(kind), folder_(std::move(folder)) {
    for (const auto& bank : banks) settings_.try_emplace(bank.get(), *bank, context.Call);
  }

  NamedRow RowOf(const WaveTask& task) {
    FrqMap map;
    const SyllableFacts facts = LookAtSyllable(task.Of, task.Wave, kind_, map);
    const auto shown = std::ranges::find(facts.Maps, kind_, &MapFacts::Kind);
    const bool isThere = shown != facts.Maps.end();
    const bool isRead = isThere && shown->Fault.Why == MapFault::None;
    std::vector<Finding> findings;
    if (isRead && JudgeMap(map, MapPathFromWaveW(task.Wave, kind_), settings_.at(&task.Of))) {
      findings = TakeFindings(map, context_.Call.LeastFrames);
    }
    const std::wstring name = WideOf(task.Name);
    const std::string link = LinkTo(SeenFrom(folder_, task.Wave));
    const ReportedSyllable syllable = {name, link, facts, kind_, isRead ? &map : nullptr, findings};
    return {MakeReportRow(syllable, context_.Call.Language), isThere && !isRead ? ReadFault(task, *shown) : ""};
  }

 private:
  Context& context_;
  const FrqType kind_;
  const std::wstring folder_;  // of the page
  std::map<const Bank*, CheckSettings> settings_;
};

std::string TitleOf(const Context& context, const std::vector<std::unique_ptr<Bank>>& banks) {
  const std::wstring folder =
      banks.size() == 1 ? banks.front()->Folder() : FullPathOfTyped(context.Call.Folders.front());
  return Printable(FileNameOf(folder).empty() ? folder : FileNameOf(folder));
}

// Under another name until it is whole, so that nobody finds half a page.
class PageFile {
 public:
  explicit PageFile(const std::wstring& path)
      : path_(FilesystemPath(path)), part_(FilesystemPath(path + L".part")), out_(part_, std::ios::binary) {}
  ~PageFile() {
    std::error_code ignored;
    out_.close();
    std::filesystem::remove(part_, ignored);
  }
  PageFile(const PageFile&) = delete;
  PageFile& operator=(const PageFile&) = delete;

  std::ostream& Out() { return out_; }
  bool Finish() {
    out_.close();
    std::error_code error;
    if (out_) std::filesystem::rename(part_, path_, error);
    return out_ && !error;
  }

 private:
  const std::filesystem::path path_, part_;
  std::ofstream out_;
};

}  // namespace

void WriteReport(Context& context) {
  const auto banks = BanksOf(context);
  if (banks.empty()) return;
  const std::wstring path = FullPathOfTyped(context.Call.Output);
  PageFile file(path);
  const std::string name = Printable(TypedForm(path));
  if (!file.Out()) return context.Fail(name + ": the page cannot be written");
  const FrqType kind = context.Call.Kind.value_or(KindOfMost(banks));
  ReportPage page(file.Out(), {WideOf(TitleOf(context, banks)), kind, Today(), context.Call.Language});
  Reporting reporting(context, banks, kind, FolderOf(path));
  const auto take = [&](NamedRow&& named) {
    const ReportRow& row = named.Row;
    page.Add(row);
    ++context.Sum.Syllables;
    context.Sum.Found += static_cast<std::size_t>(std::accumulate(row.Findings.begin(), row.Findings.end(), 0LL));
    if (!named.Fault.empty()) context.Fail(named.Fault);
    return file.Out().good();
  };
  WorkThrough<NamedRow>(
      context, banks, "reporting", [&](const WaveTask& task) { return reporting.RowOf(task); }, take);
  if (context.Stop) return;
  page.Finish();
  if (!file.Finish()) return context.Fail(name + ": the page cannot be written");
  if (context.Call.IsJson) {
    context.Out.Write(LineOf({{"type", "sum"},
                              {"page", name},
                              {"banks", banks.size()},
                              {"syllables", context.Sum.Syllables},
                              {"findings", context.Sum.Found},
                              {"faults", context.Sum.Failed}}));
    return;
  }
  context.Out.Say(Counted(context.Sum.Syllables, "syllable") + " in " + Counted(banks.size(), "bank") + ", " +
                  Counted(context.Sum.Found, "finding") + ": " + name);
}
