#include "cli/uKshock.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <exception>
#include <limits>
#include <optional>
#include <sstream>

#include "analysis/uAnalysisTable.h"
#include "analysis/uMissionDatasets.h"
#include "base/uDateTime.h"
#include "base/uText.h"
#include "cli/uCommands.h"

namespace {

// What the command line can ask for; a command's callback leaves its status in FStatus.
class TCommandLine {
 public:
  explicit TCommandLine(const TConsole& console) : FConsole(console) {
    FApp.require_subcommand(1);
    // What the parser complains of holds the user's words.
    FApp.failure_message([](const CLI::App*, const CLI::Error& error) {
      return Printable(error.what()) + "\nRun with --help for more information.\n";
    });
    FApp.allow_windows_style_options(false);  // "/a" is a path
    FApp.set_version_flag("--version", "kshock " SHOCKSCOPE_VERSION);
    AddInfo();
    AddDump();
    AddBlocks();
    AddTable();
    AddExport();
    AddFilter();
    AddSpectrum();
    AddSrs();
    AddPulse();
    AddCut();
    AddNotes();
    AddFleet();
    AddMake();
    AddDemo();
  }
  TCommandLine(const TCommandLine&) = delete;
  TCommandLine& operator=(const TCommandLine&) = delete;

  TStatus Run(std::vector<std::string> arguments) {
    if (!arguments.empty() && !arguments[0].starts_with('-') && !IsCommand(arguments[0])) {
      FConsole.err(
          fmt::format("kshock: There is no command \"{}\"; kshock --help lists them.\n", Printable(arguments[0])));
      return TStatus::WrongUse;
    }
    std::ranges::reverse(arguments);  // the parser takes them from the back
    try {
      FApp.parse(std::move(arguments));
    } catch (const CLI::Success& request) {
      Say(request, FConsole.out);
      return TStatus::Done;
    } catch (const CLI::ParseError& error) {
      FConsole.err("kshock: ");
      Say(error, FConsole.err);
      return TStatus::WrongUse;
    }
    return FStatus;
  }

 private:
  [[nodiscard]] bool IsCommand(const std::string& word) const {
    return std::ranges::any_of(FApp.get_subcommands({}),
                               [&word](const CLI::App* command) { return command->get_name() == word; });
  }

  void Say(const CLI::Error& error, const TTextSink& sink) {
    std::ostringstream text;
    FApp.exit(error, text, text);
    sink(text.str());
  }

  void AddInfo() {
    CLI::App* command = FApp.add_subcommand("info", "Show mission details and summary of recordings.");
    command->add_option("FILE", FFiles, "Recordings")->required();
    command
        ->add_option("--limits", FLimits,
                     "Limit profile, or a settings.ini with alarm limits: print the verdict, and whether each "
                     "recording passes")
        ->type_name("FILE.ini");
    command->callback([this] { FStatus = InfoCommand(FFiles, FLimits, FConsole); });
  }

  void AddDump() {
    CLI::App* command = FApp.add_subcommand("dump", "Print everything that is read as one JSON object.");
    AddFile(command);
    AddNumber(command, "--rows", FRows, "Rows of each table; all unless given");
    command->callback([this] { FStatus = DumpCommand(FFile, FRows, FConsole); });
  }

  void AddBlocks() {
    CLI::App* command = FApp.add_subcommand("blocks", "List the blocks of a data file.");
    AddFile(command);
    command->callback([this] { FStatus = BlocksCommand(FFile, FConsole); });
  }

  void AddTable() {
    CLI::App* command = FApp.add_subcommand("table", "Print one table as CSV lines.");
    AddFile(command);
    command->add_option("TABLE", FTable, "Table")->required()->check(CLI::IsMember(TableNames()));
    command->add_option("--order", FIndex, "Index, such as MaxAccDesc or TimestampASC");
    command->callback([this] { FStatus = TableCommand(FFile, FTable, FIndex, FConsole); });
  }

