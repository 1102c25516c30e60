#include "batch/arguments.h"

#include <algorithm>
#include <map>

#include <CLI/CLI.hpp>

#include "base/notename.h"
#include "base/utf8.h"
#include "frqmap/mapkind.h"

namespace {

// As a call names it: .frq is frq.
std::string NameOf(const MapKind& kind) {
  return Utf8Of(kind.Extension.substr(1));
}

std::map<std::string, FrqType> KindsByName() {
  std::map<std::string, FrqType> kinds;
  for (const MapKind& kind : MapKinds()) kinds[NameOf(kind)] = kind.Type;
  return kinds;
}

// "frq, frc or pmk": those that a library reads stand last.
std::string NamesOfKinds() {
  std::string names, ofLibraries;
  for (const MapKind& kind : MapKinds()) {
    const bool isOurs = kind.Decode || kind.RecordBytes == 0;
    (isOurs ? names : ofLibraries) += ", " + NameOf(kind);
  }
  names = names.substr(2) + ofLibraries;
  return names.replace(names.rfind(", "), 2, " or ");
}

constexpr char kExitCodes[] =
    "Exit codes: 0 done, and nothing found; 1 findings; 2 wrong call; 3 something could not be\n"
    "read or written, or was ended early: the rest is done.";

class Reader {
 public:
  Reader() : app_("The work of Marlit on the frequency maps of whole voicebanks, without a window.", "marlit-batch") {
    app_.require_subcommand(1);
    app_.footer(kExitCodes);
    app_.set_version_flag("--version", "marlit-batch " MARLIT_VERSION);
    AddList();
    AddCheck();
    AddCreate();
    AddConvert();
    AddShift();
    AddKey();
    AddReport();
    AddExport();
    AddImport();
    AddRestore();
  }

  ReadArguments Read(const std::vector<std::string>& arguments) {
    if (!arguments.empty() && !arguments.front().starts_with('-') && !IsCommand(arguments.front())) {
      return {std::nullopt, "\"" + arguments.front() + "\" is no command. Run with --help for those that there are.\n"};
    }
    try {
      app_.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::ParseError& error) {
      std::ostringstream out, problems;
      const bool isHelp = app_.exit(error, out, problems) == 0;
      return {std::nullopt, isHelp ? out.str() : problems.str(), isHelp};
    }
    return {order_, "", false};
  }

 private:
  bool IsCommand(const std::string& word) const {
    return std::ranges::any_of(app_.get_subcommands({}), [&](const CLI::App* one) { return one->get_name() == word; });
  }

  // The arguments of every command.
  CLI::App* AddPlain(Command what, const std::string& name, const std::string& description) {
    CLI::App* const command = app_.add_subcommand(name, description);
    command->add_option("FOLDER", order_.Folders, "voicebanks, each with the folders directly in it")
        ->required()
        ->option_text("...");
    command->add_flag("--json", order_.IsJson, "results as lines of JSON");
    command->callback([this, what] { order_.What = what; });
    return command;
  }

  // And one that goes through the waves.
  CLI::App* Add(Command what, const std::string& name, const std::string& description) {
    CLI::App* const command = AddPlain(what, name, description);
    command->add_flag("-r,--recursive", order_.Recursive, "all voicebanks below the folders");
    command->add_option("--only", order_.Only, "waves whose names fit, with * and ?")->option_text("PATTERN");
    command->add_option("-j,--jobs", order_.Jobs, "threads; one for each core otherwise")
        ->check(CLI::Range(1, 256))
        ->option_text("N");
    return command;
  }

  CLI::App* AddWriting(Command what, const std::string& name, const std::string& description) {
    CLI::App* const command = Add(what, name, description);
    command->add_flag("-n,--dry-run", order_.IsDryRun, "tell what would be written, and write nothing");
    command->add_flag_callback(
        "--no-keep", [this] { order_.KeepsOld = false; }, "do not keep what is overwritten");
    return command;
  }

  CLI::Option* AddKind(CLI::App* command, const std::string& text) {
    return command
        ->add_option_function<FrqType>(
            "-k,--kind", [this](FrqType kind) { order_.Kind = kind; }, text)
        ->transform(CLI::CheckedTransformer(KindsByName(), CLI::ignore_case))
        ->option_text("KIND");
  }

  CLI::Option* AddKindTo(CLI::App* command, const std::string& name, FrqType& kind, const std::string& text) {
    return command->add_option(name, kind, text)
        ->transform(CLI::CheckedTransformer(KindsByName(), CLI::ignore_case))
        ->option_text("KIND");
  }

  void AddSettings(CLI::App* command) {
    command
        ->add_option_function<std::string>(
            "--note",
            [this](const std::string& name) {
              const int note = NoteNumberFromName(WideOf(name));
              if (note < 24 || note > 107) throw CLI::ValidationError("--note", "a note from C1 to B7 is wanted");
              order_.Note = note;
            },
            "the note of the syllables; the middle of the bank otherwise")
        ->option_text("NOTE");
    command->add_flag("--transition", order_.HasTransition, "syllables change their pitch");
    command->add_flag("--begin", order_.BeginsFar, "they begin far from their note");
    command->add_flag("--end", order_.EndsFar, "they end far from their note");
    command->add_option("--min-frames", order_.LeastFrames, "leave out findings of fewer frames")
        ->check(CLI::Range(1, 1000000))
        ->option_text("N");
  }

