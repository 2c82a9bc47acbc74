#include "cli/Arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <regex>

#include "cli/Names.h"
#include "cli/Verbs.h"
#include "link/LinkState.h"
#include "values/Number.h"

namespace oriolemark {
namespace {

constexpr int kHighestGpibAddress = 30;
constexpr int kMostUsbInstruments = 127;
constexpr double kShortestInterval = 0.1;    // s
constexpr double kLongestInterval = 864000;  // s, ten days

constexpr const char* kFooter =
    "Exit codes: 0 success, 1 a verdict is Fail, 2 wrong usage, 3 no link, 4 refused by the\n"
    "instrument, 5 a file could not be read or written, 130 interrupted.\n"
    "\"oriolemark-cli VERB --help\" describes a verb.";

std::string WholeNumber(const std::string& text, int highest) {
  if (WholeNumberInReply(text, 0, highest) && text.find_first_not_of("0123456789") == text.npos) {
    return {};
  }
  return "\"" + text + "\" is no number from 0 to " + std::to_string(highest) + ".";
}

// Returns what is wrong with the text, or nothing.
std::string ReadLink(const std::string& text, LinkChoice& link) {
  const std::size_t colon = text.find(':');
  const std::string kind = text.substr(0, colon);
  std::string rest = colon == std::string::npos ? "" : text.substr(colon + 1);
  const auto number = [&](int type, int highest) {
    link.type = type;
    std::string wrong = rest.empty() ? "" : WholeNumber(rest, highest);
    if (wrong.empty() && !rest.empty()) link.number = WholeNumberInReply(rest, 0, highest);
    return wrong;
  };
  if (kind == "gpib") return number(kLinkGpib, kHighestGpibAddress);
  if (kind == "usb") return number(kLinkUsb, kMostUsbInstruments);
  if (kind != "serial") return "\"" + kind + "\" is no link. Choose serial, gpib or usb.";
  link.type = kLinkRS232;
  const std::size_t at = rest.rfind('@');
  if (at != std::string::npos) {
    link.baud = rest.substr(at + 1);
    rest.resize(at);
    const bool whole =
        !link.baud.empty() && link.baud.find_first_not_of("0123456789") == std::string::npos;
    if (!whole) return "\"" + link.baud + "\" is no baud rate.";
  }
  link.device = rest;
  return {};
}

std::string ReadInterval(const std::string& text, Call& call) {
  static const std::map<std::string, double> kUnits{{"ms", 0.001}, {"s", 1},    {"", 1},
                                                    {"m", 60},     {"min", 60}, {"h", 3600}};
  const std::size_t end = text.find_first_not_of("0123456789.");
  const auto number = NumberInReply(text.substr(0, end));
  const auto unit = kUnits.find(end == std::string::npos ? "" : text.substr(end));
  if (!number || unit == kUnits.end())
    return "\"" + text + "\" is no time. Write 500ms, 10s, 5m or 1h.";
  const double seconds = *number * unit->second;
  if (!(seconds >= kShortestInterval && seconds <= kLongestInterval)) {
    return "The time has to be 100ms to 240h.";
  }
  call.every = Milliseconds(std::llround(seconds * 1000));
  return {};
}

std::string ReadZoom(const std::string& text, Call& call) {
  constexpr double kLeast = 50;
  constexpr double kMost = 500;
  const std::string number = text.ends_with('%') ? text.substr(0, text.size() - 1) : text;
  const auto percent = NumberInReply(number);
  if (!percent || *percent < kLeast || *percent > kMost) return "The zoom has to be 50% to 500%.";
  call.zoom = NumberText(*percent) + "%";
  return {};
}

// The parser's own form: a check that returns what is wrong.
template <typename Read, typename Target>
CLI::Validator Checked(Read read, Target& target) {
  return {[read, &target](const std::string& text) { return read(text, target); }, ""};
}

class Parser {
 public:
  explicit Parser(const std::string& version) {
    app_.require_subcommand(1)->footer(kFooter);
    app_.set_version_flag("--version", "oriolemark-cli " + version, "Shows the version");
    app_.set_help_flag("-h,--help", "Shows this text");
    const auto label = [this](const char* ours, const char* shown) {
      app_.get_formatter()->label(ours, shown);
    };
    label("SUBCOMMAND", "VERB");
    label("SUBCOMMANDS", "VERBS");
    label("Positionals", "Arguments");
    label("REQUIRED", "");
    AddCommon(app_);
    for (const Verb& verb : Verbs()) AddVerb(app_, verb);
    CLI::App& watch = *app_.add_subcommand("watch", "Runs a verb again and again");
    watch.group("Verbs");
    watch.require_subcommand(1)->fallthrough();
    watch.add_option("--every", every_, "Time from one start to the next, such as 10s")
        ->required()
        ->type_name("TIME")
        ->check(Checked(ReadInterval, call_));
    watch.add_option("--count", call_.count, "Number of lines; without it, until interrupted")
        ->type_name("N")
        ->check(CLI::Range(1, std::numeric_limits<int>::max()).description(""));
    watch.footer(
        "Prints one line for each reading, CSV unless --json is given. Each begins with the time.\n"
        "If the link is lost, says so and tries again after 1 s, 2 s, 4 s and so on up to a "
        "minute.\n"
        "A reading that failed is made again, so that no line is missing.");
    for (const Verb& verb : Verbs()) {
      if (verb.watched != Watched::No) AddVerb(watch, verb);
    }
  }

