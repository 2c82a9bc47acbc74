#include "shell/SoftwareSetting.h"

#include <limits>
#include <variant>
#include <vector>

#include "values/Number.h"

namespace oriolemark {
namespace {

using Field = std::variant<bool*, int*, std::string*, double*>;

struct Row {
  const char* section;
  const char* key;
  Field field;
};

constexpr const char* kWindowSection = "Settings";

// The rows, in the order of reading and writing.
std::vector<Row> Rows(Preferences& preferences) {
  StartupSettings& startup = preferences.startup;
  LinkSettings& link = preferences.link;
  RefreshSettings& refresh = preferences.refresh;
  UnitRect& window = preferences.mainWindow;
  return {
      {"General", "StartupCheckHardware", &startup.StartupCheckHardware},
      {"General", "StartupLoadSheet", &startup.StartupLoadSheet},
      {"General", "StartupLoadCtrl", &startup.StartupLoadCtrl},
      {"IO Settings", "ScopeIOType", &link.ScopeIOType},
      {"IO Settings", "COM_Port", &link.COM_Port},
      {"IO Settings", "BaudRate", &link.BaudRate},
      {"IO Settings", "GPIB_Addr", &link.GPIB_Addr},
      {"Refresh", "Refresh Type", &refresh.RefreshType},
      {"Refresh", "Refresh Interval", &refresh.RefreshInterval},
      {kWindowSection, "MainLeft", &window.left},
      {kWindowSection, "MainTop", &window.top},
      {kWindowSection, "MainWidth", &window.width},
      {kWindowSection, "MainHeight", &window.height},
  };
}

void Parse(const std::string& text, bool* field) {
  if (text == "True" || text == "1" || text == "-1") *field = true;
  if (text == "False" || text == "0") *field = false;
}

void Parse(const std::string& text, int* field) {
  constexpr int kLowest = std::numeric_limits<int>::min();
  constexpr int kHighest = std::numeric_limits<int>::max();
  *field = WholeNumberInReply(text, kLowest, kHighest).value_or(*field);
}

void Parse(const std::string& text, double* field) {
  *field = NumberInReply(text).value_or(*field);
}

void Parse(const std::string& text, std::string* field) {
  *field = text;
}

std::string Format(const bool* field) {
  return *field ? "True" : "False";
}
std::string Format(const int* field) {
  return std::to_string(*field);
}
std::string Format(const double* field) {
  return NumberText(*field);
}
std::string Format(const std::string* field) {
  return *field;
}

}  // namespace

void LoadPreferences(SettingsStore& store, Preferences& preferences) {
  for (const Row& row : Rows(preferences)) {
    const auto text = store.Read(row.section, row.key);
    if (text) std::visit([&text](auto* field) { Parse(*text, field); }, row.field);
  }
  preferences.link.UsbDevice = 0;
}

void SavePreferences(SettingsStore& store, const Preferences& preferences, WindowRows windowRows) {
  Preferences written = preferences;
  for (const Row& row : Rows(written)) {
    const bool isWindow = row.section == std::string(kWindowSection);
    if (isWindow && windowRows == WindowRows::Skipped) continue;
    store.Write(row.section, row.key,
                std::visit([](auto* field) { return Format(field); }, row.field));
  }
}

}  // namespace oriolemark