  void AddExport() {
    CLI::App* command = FApp.add_subcommand("export", "Write the files of the window's exports.");
    AddFile(command);
    command->add_option("WHAT", FExport.what, "Exports")
        ->required()
        ->type_name(ChoiceType(kExports))
        ->check([](const std::string& what) {
          return std::ranges::find(kExports, what) == kExports.end() ? fmt::format("There is no export \"{}\".", what)
                                                                     : std::string();
        });
    command->add_option("--to", FExport.folder, "Folder to write to")
        ->required()
        ->type_name("DIR")
        ->check([](const std::string& folder) {
          return folder.empty() ? "The folder has no name; . is the current one." : std::string();
        });
    command
        ->add_option("--date-format", FExport.dateFormat,
                     fmt::format("How dates are written; {} unless given", kDefaultDateFormat))
        ->type_name("MASK");
    command
        ->add_option("--filter", FExport.filter,
                     "Leave only events in these ranges: acc, tot, totmax, iot, iotmax, dv, axis, as in "
                     "acc=6..20,tot=..50,axis=X-pos")
        ->type_name("CONDITIONS");
    command->callback([this] { FStatus = ExportCommand(FFile, FExport, FConsole); });
  }

  void AddFilter() {
    CLI::App* command = FApp.add_subcommand("filter", "Print the high-passed curves of one event as CSV lines.");
    AddFile(command);
    AddNumber(command, "--event", FEvent, "ID of the event")->required();
    command->callback([this] { FStatus = FilterCommand(FFile, FEvent, FConsole); });
  }

  void AddSpectrum() {
    CLI::App* command = FApp.add_subcommand("spectrum", "Print the spectrum of one event as CSV lines.");
    AddFile(command);
    AddNumber(command, "--event", FEvent, "ID of the event")->required();
    AddChoice(command, "--type", FSpectrumType, kSpectrumTypes);
    AddChoice(command, "--window", FWindow, kWeightingWindows, "fw");
    command->callback([this] { FStatus = SpectrumCommand(FFile, FEvent, FSpectrumType, FWindow, FConsole); });
  }

  void AddSrs() {
    CLI::App* command = FApp.add_subcommand(
        "srs", "Print the shock response spectrum of one event, or the envelope of all, as CSV lines.");
    AddFile(command);
    const auto parseEvent = [this](const std::string& text) {
      if (text != "all") FSrs.event = ParseNumber<std::size_t>("--event", text, "is \"all\" or");
    };
    command->add_option_function<std::string>("--event", parseEvent, "ID of the event, or all")
        ->required()
        ->type_name("ID|all");
    AddReal(command, "--q", FSrs.response.options.quality, 0.5,
            "Quality of the oscillators, above 0.5; 10 unless given");
    CLI::Option* octave =
        command
            ->add_option("--octave", FSrs.response.octave, "Frequencies in an octave: 3, 6, 12 or 24; 12 unless given")
            ->check(CLI::IsMember({3, 6, 12, 24}))
            ->type_name("N");
    CLI::Option* from = AddReal(command, "--from", FSrs.response.from, 0, "Lowest frequency; 1/duration unless given");
    CLI::Option* to =
        AddReal(command, "--to", FSrs.response.to, 0, "Highest frequency; a quarter of the sampling rate unless given");
    const auto parseList = [this](const std::string& text) {
      for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        FSrs.response.frequencies.push_back(ParseReal("--frequencies", text.substr(begin, end - begin), 0));
        begin = end + 1;
      }
    };
    command->add_option_function<std::string>("--frequencies", parseList, "These instead, such as 10,20,72.7")
        ->type_name("HZ,...")
        ->excludes(octave)
        ->excludes(from)
        ->excludes(to);
    AddChoice(command, "--response", FSrs.response.options.response, kResponses);
    AddChoice(command, "--sign", FSrs.response.options.sign, kResponseSigns);
    AddChoice(command, "--baseline", FSrs.response.baseline, kBaselines);
    command->callback([this] {
      const TResponseRequest& asked = FSrs.response;
      if (asked.from && asked.to && *asked.from > *asked.to) throw CLI::ValidationError("--from lies above --to.");
      FStatus = SrsCommand(FFile, FSrs, FConsole);
    });
  }

  void AddPulse() {
    CLI::App* command = FApp.add_subcommand(
        "pulse", "Print velocity change, durations, direction and drop height of events as CSV lines.");
    AddFile(command);
    const auto parse = [this](const std::string& text) {
      FPulseEvent = ParseNumber<std::size_t>("--event", text, "takes");
    };
    command->add_option_function<std::string>("--event", parse, "ID of the event; all unless given")->type_name("N");
    command->callback([this] { FStatus = PulseCommand(FFile, FPulseEvent, FConsole); });
  }

  void AddCut() {
    CLI::App* command = FApp.add_subcommand("cut", "Write the part of a recording between two times as a new one.");
    AddFile(command);
    command->add_option("OUT", FOut, "Recording to write")->required();
    command->add_option("--from", FFrom, "Time such as \"2026-03-04 12:00\"; the beginning unless given")
        ->type_name("TIME");
    command->add_option("--to", FTo, "Time; the end unless given")->type_name("TIME");
    command->callback([this] { FStatus = CutCommand(FFile, FFrom, FTo, FOut, FConsole); });
  }