  std::variant<Call, Answer> Read(const std::vector<std::string>& arguments) {
    try {
      // The parser takes the last argument first.
      app_.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::CallForHelp&) {
      const std::vector<std::string> others = app_.remaining(true);
      const auto unknown = std::ranges::find_if_not(
          others, [](const std::string& word) { return word.starts_with('-'); });
      if (app_.get_subcommands().empty() && unknown != others.end()) {
        return Answer{ExitCode::Usage, UnknownVerb(*unknown, false)};
      }
      return Answer{ExitCode::Success, HelpOf(app_)};
    } catch (const CLI::CallForVersion&) {
      return Answer{ExitCode::Success, app_.version() + "\n"};
    } catch (const CLI::ParseError& error) {
      return Answer{ExitCode::Usage, Explained(error)};
    }
    const bool empty = std::ranges::any_of(arguments, &std::string::empty);
    if (empty) return Answer{ExitCode::Usage, "An argument is empty."};
    return Whole();
  }

 private:
  void AddCommon(CLI::App& app) {
    app.add_option("--link", link_,
                   "serial:DEVICE[@BAUD], gpib:ADDRESS or usb:NUMBER (the first is 0);\n"
                   "without it, the link that is chosen in the program with windows")
        ->type_name("LINK")
        ->check(Checked(ReadLink, choice_));
    app.add_flag("--sim", call_.sim, "Starts a simulated instrument for this call");
    app.add_flag("--json", json_, "Prints JSON");
    app.add_flag("--csv", csv_, "Prints CSV");
    app.add_flag("--overwrite", call_.overwrite, "Replaces a file that exists");
  }

  void AddVerb(CLI::App& parent, const Verb& verb) {
    CLI::App& app = *parent.add_subcommand(verb.name, verb.summary);
    app.group("Verbs");
    app.fallthrough()->footer(
        std::string(verb.help) + (*verb.help == '\0' ? "" : "\n\n") +
        "The options of \"oriolemark-cli --help\" may come behind the verb too.");
    app.callback([this, &verb] { call_.verb = &verb; });
    AddArguments(app, verb);
    const std::string name = verb.name;
    if (name == "measure") {
      app.add_option("--limits", call_.limits, "Judges by the limits of a data sheet's item")
          ->type_name("FILE.orm[:ITEM]");
    }
    if (name == "convert") {
      app.add_option("--item", call_.item, "Converts this item only")->type_name("NAME");
    }
    if (name == "wave") {
      app.add_option("--zoom", zoom_, "Size of a picture, 50% to 500% (150% without it)")
          ->type_name("PERCENT")
          ->check(Checked(ReadZoom, call_));
      app.add_flag("--monochrome", call_.monochrome, "Draws a picture in black on white");
      app.add_flag("--no-grid", call_.noGrid, "Draws a picture without the grid");
    }
  }

  void AddArguments(CLI::App& app, const Verb& verb) {
    const auto addFile = [this, &app](const char* text) {
      return app.add_option("FILE", call_.file, text)->type_name("");
    };
    const auto addChannel = [this, &app](std::vector<std::string> channels, const char* text) {
      app.add_option("CHANNEL", call_.channel, text)
          ->required()
          ->type_name("")
          ->transform(CLI::IsMember(std::move(channels), CLI::ignore_case).description(""));
    };
    switch (verb.takes) {
      case Takes::Nothing:
        break;
      case Takes::Names:
      case Takes::NamesNeeded:
        app.add_option("NAME", call_.names, "See below")
            ->required(verb.takes == Takes::NamesNeeded)
            ->type_name("");
        break;
      case Takes::InFile:
        app.add_option("INPUT", call_.input, "The file to read")->required()->type_name("");
        break;
      case Takes::OutFile:
        addFile("The file to write")->required();
        break;
      case Takes::Channel:
        addChannel({"ch1", "ch2"}, "ch1 or ch2");
        addFile("The file to write; standard output without it, or with -");
        break;
      case Takes::ChannelOrBoth:
        addChannel({"ch1", "ch2", "both"}, "ch1, ch2 or both");
        addFile("The file to write; standard output without it, or with -");
        break;
    }
    if (verb.takes == Takes::InFile && verb.needs == Needs::Nothing) {
      addFile("The file to write; standard output without it, or with -");
    }
  }

