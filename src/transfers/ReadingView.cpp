#include "transfers/ReadingView.h"

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

void ReadingView::ReadOnce() {
  const int option = OptionCH.Selected();
  if (option == OptionGroup::kNone) return;
  int& slot = context_.scratch.*row_.readingSlot;
  slot = Slot();
  const TransferKind transfer = kind_.transfers[static_cast<std::size_t>(option)];
  if (!context_.progress.Transfer(transfer, kind_.caption) || slot == kNoSlot) return;
  row_.record(context_.sheet, slot).HasData = true;
  context_.sheet.Modified = true;
  const auto& view = (context_.sheet.*row_.views)[static_cast<std::size_t>(slot)];
  if (view) view->ShowReading();
}

}  // namespace oriolemark
