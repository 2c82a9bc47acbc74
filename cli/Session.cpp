#include "cli/Session.h"

#include "cli/Rendering.h"
#include "platform/Utf8.h"

namespace oriolemark {
namespace {

constexpr const char* kDrivers = "Drivers";
constexpr const char* kLinkSection = "IO Settings";
constexpr const char* kStartSection = "General";
constexpr const char* kStartRows[] = {"StartupCheckHardware", "StartupLoadSheet",
                                      "StartupLoadCtrl"};

}  // namespace

SessionSettings::SessionSettings(SettingsStore& below, const std::optional<LinkChoice>& link)
    : below_(below) {
  // The call decides when to connect, and opens no document of the user.
  for (const char* row : kStartRows) own_[{kStartSection, row}] = "False";
  if (!link) return;
  own_[{kLinkSection, "ScopeIOType"}] = std::to_string(link->type);
  if (!link->baud.empty()) own_[{kLinkSection, "BaudRate"}] = link->baud;
  if (link->type == kLinkGpib && link->number) {
    own_[{kLinkSection, "GPIB_Addr"}] = std::to_string(*link->number);
  }
  if (!link->library.empty()) {
    own_[{kDrivers, link->type == kLinkGpib ? "GpibLibrary" : "UsbLibrary"}] = link->library;
  }
  if (!link->device.empty()) {
    own_[{kLinkSection, "COM_Port"}] = "1";
    own_[{kDrivers, "COM1"}] = link->device;
  }
}

std::optional<std::string> SessionSettings::Read(const std::string& section,
                                                 const std::string& key) {
  const auto own = own_.find({section, key});
  return own == own_.end() ? below_.Read(section, key) : own->second;
}

MessageAnswer LinePrompts::Show(const Message& message) {
  // The title says what was being done, unless it is the program's own.
  const std::string title = message.title == kApplicationTitle ? "" : message.title + ": ";
  show_(title + Utf8Of(message.text) + message.systemText);
  return message.buttons == MessageButtons::Ok ? MessageAnswer::Ok : MessageAnswer::Cancel;
}

Session::Session(const Desk& desk, const Call& call)
    : desk_(desk),
      settings_(desk.settings, call.link),
      devices_(desk.makeDevices(waiting_, settings_)),
      module_(std::make_unique<MainModule>(
          Platform{desk.events, waiting_, prompts_, settings_, *devices_.serial, *devices_.gpib,
                   *devices_.usb, *devices_.colors, desk.today, desk.makeCanvas, desk.version,
                   help_, "", desk.syncFile, "", [] { return std::make_unique<NoReport>(); }, "",
                   [] { return std::string(); }})) {
  module_->main.Load();
  if (call.link && call.link->type == kLinkUsb && call.link->number) {
    module_->preferences.link.UsbDevice = *call.link->number;
  }
  ProgressBar& bar = module_->progress.ProgressBar1;
  if (desk.showsProgress) bar.onChanged = [this, &bar] { ShowProgress(bar.Value()); };
}

Session::~Session() {
  waiting_.BeginClosing();
  module_->panel.Unload();
  module_->main.Unload();
}

bool Session::Connect() {
  module_->Scope().ConnectScope();
  if (!module_->Link().ScopeConnected) {
    End();
    return false;
  }
  module_->Scope().onIncomplete = [this] {
    Fail("The instrument did not answer in time, or not to the end.");
  };
  return true;
}

void Session::End() {
  ClearProgress();
  waiting_.BeginClosing();
}

// What fails after the first failure, fails because of it.
void Session::Fail(const std::string& text) {
  if (Failed()) return;
  ClearProgress();
  desk_.printError(ErrorLine(text));
  End();
}

void Session::ShowProgress(double percent) {
  const int shown = static_cast<int>(percent);
  if (shown <= shownPercent_ || Failed()) return;
  shownPercent_ = shown;
  desk_.printError("\r" + std::to_string(shown) + " %");
}

void Session::ClearProgress() {
  if (std::exchange(shownPercent_, 0) != 0) desk_.printError("\r     \r");
}

ItemView& Session::Item(ItemKind kind) {
  DataSheet& sheet = module_->sheet;
  FileFunc& files = module_->browser.files;
  const ItemKindRow& row = RowOf(kind);
  if (sheet.*row.count == 0) files.Add(kind);
  waiting_.WaitUntil([&] { return row.record(sheet, 0).ViewOpen; });
  return *files.View(kind, 0);
}

}  // namespace oriolemark
