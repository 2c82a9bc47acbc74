#pragma once

#include <optional>
#include <vector>

#include "controller/records/CtrlSettings.h"
#include "datasheet/records/TransferScratch.h"
#include "platform/OptionGroup.h"
#include "transfers/RefreshLoop.h"
#include "transfers/frmPrgress.h"

namespace oriolemark {

// What a view that reads needs.
struct ReadingContext {
  DataSheet& sheet;
  TransferScratch& scratch;
  const CtrlSettings& settings;
  frmPrgress& progress;
  RefreshContext refresh;
};

// Whether the first tick shows the record before or after it updates the channel options. A wave
// view shows it before, the others after.
enum class FirstTick { ShowsBeforeOptions, ShowsAfterOptions };

// Whether a view reads while no channel option is selected. A table of samples then reads the last
// option's channel, unless none of its options can be selected.
enum class NoneSelected { ReadsNothing, ReadsLast };

// The differences between the kinds of views that read.
struct ReadingKind {
  ItemKind kind;
  FirstTick firstTick;
  const char* caption;                  // of the transfer window
  std::vector<TransferKind> transfers;  // one for each channel option: CH1, CH2, both
  NoneSelected noneSelected = NoneSelected::ReadsNothing;
};

// The window of an item that is read from the instrument, once or continuously. The tag holds the
// slot of its record. Every procedure looks the record up again, so the record may change while the
// view is open.
class ReadingView : public ItemView {
 public:
  ReadingView(const ReadingContext& context, const ReadingKind& kind);

  OptionGroup OptionCH;
  Button cmdRefresh;  // faces kRefreshFace and kStopFace
  Timer Timer1;       // the first tick comes at once, the others every 500 ms

  bool InitPending = false;  // from the load to the first tick, while nothing is shown

  void Form_Load() override;
  void cmdRefresh_Click() { refresh_.Click(); }
  void Timer1_Timer();
  // F5 with no other key held acts as a click on cmdRefresh.
  void KeyDown(int code, int held);
  // Reads once, for the selected channel option. Waits until the transfer has ended. The reading
  // follows its item: if that is in another slot by then, its view shows it. If the item has been
  // removed, nothing is changed.
  void ReadOnce();

 protected:
  void Form_Unload() override;

  int Slot() const { return SlotOf(*this); }
  ItemRecord& Item() { return row_.record(context_.sheet, Slot()); }

  // Called at the first tick of a loaded view.
  virtual void ShowRecord() = 0;
  // A reading is over. Copies it into the record of this slot, which may belong to another view by
  // now. For the kinds that are read into the scratch fields.
  virtual void TakeReading(int /*slot*/) {}

  ReadingContext context_;

 private:
  void TakeFirstTick();
  // Nothing if the view is not to read.
  std::optional<TransferKind> ChosenTransfer() const;

  ReadingKind kind_;
  const ItemKindRow& row_;
  RefreshLoop refresh_;
};

}  // namespace oriolemark