  void AddNotes() {
    CLI::App* command = FApp.add_subcommand("notes", "Print the notes of a recording as labels, or take labels in.");
    AddFile(command);
    CLI::Option* to =
        command->add_option("--to", FOut, "File to write: labels, or a table of events where its name ends with .tsv")
            ->type_name("OUT");
    command->add_option("--from", FFrom, "File of labels, or table of events, that become notes")
        ->type_name("LABELS")
        ->excludes(to);
    command->callback([this] { FStatus = NotesCommand(FFile, FOut, FFrom, FConsole); });
  }

  void AddFleet() {
    CLI::App* command = FApp.add_subcommand("fleet", "Sum up many recordings in one file of tables.");
    CLI::Option* given = command->add_option("FILE|FOLDER", FFleet.given, "Recordings, or folders with recordings");
    command->add_option("--to", FFleet.out, "File to write; files that it has already are read again only if changed")
        ->required()
        ->type_name("OUT");
    command->add_option("--format", FFleet.format, "Unless given that of OUT; of a new one by its ending; else sqlite")
        ->check(CLI::IsMember({"sqlite", "csv", "jsonl"}))
        ->type_name("NAME");
    CLI::Option* from =
        command->add_option("--files-from", FFleet.filesFrom, "File with more paths, a line each; - is standard input")
            ->type_name("LIST");
    command->add_flag("-0,--null", FFleet.isNulSeparated, "The paths of that file end with a NUL instead of a line");
    AddNumber(command, "--jobs", FFleet.jobs, "Processes that read at the same time, a core each; 1 unless given");
    const auto parseShard = [this](const std::string& text) {
      const std::size_t slash = std::min(text.find('/'), text.size());
      FFleet.shard = ParseNumber<std::size_t>("--shard", text.substr(0, slash), "is I/N, each");
      FFleet.shardCount =
          ParseNumber<std::size_t>("--shard", text.substr(std::min(slash + 1, text.size())), "is I/N, each");
      if (FFleet.shard == 0 || FFleet.shard > FFleet.shardCount) throw CLI::ValidationError("--shard is 1/N … N/N.");
    };
    command->add_option_function<std::string>("--shard", parseShard, "Only every N-th recording, from the I-th on")
        ->type_name("I/N");
    command->add_flag("--analysis", FFleet.analysis, "Also pulse, direction and drop height of each event");
    command->add_option("--limits", FFleet.limits, "Limit profile, or a settings.ini: also the verdict by these limits")
        ->type_name("FILE.ini");
    command->add_flag("--merge", FFleet.isMerge, "The files are such tables; put them together")->excludes(from);
    command->callback([this, given, from] {
      if (given->empty() && from->empty()) {
        throw CLI::ValidationError(FFleet.isMerge ? "There is no table to merge."
                                                  : "There is no FILE and no --files-from.");
      }
      if (FFleet.jobs == 0) throw CLI::ValidationError("--jobs is 1 or more.");
      FFleet.jobs = std::min<std::size_t>(FFleet.jobs, 256);
      FStatus = FleetCommand(FFleet, FConsole);
    });
  }

  void AddMake() {
    CLI::App* command = FApp.add_subcommand("make", "Write a recording from a description and a table of records.");
    command
        ->add_option("SOURCE", FFile,
                     "Description: a JSON object with \"startTime\" (days since 1899-12-30), "
                     "\"channels\" (names), \"records\" (path of a CSV file with a column time_ms and one for each "
                     "channel; an empty cell is no value, END the end of an event) and, if wanted, \"mission\" "
                     "(header fields by name) and \"creator\"")
        ->required();
    command->add_option("OUT", FOut, "Recording to write")->required();
    command->callback([this] { FStatus = MakeCommand(FFile, FOut, FConsole); });
  }

  void AddDemo() {
    CLI::App* command = FApp.add_subcommand("demo", "Write a synthetic mission of ten days.");
    command->add_option("OUT", FOut, "Recording to write")->required();
    AddNumber(command, "--events", FDemo.events, "Shock events; 300 unless given");
    AddNumber(command, "--samples", FDemo.samples, "Samples of each event; as many as 0.1 to 0.6 s take unless given");
    AddNumber(command, "--sensors", FDemo.readings, "Readings of each slow sensor; 14400 unless given");
    AddNumber(command, "--seed", FDemo.seed, "Another seed makes another mission; 1 unless given");
    command->callback([this] { FStatus = DemoCommand(FOut, FDemo, FConsole); });
  }