  // The help of the verb that was named, or of the program.
  static std::string HelpOf(CLI::App& app) {
    CLI::App* named = &app;
    while (!named->get_subcommands().empty()) named = named->get_subcommands().front();
    return named->help(named == &app ? "" : app.get_name()) + "\n";
  }

  std::string Explained(const CLI::ParseError& error) {
    const bool watches = app_.got_subcommand("watch");
    CLI::App& parent = watches ? *app_.get_subcommand("watch") : app_;
    const bool hasVerb = !parent.get_subcommands().empty();
    for (const std::string& unknown : app_.remaining(true)) {
      if (unknown == "--every" || unknown == "--count") {
        return unknown + " belongs to a watch: oriolemark-cli watch VERB --every TIME.";
      }
      const std::vector<std::string> options = OptionNames();
      if (std::ranges::count(options, unknown) != 0) {
        return unknown + " belongs to another verb, or has to come behind its verb.";
      }
      if (unknown.starts_with('-')) {
        return "There is no option \"" + unknown + "\"." + DidYouMean(unknown, options);
      }
      if (!hasVerb) return UnknownVerb(unknown, watches);
    }
    if (!hasVerb) return "A verb is missing. \"oriolemark-cli --help\" lists them.";
    return error.what();
  }

  static std::string UnknownVerb(const std::string& unknown, bool watches) {
    std::vector<std::string> verbs;
    for (const Verb& verb : Verbs()) {
      if (!watches || verb.watched != Watched::No) verbs.emplace_back(verb.name);
    }
    if (!watches) verbs.emplace_back("watch");
    const std::string known = watches ? "No verb that can be watched is \"" : "There is no verb \"";
    return known + unknown + "\"." + DidYouMean(unknown, verbs) +
           " \"oriolemark-cli --help\" lists the verbs.";
  }

  // Of the program and of all verbs.
  std::vector<std::string> OptionNames() {
    std::vector<std::string> names;
    const auto add = [&names](const CLI::App& app) {
      for (const CLI::Option* option : app.get_options()) {
        if (!option->get_positional()) names.push_back(option->get_name());
      }
    };
    add(app_);
    for (const CLI::App* verb : app_.get_subcommands({})) add(*verb);
    return names;
  }

  // Settles what no single argument shows.
  std::variant<Call, Answer> Whole() {
    const auto wrong = [](const std::string& text) { return Answer{ExitCode::Usage, text}; };
    if (json_ && csv_) return wrong("Choose --json or --csv.");
    if (!link_.empty()) call_.link = choice_;
    if (call_.sim && call_.link && !call_.link->device.empty()) {
      return wrong("--sim makes a serial line of its own. Write --link serial or no link.");
    }
    if (call_.file == "-" && call_.verb->takes == Takes::OutFile) {
      return wrong("This verb writes a file. Give its name.");
    }
    if (call_.file == "-") call_.file.clear();
    if (!call_.file.empty()) {
      const std::string extension = ExtensionOf(call_.file);
      if ((json_ && extension != ".json") || (csv_ && extension != ".csv")) {
        return wrong("The extension of the file chooses its form.");
      }
      json_ = extension == ".json";
      csv_ = extension == ".csv";
    }
    if (json_) call_.format = Format::Json;
    if (csv_) call_.format = Format::Csv;
    if (!call_.every) return call_;
    if (!call_.file.empty()) return wrong("A watch prints its lines. It writes no file.");
    if (call_.format == Format::Text) call_.format = Format::Csv;
    if (call_.format == Format::Csv && call_.verb->watched == Watched::AsJson) {
      return wrong("Samples do not fit on one line of CSV. Watch them with --json.");
    }
    return call_;
  }

  CLI::App app_{"Works a TX5000 oscilloscope from scripts.", "oriolemark-cli"};
  Call call_;
  LinkChoice choice_;
  std::string link_;
  std::string every_;
  std::string zoom_;
  bool json_ = false;
  bool csv_ = false;
};

}  // namespace

std::variant<Call, Answer> ReadArguments(const std::vector<std::string>& arguments,
                                         const std::string& version) {
  std::vector<std::string> words = arguments;
  // Users of other programs type "help VERB".
  if (!words.empty() && words[0] == "help") {
    std::rotate(words.begin(), words.begin() + 1, words.end());
    words.back() = "--help";
  }
  return Parser(version).Read(words);
}

}  // namespace oriolemark
