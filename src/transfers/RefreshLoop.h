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

// Whether a continuous refresh of a kind of view runs, and the tick that all views share: 0, or the
// interval that has just run out.
struct RefreshFlags {
  bool WaveAutoRefresh = false;
  bool DataAutoRefresh = false;
  bool MeasureAutoRefresh = false;
  int RefreshTick = 0;

  bool& Of(ItemKind kind);
  bool OtherThan(ItemKind kind) const;
};

struct RefreshSettings {
  std::string RefreshType = "Single";  // anything else means over and over
  int RefreshInterval = 100;           // ms from the end of one reading to the start of the next
};

// What a refresh rests on, for all views.
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

// The refresh command of one view: one reading a click, or readings until it is clicked again.
// While it runs, a view of another kind refuses the command; a second view of the same kind takes
// the flag over and runs its loop nested in the first one's.
class RefreshLoop {
 public:
  // `read` brings one reading into the view and serves events meanwhile.
  RefreshLoop(RefreshContext context, ItemKind kind, const Form& view, Button& cmdRefresh,
              std::function<void()> read);

  // The click on cmdRefresh. Returns when the reading, or the loop, has ended.
  void Click();
  // The view is being unloaded: its loop, if it runs, ends at its next turn and leaves the view
  // alone.
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