  static std::vector<std::string> TableNames() {
    std::vector<std::string> names;
    for (const auto& [name, table] : kTables) names.emplace_back(name);
    names.emplace_back(kAnalysisTable);
    return names;
  }

  void AddFile(CLI::App* command) { command->add_option("FILE", FFile, "Recording")->required(); }

  template <class T>
  static T ParseNumber(const std::string& option, const std::string& text, std::string_view takes) {
    if (const auto number = NumberIn<T>(text)) return *number;
    throw CLI::ValidationError(
        fmt::format("{} {} a whole number from 0 to {}.", option, takes, std::numeric_limits<T>::max()));
  }

  template <class T>
  static CLI::Option* AddNumber(CLI::App* command, const std::string& option, T& value, const std::string& help) {
    const auto parse = [option, &value](const std::string& text) { value = ParseNumber<T>(option, text, "takes"); };
    return command->add_option_function<std::string>(option, parse, help)->type_name("N");
  }

  // A finite number above a bound, with a point whatever the locale.
  static double ParseReal(const std::string& option, const std::string& text, double above) {
    const auto number = NumberIn<double>(text);
    if (number && *number > above && std::isfinite(*number)) return *number;
    throw CLI::ValidationError(fmt::format("{} takes numbers above {}.", option, above));
  }

  template <class T>
  static CLI::Option* AddReal(CLI::App* command, const std::string& option, T& value, double above,
                              const std::string& help) {
    const auto parse = [option, above, &value](const std::string& text) { value = ParseReal(option, text, above); };
    return command->add_option_function<std::string>(option, parse, help)->type_name("NUMBER");
  }

  // One of the named values, the first unless given. A name may begin with the prefix.
  template <class T, std::size_t N>
  static void AddChoice(CLI::App* command, const std::string& option, T& value,
                        const std::array<std::pair<std::string_view, T>, N>& choices, std::string_view prefix = {}) {
    std::array<std::string_view, N> names;
    std::ranges::transform(choices, names.begin(), &std::pair<std::string_view, T>::first);
    const auto parse = [option, names, prefix, &value, &choices](const std::string& text) {
      const std::string_view name = std::string_view(text).substr(text.starts_with(prefix) ? prefix.size() : 0);
      const auto found = std::ranges::find(names, name);
      if (found == names.end()) {
        throw CLI::ValidationError(fmt::format("{} is one of {}.", option, fmt::join(names, ", ")));
      }
      value = choices[static_cast<std::size_t>(found - names.begin())].second;
    };
    command->add_option_function<std::string>(option, parse, fmt::format("{} unless given", names.front()))
        ->type_name(ChoiceType(names));
  }

  // How the help writes what a value can be; the completion of the shell reads it there.
  template <std::size_t N>
  static std::string ChoiceType(const std::array<std::string_view, N>& names) {
    return fmt::format("NAME:{{{}}}", fmt::join(names, ","));
  }

  const TConsole& FConsole;
  TStatus FStatus = TStatus::Done;
  CLI::App FApp{"Reads .kshock recordings of shock and environment loggers.", "kshock"};
  std::vector<std::string> FFiles;
  std::string FFile, FOut, FTable, FIndex, FFrom, FTo;
  std::optional<std::string> FLimits;
  std::size_t FEvent = 0;
  TSpectrumType FSpectrumType = kSpectrumTypes.front().second;
  TWeightingWindow FWindow = kWeightingWindows.front().second;
  std::size_t FRows = std::numeric_limits<std::size_t>::max();
  TExportRequest FExport;
  TSrsRequest FSrs;
  TFleetRequest FFleet;
  std::optional<std::size_t> FPulseEvent;
  TDemoSize FDemo;
};

}  // namespace

int RunKshock(const std::vector<std::string>& arguments, const TConsole& console) {
  try {
    return static_cast<int>(TCommandLine(console).Run(arguments));
  } catch (const EOutputLost& error) {
    console.err(fmt::format("kshock: standard output: {}\n", error.what()));
    return static_cast<int>(TStatus::CannotWrite);
  } catch (const std::exception& error) {
    console.err(fmt::format("kshock: {}\n", Printable(Describe(error))));
  }
  return static_cast<int>(TStatus::CannotRead);
}
