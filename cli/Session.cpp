#include "cli/Session.h"

#include "cli/Rendering.h"
#include "platform/Utf8.h"

namespace oriolemark {
namespace {

constexpr const char* kDrivers = "Drivers";
constexpr const char* kStartSection = "General";
constexpr const char* kStartRows[] = {"StartupCheckHardware", "StartupLoadSheet",
                                      "StartupLoadCtrl"};

// What the choice leaves out stays as it is.
void Choose(const LinkChoice& choice, LinkSettings& link) {
  link.ScopeIOType = choice.type;
  if (!choice.baud.empty()) link.BaudRate = choice.baud;
  if (!choice.device.empty()) link.COM_Port = 1;
  if (choice.number) (choice.type == kLinkGpib ? link.GPIB_Addr : link.UsbDevice) = *choice.number;
}

}  // namespace

SessionSettings::SessionSettings(SettingsStore& below, const std::optional<LinkChoice>& link)
    : below_(below) {
  // The call decides when to connect, and opens no document of the user.
  for (const char* row : kStartRows) own_[{kStartSection, row}] = "False";
  if (!link) return;
  if (!link->library.empty()) {
    own_[{kDrivers, link->type == kLinkGpib ? "GpibLibrary" : "UsbLibrary"}] = link->library;
  }
  if (!link->device.empty()) own_[{kDrivers, "COM1"}] = link->device;
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
  if (call.link) Choose(*call.link, module_->preferences.link);
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

// Later failures follow from the first one and are not printed.
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
