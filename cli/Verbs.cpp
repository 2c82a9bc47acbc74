#include "cli/Verbs.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

#include "cli/Job.h"
#include "cli/Names.h"
#include "link/StringRES.h"
#include "panel/PanelKeys.h"

namespace oriolemark {
namespace {

// Asks the drivers, which open no device for that.
Result RunList(Job& job) {
  Waiting waiting(job.desk.events);
  const Devices devices = job.desk.makeDevices(waiting, job.desk.settings);
  Result result{.parts = std::vector<Result>()};
  const auto add = [&result](const std::string& link, const std::string& description) {
    result.text += (result.text.empty() ? "" : "\n") + link + "  " + description;
    result.parts->push_back({.values = {{"Link", link}, {"Description", description}}});
  };
  for (const ListedPort& port : devices.serial->ListPorts()) {
    add("serial:" + port.device, port.description.empty() ? "Serial port" : port.description);
  }
  const int instruments = devices.usb->GetDeviceNum();
  for (int i = 0; i < instruments; ++i) add("usb:" + std::to_string(i), devices.usb->Meaning());
  add("gpib:ADDRESS", devices.gpib->Meaning());
  return result;
}

Result RunIdentify(Job& job) {
  constexpr std::array<const char*, 4> kFields{"Maker", "Model", "Serial number", "Firmware"};
  std::string rest = job.session->Ask(kIdentify);
  Result result;
  for (const char* field : kFields) {
    const std::size_t comma = rest.find(',');
    result.values.push_back({field, rest.substr(0, comma)});
    rest = comma == std::string::npos ? "" : rest.substr(comma + 1);
  }
  return result;
}

// The commands of the group Running Control, by the names of their nodes.
template <const auto& Label>
Result RunCommand(Job& job) {
  job.session->EditNode(std::string(kGroupLabels[ctrl_group::kRunningControl]) + "\\" + Label);
  return {};
}

std::string KeyName(const PanelKey& key) {
  return Plain(key.keyword);
}

// Nothing, and a message, if a name fits no key.
std::optional<std::vector<const PanelKey*>> KeysOf(const Job& job) {
  std::vector<const PanelKey*> keys;
  std::vector<std::string> names;
  for (const PanelKey& key : kPanelKeys) {
    names.push_back(KeyName(key));
    names.emplace_back(key.meaning);
  }
  for (const std::string& name : job.call.names) {
    const auto named = [plain = Plain(name)](const PanelKey& key) {
      return KeyName(key) == plain || Plain(key.meaning) == plain;
    };
    const auto* const key = std::ranges::find_if(kPanelKeys, named);
    if (key == kPanelKeys.end()) {
      job.Explain("There is no key \"" + name + "\"." + DidYouMean(name, names));
      return std::nullopt;
    }
    keys.push_back(key);
  }
  return keys;
}

ExitCode CheckKeys(Job& job) {
  return KeysOf(job) ? ExitCode::Success : ExitCode::Usage;
}

Result RunKey(Job& job) {
  for (const PanelKey* key : KeysOf(job).value_or(std::vector<const PanelKey*>())) {
    if (job.session->Failed()) break;
    job.session->Program().keys.Keys.Click(*key);
    job.session->ServeEvents();
  }
  return {};
}

std::string KeyList() {
  std::string list = "Keys:\n";
  for (const PanelKey& key : kPanelKeys) {
    std::string name = KeyName(key);
    name.resize(std::max<std::size_t>(name.size() + 1, 14), ' ');
    list += "  " + name + key.meaning + "\n";
  }
  return list + "The name or its meaning names the key. The instrument sends no answer to a key.";
}

constexpr const char* kSettingNames =
    "A name is a label of the Controller with its group, such as \"CH1 Volt/Div\", or without it\n"
    "if there is only one, or the path on the wire, such as :CHANNEL1:RANGE. Case, blanks and\n"
    "signs other than + and - do not matter. \"oriolemark-cli get\" prints all names. A value is\n"
    "one that the Controller offers, or any time; without a unit it is in V, s, div or %.\n"
    "Example: oriolemark-cli set \"CH1 Volt/Div=500mV\" Delay=0.001 Grid=HALF";
constexpr const char* kReadings =
    "The extension chooses the form of the file: .csv, .json, .orm (a data sheet),\n";

}  // namespace

std::span<const Verb> Verbs() {
  static const std::string kKeyHelp = KeyList();
  static const std::string kWaveHelp =
      std::string(kReadings) +
      ".bmp or .png (the picture as its window draws it). Without FILE, --csv or --json print the\n"
      "samples. Example: oriolemark-cli wave ch1 wave.csv";
  static const std::string kTableHelp =
      std::string(kReadings) + ".txt or .xls (the text that its window exports). ";
  static const std::string kSamplesHelp =
      kTableHelp +
      "The times are those of the window's table:\n"
      "a record of 1200 samples has 100 a division, any other is taken to have 200.";
  static const std::string kMeasureHelp =
      kTableHelp +
      "Limits are set in the measure window of\n"
      "the program and saved with its data sheet. Example: oriolemark-cli measure ch1\n"
      "--limits line.orm:Supply";
  using enum Takes;
  using enum Watched;
  constexpr Needs kAlone = Needs::Nothing;
  constexpr Needs kLink = Needs::Instrument;
  static const Verb kVerbs[] = {
      {"list", Nothing, kAlone, No,
       "Lists what can be linked: serial ports, USB instruments, GPIB libraries", "",
       "Opens none of them.", RunList},
      {"identify", Nothing, kLink, Yes, "Prints maker, model, serial number and firmware", "", "",
       RunIdentify},
      {"get", Names, kLink, Yes, "Prints settings, all without a name", "", kSettingNames, RunGet,
       CheckGet},
      {"set", NamesNeeded, kLink, No, "Changes settings: NAME=VALUE...", "", kSettingNames, RunSet,
       CheckSet},
      {"download", OutFile, kLink, No, "Reads all settings into a control file", ".cfx .txt", "",
       RunDownload},
      {"upload", InFile, kLink, No, "Sends all settings of a control file", "",
       "The instrument sends no answer. \"oriolemark-cli get\" shows what it took.", RunUpload,
       CheckUpload},
      {"run", Nothing, kLink, No, "Starts the acquisition", "", "", RunRun},
      {"stop", Nothing, kLink, No, "Stops the acquisition", "", "", oriolemark::RunStop},
      {"autoset", Nothing, kLink, No,
       "Lets the instrument set itself, which takes 4 s, and reads all settings", "", "",
       RunCommand<kAutoSetLabel>},
      {"trigger50", Nothing, kLink, No, "Sets the trigger level to 50 % of the signal", "", "",
       RunCommand<kSetTrig50Label>},
      {"force", Nothing, kLink, No, "Forces a trigger", "", "", RunCommand<kForceTriggerLabel>},
      {"key", NamesNeeded, kLink, No, "Presses front keys, one after another", "", kKeyHelp.c_str(),
       RunKey, CheckKeys},
      {"wave", ChannelOrBoth, kLink, AsJson, "Reads a waveform", ".csv .json .orm .bmp .png",
       kWaveHelp.c_str(), RunWave, CheckWave},
      {"samples", Channel, kLink, AsJson, "Reads a table of samples", ".csv .json .orm .txt .xls",
       kSamplesHelp.c_str(), RunSamples},
      {"measure", Channel, kLink, Yes, "Reads the 18 automatic measurements",
       ".csv .json .orm .txt .xls", kMeasureHelp.c_str(), RunMeasure, CheckMeasure},
      {"screen", OutFile, kLink, No,
       "Copies the instrument's screen into FILE.bmp or FILE.png (USB)", ".bmp .png", "", RunScreen,
       CheckScreen},
      {"convert", InFile, kAlone, No, "Prints items of a data sheet, without an instrument",
       ".csv .json", "CSV holds one item. JSON holds all, unless --item names one.", RunConvert},
  };
  return kVerbs;
}

}  // namespace oriolemark
