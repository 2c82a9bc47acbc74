#include "transfers/ReadingView.h"

#include <utility>

#include "platform/Keys.h"
#include "transfers/ChannelOptions.h"

namespace oriolemark {
namespace {

// ms
constexpr int kFirstTick = 1;
constexpr int kNextTicks = 500;

}  // namespace

ReadingView::ReadingView(const ReadingContext& context, const ReadingKind& kind)
    : OptionCH(static_cast<int>(kind.transfers.size())),
      cmdRefresh([this] { cmdRefresh_Click(); }),
      Timer1(context.refresh.events, kFirstTick, [this] { Timer1_Timer(); }),
      context_(context),
      kind_(kind),
      row_(RowOf(kind.kind)),
      refresh_(context.refresh, kind.kind, *this, cmdRefresh, [this] { ReadOnce(); }) {}

void ReadingView::Form_Load() {
  InitPending = true;
  Timer1.SetInterval(kFirstTick);
  Timer1.SetEnabled(true);
  // The item may be read already: for this window before it was closed, or for another one before
  // the item came to this slot.
  cmdRefresh.SetEnabled(context_.scratch.*row_.readingSlot != Slot());
}

void ReadingView::Form_Unload() {
  Timer1.SetEnabled(false);
  refresh_.Abandon();
  Item().ViewOpen = false;
  // The next load starts with no option selected, like a new window.
  OptionCH.Select(OptionGroup::kNone);
}

void ReadingView::Timer1_Timer() {
  const bool before = kind_.firstTick == FirstTick::ShowsBeforeOptions;
  if (before && InitPending) TakeFirstTick();
  FollowChannels(OptionCH, context_.settings);
  if (!before && InitPending) TakeFirstTick();
}

void ReadingView::TakeFirstTick() {
  Timer1.SetInterval(kNextTicks);
  InitPending = false;
  Item().ViewOpen = true;
  ShowRecord();
}

void ReadingView::KeyDown(int code, int held) {
  if (code == kF5Key && held == 0) cmdRefresh_Click();
}

std::optional<TransferKind> ReadingView::ChosenTransfer() const {
  const int selected = OptionCH.Selected();
  if (selected != OptionGroup::kNone) return kind_.transfers[static_cast<std::size_t>(selected)];
  if (kind_.noneSelected == NoneSelected::ReadsNothing) return std::nullopt;
  bool offered = false;
  for (int i = 0; i < OptionCH.Count(); ++i) offered = offered || OptionCH.OptionEnabled(i);
  return offered ? std::optional(kind_.transfers.back()) : std::nullopt;
}

void ReadingView::ReadOnce() {
  const std::optional<TransferKind> transfer = ChosenTransfer();
  if (!transfer) return;
  context_.scratch.*row_.readingSlot = Slot();
  const bool read = context_.progress.Transfer(*transfer, kind_.caption);
  const int slot = std::exchange(context_.scratch.*row_.readingSlot, kNoSlot);
  if (!read || slot == kNoSlot) return;
  TakeReading(slot);
  row_.record(context_.sheet, slot).HasData = true;
  context_.sheet.Modified = true;
  const auto& view = (context_.sheet.*row_.views)[static_cast<std::size_t>(slot)];
  if (auto* shown = dynamic_cast<ReadingView*>(view.get())) {
    shown->ShowReading();
    shown->cmdRefresh.SetEnabled(true);
  }
}

}  // namespace oriolemark