  void AddList() {
    AddKind(Add(Command::List, "list", "List each wave with its maps"),
            "maps of this kind alone: " + NamesOfKinds());
  }

  void AddCheck() {
    CLI::App* const command = AddWriting(Command::Check, "check", "Look for wrong frames");
    AddKind(command, "maps of this kind alone: " + NamesOfKinds());
    AddSettings(command);
    command->add_flag("--fix", order_.Fixes, "take over all that is suggested, and save");
  }

  void AddCreate() {
    CLI::App* const command = AddWriting(Command::Create, "create", "Make maps");
    CLI::Option* const kind = AddKind(command, "frq otherwise");
    CLI::Option* const all = command->add_flag("--all", order_.MakesAll, "also where there is a map: it is made anew");
    command
        ->add_flag_callback(
            "--missing", [] {}, "where there is none, as without --all")
        ->excludes(all);
    command->add_option("--resampler", order_.Resampler, "let this program make them, of the kind that is its own")
        ->option_text("EXE")
        ->check(CLI::ExistingFile)
        ->excludes(kind);
  }

  void AddConvert() {
    CLI::App* const command = AddWriting(Command::Convert, "convert", "Make maps of one kind from those of another");
    AddKindTo(command, "--from", order_.From, "the kind that is there")->required();
    AddKindTo(command, "--to", order_.To, "the kind to be made; one that is there is made anew")->required();
    command->callback([this] {
      order_.What = Command::Convert;
      if (order_.From == order_.To) throw CLI::ValidationError("--to", "another kind than --from is wanted");
    });
  }

  void AddShift() {
    CLI::App* const command = AddWriting(Command::Shift, "shift", "Shift the pitch of all frames");
    AddKind(command, "maps of this kind alone: " + NamesOfKinds());
    command->add_option("--cents", order_.Cents, "100 are a semitone, 1200 an octave")
        ->required()
        ->check(CLI::Range(-4800.0, 4800.0))
        ->option_text("N");
  }

  void AddKey() {
    CLI::App* const command = AddWriting(Command::Key, "key", "Set the key of maps");
    AddKind(command, "maps of this kind alone: " + NamesOfKinds());
    command
        ->add_flag_callback(
            "--from-curve", [] {}, "to the pitch of the curve, without its ends")
        ->required();
  }

  void AddReport() {
    CLI::App* const command = Add(Command::Report, "report", "Write a page that shows a voicebank");
    AddKind(command, "show maps of this kind; the one that most waves have otherwise");
    AddSettings(command);
    command->add_option("-o,--output", order_.Output, "the page")->required()->option_text("FILE.html");
    const std::map<std::string, ReportLanguage> languages = {{"en", ReportLanguage::English},
                                                             {"ja", ReportLanguage::Japanese}};
    command->add_option("--language", order_.Language, "en or ja")
        ->transform(CLI::CheckedTransformer(languages, CLI::ignore_case))
        ->option_text("LANGUAGE");
  }

  void AddFormat(CLI::App* command, const std::string& place) {
    const std::map<std::string, CurveFormat> formats = {{"csv", CurveFormat::Csv},
                                                        {"pitchtier", CurveFormat::PitchTier}};
    command->add_option("--format", order_.Format, "csv or pitchtier")
        ->transform(CLI::CheckedTransformer(formats, CLI::ignore_case))
        ->option_text("FORMAT");
    command->add_option("-o,--output", order_.Output, place)->option_text("FOLDER");
  }

  void AddExport() {
    CLI::App* const command = Add(Command::Export, "export", "Write curves as CSV or as PitchTier");
    AddKind(command, "of maps of this kind; of the first that is there otherwise");
    command->add_flag("-n,--dry-run", order_.IsDryRun, "tell what would be written, and write nothing");
    AddFormat(command, "where to; beside the waves otherwise");
  }

  void AddImport() {
    CLI::App* const command = AddWriting(Command::Import, "import", "Read curves back into maps");
    AddKind(command, "into maps of this kind; frq otherwise");
    AddFormat(command, "where from; beside the waves otherwise");
  }

  void AddRestore() {
    CLI::App* const command = AddPlain(Command::Restore, "restore", "Put back what a run has overwritten");
    command->add_flag("-n,--dry-run", order_.IsDryRun, "tell what would be put back, and write nothing");
    command->add_flag("--list", order_.ListsRuns, "list the runs that something is kept of");
    command->add_option("--run", order_.Run, "its number in that list; the latest one otherwise")
        ->check(CLI::Range(1, 1000))
        ->option_text("N");
  }

  CLI::App app_;
  Order order_;
};

}  // namespace

ReadArguments ReadCommandLine(const std::vector<std::string>& arguments) {
  return Reader().Read(arguments);
}
