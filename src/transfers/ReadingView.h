#pragma once

#include <vector>

#include "controller/records/CtrlSettings.h"
#include "platform/OptionGroup.h"
#include "transfers/RefreshLoop.h"
#include "transfers/frmPrgress.h"

namespace oriolemark {

// What a view that reads rests on.
struct ReadingContext {
  DataSheet& sheet;
  const CtrlSettings& settings;
  frmPrgress& progress;
  RefreshContext refresh;
};

// Whether the first tick shows the record before or after it brings the channel options in line.
enum class FirstTick { ShowsBeforeOptions, ShowsAfterOptions };

// What differs between the kinds of views that read.
struct ReadingKind {
  ItemKind kind;
  FirstTick firstTick;
  const char* caption;                  // of the transfer window
  std::vector<TransferKind> transfers;  // one for each channel option: CH1, CH2, both
};

// The window of an item that is read from the instrument, once or over and over. The tag names the
// slot of its record; every procedure looks the record up anew, so that the record may change under
// the view.
class ReadingView : public Form {
 public:
  ReadingView(const ReadingContext& context, const ReadingKind& kind);

  OptionGroup OptionCH;
  Button cmdRefresh;  // faces kRefreshFace and kStopFace
  Timer Timer1;       // the first tick comes at once, the others every 500 ms

  bool InitPending = false;  // from the load to the first tick: nothing is shown

  // May run again on a loaded view whose slot has got another record: the view shows that one.
  void Form_Load() override;
  void cmdRefresh_Click() { refresh_.Click(); }
  void Timer1_Timer();
  // F5 with no other key held is a click on cmdRefresh.
  void KeyDown(int code, int held);
  // One reading by the channel option. Waits until the transfer has ended.
  void ReadOnce();

 protected:
  void Form_Unload() override;

  int Slot() const { return SlotOf(*this); }
  ItemRecord& Item() { return RowOf(kind_.kind).record(context_.sheet, Slot()); }

  // The first tick of a loaded view.
  virtual void ShowRecord() = 0;
  // Just before a transfer.
  virtual void PrepareReading() {}
  // A transfer has ended. The view may have been closed meanwhile.
  virtual void TakeReading() = 0;

  ReadingContext context_;

 private:
  void TakeFirstTick();

  ReadingKind kind_;
  RefreshLoop refresh_;
};

}  // namespace oriolemark
