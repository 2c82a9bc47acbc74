#pragma once

#include <string>

#include "datasheet/records/ItemKinds.h"
#include "link/LinkState.h"
#include "platform/Button.h"
#include "platform/Form.h"
#include "platform/Timer.h"
#include "platform/Waiting.h"
#include "transfers/TransferState.h"

namespace oriolemark {

// Whether a continuous refresh runs, for each kind of view, and the tick that all views share.
// RefreshTick is 0, or the interval (ms) of the timer that rang last.
struct RefreshFlags {
  bool WaveAutoRefresh = false;
  bool DataAutoRefresh = false;
  bool MeasureAutoRefresh = false;
  int RefreshTick = 0;

  bool& Of(ItemKind kind);
  bool OtherThan(ItemKind kind) const;
};

struct RefreshSettings {
  std::string RefreshType = "Single";  // anything else means continuous
  int RefreshInterval = 100;           // ms from the end of one reading to the start of the next
};

// What a refresh needs, the same for all views.
struct RefreshContext {
  EventSource& events;
  Waiting& waiting;
  Prompts& prompts;
  const LinkState& link;
  TransferState& transfer;
  RefreshFlags& flags;
  const RefreshSettings& settings;
};

inline constexpr const char* kRefreshFace = "Refresh";
inline constexpr const char* kStopFace = "Stop";

// The refresh command of one view: one reading per click, or readings until the next click. While
// it runs, a view of another kind refuses the command. A click in a second view of the same kind
// stops the first loop and runs its own inside it. Both end together.
class RefreshLoop {
 public:
  // `read` brings one reading into the view. It serves events meanwhile.
  RefreshLoop(RefreshContext context, ItemKind kind, const Form& view, Button& cmdRefresh,
              std::function<void()> read);

  // The click on cmdRefresh. Returns when the reading, or the loop, has ended.
  void Click();
  // The view is being unloaded. If its loop runs, the loop ends at its next turn and no longer
  // touches the view.
  void Abandon();

  bool AutoRunning() const { return autoRunning_; }

 private:
  void RunAuto();
  void Read();
  void Rest();
  void ShowReady();

  RefreshContext context_;
  ItemKind kind_;
  const Form& view_;
  Button& cmdRefresh_;
  std::function<void()> read_;
  Timer timer2_;
  bool autoRunning_ = false;
  bool reading_ = false;  // a single reading, which the button waits for
};

}  // namespace oriolemark
