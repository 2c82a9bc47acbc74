#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "cli/Call.h"
#include "cli/Desk.h"
#include "shell/MainModule.h"

namespace oriolemark {

// The settings of the program with windows, with those of a call over them. Nothing is written.
class SessionSettings : public SettingsStore {
 public:
  SessionSettings(SettingsStore& below, const std::optional<LinkChoice>& link);
  std::optional<std::string> Read(const std::string& section, const std::string& key) override;
  void Write(const std::string&, const std::string&, const std::string&) override {}

 private:
  SettingsStore& below_;
  std::map<std::pair<std::string, std::string>, std::string> own_;
};

// Message boxes as lines on standard error. A call answers no question here: no file dialog opens,
// and nothing is confirmed.
class LinePrompts : public Prompts {
 public:
  explicit LinePrompts(std::function<void(const std::string& text)> show)
      : show_(std::move(show)) {}
  MessageAnswer Show(const Message& message) override;
  std::string AskFileName(const FileQuestion&) override { return {}; }
  void ShowPrinterDialog(const std::string&) override {}

 private:
  std::function<void(const std::string& text)> show_;
};

// The program without its windows, from the start to the first failure. Each verb works the same
// records and commands as the user's click, so the instrument is sent the same bytes. Once a
// message has been shown, or a reply is missing, every wait and query returns at once. A session is
// used once; a new one begins with a new connection.
class Session {
 public:
  Session(const Desk& desk, const Call& call);
  // Sends a connected instrument the closing command.
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // Makes the handshake. Returns whether the instrument answered it.
  bool Connect();
  // Prints the reason and ends the session. Later failures are not printed.
  void Fail(const std::string& text);
  // Ends every wait. The session counts as failed.
  void End();
  bool Failed() const { return waiting_.Closing(); }

  MainModule& Program() { return *module_; }
  const LinkSettings& Link() const { return module_->preferences.link; }

  // Runs the Controller's edit of the node with these labels.
  void EditNode(const std::string& labels) {
    module_->controller.PraseCtrlList(std::string(kCtrlRootLabel) + "\\" + labels);
  }
  // The view of the sheet's only item of this kind. Adds the item at the first call.
  ItemView& Item(ItemKind kind);
  // Serves what is pending, an interrupt for instance.
  void ServeEvents() { waiting_.DoEvents(); }
  // Takes the progress from the terminal's line.
  void ClearProgress();
  // Asks for a reply. An empty one ends the session.
  std::string Ask(const std::string& command) { return module_->Scope().AskScope(command); }

 private:
  void ShowProgress(double percent);

  // No manual and no printer.
  struct NoHelp : HelpViewer {
    std::optional<std::string> Open(const std::string&, HelpCommand, const std::string&) override {
      return std::nullopt;
    }
  };
  struct NoReport : PageReport {
    void StartReport() override {}
    void StartPage(float, float) override {}
    void AddPicture(const InchRect&, const std::string&) override {}
    std::optional<std::string> ShowPreview() override { return std::nullopt; }
    std::optional<std::string> SendToPrinter() override { return std::nullopt; }
  };

  const Desk& desk_;
  Waiting waiting_{desk_.events};
  SessionSettings settings_;
  LinePrompts prompts_{[this](const std::string& text) { Fail(text); }};
  NoHelp help_;
  Devices devices_;
  std::unique_ptr<MainModule> module_;
  int shownPercent_ = 0;  // 0 if the line is empty
};

}  // namespace oriolemark
