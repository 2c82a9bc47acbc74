#include <QComboBox>
#include <QLineEdit>
#include <QTest>

#include "Tour.h"

namespace oriolemark {

void Tour::AddWaveStops() {
  const auto now = [] { return true; };
  const auto rest = [this] { return AtRest(); };
  const auto refresh = [this] { Click("cmdRefresh"); };
  Add({
      {"start", [this] { return module_.main.Visible(); }, [] {}},
      {"connect", now, [this] { Click("tool_Connect"); }},
      {"connected", [this] { return module_.main.picLED_ON.Visible(); }, [] {}},
      {"new", now, [this] { Click("tool_New"); }},
      {"new-cancelled", [this] { return module_.newDoc.Visible(); },
       [this] { Click("cmdCancel"); }},
      {"waveform-added", now, [this] { Click("tool_AddNewWaveform"); }},
      {"refreshing", rest, refresh},
      {"waveform", rest, [this] { CheckSamples(":DATA:CHANNEL1"); }},
      {"zoomed", rest,
       [this] {
         SetZoom("250%");
         Check(View()->ZoomFactor == 2.5, "a typed zoom is taken");
       }},
      {"fitted", rest, [this] { Click("BestFitChk"); }},
      {"cursors", rest,
       [this] {
         Click("ChkCursorX");
         Click("ChkCursorY");
         const int from = static_cast<int>(View()->Cursors.X1Pos);
         const QPoint origin(View()->WavePic.Left(), View()->WavePic.Top());
         const double before = View()->Cursors.X1Base;
         Drag("WavePic", origin + QPoint(from, 100), origin + QPoint(from + 60, 100));
         Check(View()->Cursors.X1Base > before, "the cursor follows the mouse");
       }},
      {"black-on-white", rest, [this] { ClickText("B&W"); }},
      {"colour", rest, [this] { ClickText("Color"); }},
      {"envelope", rest,
       [this] {
         instrument_.Do("set :ACQUIRE:ACQUISITION ENVELOPE");
         Click("cmdRefresh");
       }},
      {"envelope-read", rest,
       [this] {
         CheckSamples(":DATA:EnvelopeMax:CH1");
         Check(Wave(0).Envelope, "an envelope was read");
       }},
      {"scan", rest,
       [this] {
         instrument_.Do("set :ACQUIRE:ACQUISITION NORMAL");
         instrument_.Do("signal 1 ramp 0.5");
         instrument_.Do("scan on");
         Click("cmdRefresh");
       }},
      {"scan-read", rest,
       [this] {
         CheckSamples(":DATA:CHANNEL1");
         Check(Wave(0).IsScan, "a rolling record was read");
       }},
      {"xy", rest,
       [this] {
         instrument_.Do("scan off");
         instrument_.Do("set :TimeBase:RANGE 500.0us");
         instrument_.Do("signal 1 sine 1000");
         instrument_.Do("signal 2 sine 2000");
         instrument_.Do("xy on");
         Click("cmdRefresh");
       }},
      {"xy-read", rest, [this] { Check(!Wave(0).IsYT && Wave(0).Channels == 3, "an X-Y figure"); }},
      {"second-waveform", rest, [this] { Click("tool_AddNewWaveform"); }},
      {"tiled", rest, [this] { module_.main.mnuWindowTileVertical.Click(); }},
      {"about", now, [this] { module_.main.mnuHelpAbout.Click(); }},
      {"about-closed", [this] { return module_.about.Visible(); }, [this] { Click("cmdOK"); }},
  });
}

// Switches off the best fit of the window in front, and types the zoom.
void Tour::SetZoom(const QString& zoom) {
  Click("BestFitChk");
  auto* box = qobject_cast<QComboBox*>(Find("ZoomCombo"));
  if (box == nullptr || box->lineEdit() == nullptr) return Check(false, "zoom box");
  box->lineEdit()->selectAll();
  QTest::keyClicks(box->lineEdit(), zoom);
  QTest::keyClick(box->lineEdit(), Qt::Key_Return);
}

}  // namespace oriolemark
