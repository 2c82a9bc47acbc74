#include "transfers/RefreshLoop.h"

#include <algorithm>
#include <utility>

namespace oriolemark {

namespace {

// Indexed by ItemKind.
constexpr bool RefreshFlags::*kFlags[kTreeOrder.size()] = {&RefreshFlags::WaveAutoRefresh,
                                                           &RefreshFlags::MeasureAutoRefresh,
                                                           &RefreshFlags::DataAutoRefresh};

}  // namespace

bool& RefreshFlags::Of(ItemKind kind) {
  return this->*kFlags[static_cast<std::size_t>(kind)];
}

bool RefreshFlags::OtherThan(ItemKind kind) const {
  return std::ranges::any_of(kTreeOrder, [this, kind](ItemKind other) {
    return other != kind && this->*kFlags[static_cast<std::size_t>(other)];
  });
}

RefreshLoop::RefreshLoop(RefreshContext context, ItemKind kind, const Form& view,
                         Button& cmdRefresh, std::function<void()> read)
    : context_(context),
      kind_(kind),
      view_(view),
      cmdRefresh_(cmdRefresh),
      read_(std::move(read)),
      timer2_(context.events, 10, [this] { context_.flags.RefreshTick = timer2_.Interval(); }) {
  cmdRefresh_.SetFace(kRefreshFace);
}

void RefreshLoop::Click() {
  RefreshFlags& flags = context_.flags;
  if (flags.OtherThan(kind_)) return;
  flags.Of(kind_) = false;
  if (!autoRunning_ && !context_.transfer.TransferActive) {
    if (!context_.link.ScopeConnected) {
      context_.prompts.Show(kConnectFirst);
    } else if (context_.settings.RefreshType == "Single") {
      reading_ = true;
      cmdRefresh_.SetEnabled(false);
      read_();
      reading_ = false;
    } else {
      RunAuto();
    }
  }
  Rest();
}

void RefreshLoop::RunAuto() {
  const TransferRun run(context_.transfer);
  RefreshFlags& flags = context_.flags;
  cmdRefresh_.SetFace(kStopFace);
  autoRunning_ = true;
  flags.Of(kind_) = true;
  Read();
  while (flags.Of(kind_) && view_.Loaded() && context_.link.ScopeConnected &&
         !context_.transfer.TransferActive && !context_.waiting.Closing()) {
    const int interval = context_.settings.RefreshInterval;
    if (interval <= 0) {
      // A timer with no interval never ticks, so the next reading follows at once. Events are
      // served in between. The wait spares the processor if there is nothing to read.
      Read();
      context_.waiting.WaitEvents(Milliseconds(1));
    } else if (flags.RefreshTick == interval) {
      // Read first: a stop clicked meanwhile ends the loop without another sleep.
      flags.RefreshTick = 0;
      timer2_.SetEnabled(false);
      Read();
    } else {
      context_.waiting.WaitEvents(Milliseconds(-1));
    }
  }
}

void RefreshLoop::Read() {
  read_();
  if (!view_.Loaded()) return;
  timer2_.SetInterval(context_.settings.RefreshInterval);
  timer2_.SetEnabled(true);
}

// Ends every click that was not refused, whatever it did.
void RefreshLoop::Rest() {
  context_.flags.Of(kind_) = false;
  ShowReady();
}

void RefreshLoop::Abandon() {
  if (autoRunning_) context_.flags.Of(kind_) = false;
  reading_ = false;
  ShowReady();
}

void RefreshLoop::ShowReady() {
  autoRunning_ = false;
  timer2_.SetEnabled(false);
  cmdRefresh_.SetFace(kRefreshFace);
  cmdRefresh_.SetEnabled(!reading_);
}

}  // namespace oriolemark
