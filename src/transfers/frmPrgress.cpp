#include "transfers/frmPrgress.h"

#include "link/StringRES.h"
#include "link/TX5000Cmd.h"
#include "values/Number.h"

namespace oriolemark {
namespace {

// Whether the instrument stops acquiring during the exchange.
enum class Acquisition { GoesOn, Halted };

using P = TransferProcedures;

struct TransferRow {
  TransferKind kind;
  TransferProcedure P::*procedure;
  const char* channel;
  Acquisition acquisition;
};

constexpr TransferRow kTransfers[] = {
    {TransferKind::MeasureCH1, &P::ReadMeasures, "CH1", Acquisition::Halted},
    {TransferKind::MeasureCH2, &P::ReadMeasures, "CH2", Acquisition::Halted},
    {TransferKind::DataCH1, &P::ReadChannelData, "CH1", Acquisition::GoesOn},
    {TransferKind::DataCH2, &P::ReadChannelData, "CH2", Acquisition::GoesOn},
    {TransferKind::WaveCH1, &P::ReadWaveform, "CH1", Acquisition::GoesOn},
    {TransferKind::WaveCH2, &P::ReadWaveform, "CH2", Acquisition::GoesOn},
    {TransferKind::WaveBoth, &P::ReadWaveform, "CH1CH2", Acquisition::GoesOn},
    {TransferKind::Upload, &P::WriteSettings, "", Acquisition::GoesOn},
    {TransferKind::Download, &P::ReadSettings, "", Acquisition::GoesOn},
};

// Size of the window in window units. The height is that of one bar with its frame.
constexpr double kWidth = 4500;
constexpr double kHeight = 900;

}  // namespace

frmPrgress::frmPrgress(EventSource& events, Waiting& waiting, SettingsStore& store, LinkState& link,
                       TransferState& transfer, TX5000Cmd& scope, ScreenPointer& pointer)
    : Timer1(events, 100, [this] { Timer1_Timer(); }),
      Timer2(events, 200,
             [this] {
               ProgressBar1.SetValue(Progress);
               ProgressBar1.Refresh();
             }),
      waiting_(waiting),
      store_(store),
      link_(link),
      transfer_(transfer),
      scope_(scope),
      pointer_(pointer) {}

bool frmPrgress::Transfer(oriolemark::TransferKind kind, const std::string& caption) {
  const TransferRun run(transfer_);
  SetCaption(caption);
  Load();
  transfer_.TransferKind = kind;
  transfer_.TransferDone = false;
  Show();
  waiting_.WaitUntil([this] { return transfer_.TransferDone; });
  if (transfer_.TransferDone) return true;
  End();
  return false;
}

void frmPrgress::Form_Load() {
  const auto read = [this](const char* key, double fallback) {
    return NumberInReply(store_.Read("Settings", key).value_or("")).value_or(fallback);
  };
  UnitRect place{read("ProgressLeft", 500), read("ProgressTop", 800), kWidth, kHeight};
  if (place.left > screenWidth || place.left < -place.width) place.left = 400;
  if (place.top > screenHeight || place.top < -place.height) place.top = 600;
  Move(place);
  link_.CommBusy = true;
  Repaint();
  Timer2.SetEnabled(false);
  Timer1.SetEnabled(true);
  ProgressBar1.SetValue(0);
  transfer_.TransferActive = true;
}

void frmPrgress::Timer1_Timer() {
  Timer1.SetEnabled(false);
  // Every transfer begins with this question. Only those that halt the instrument use the answer.
  const std::string status = scope_.AskScope(std::string(kTrigger) + kStatus + kQuery);
  Run(status != DropFirstChar(kStop));
  Repaint();
  waiting_.Sleep(Milliseconds(200));
  transfer_.TransferDone = true;
  End();
}

void frmPrgress::End() {
  link_.CommBusy = false;
  transfer_.TransferActive = false;
  Unload();
}

void frmPrgress::Run(bool running) {
  for (const TransferRow& row : kTransfers) {
    if (row.kind != transfer_.TransferKind) continue;
    const bool halt = running && row.acquisition == Acquisition::Halted;
    if (halt) scope_.SendToScope(kStop);
    if (const TransferProcedure& procedure = procedures.*row.procedure) procedure(row.channel);
    if (halt) scope_.SendToScope(kRun);
    return;
  }
}

void frmPrgress::Form_Unload() {
  Timer1.SetEnabled(false);
  Timer2.SetEnabled(false);
  pointer_.SetShape(PointerShape::Normal);
  store_.Write("Settings", "ProgressLeft", NumberText(Place().left));
  store_.Write("Settings", "ProgressTop", NumberText(Place().top));
}

}  // namespace oriolemark
