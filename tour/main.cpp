// Drives the real windows by mouse and key events over the real line, and leaves numbered
// screenshots and the log of the line behind. Ends with 0 when everything was as it should be.
#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QMainWindow>
#include <QPalette>
#include <QPixmap>
#include <QScreen>
#include <QTest>
#include <QTextStream>
#include <QTimer>
#include <algorithm>
#include <deque>
#include <functional>

#include "Instrument.h"
#include "desktop/Program.h"

namespace oriolemark {
namespace {

// One stop of the tour: once `ready` holds, `act` runs, and its picture is taken half a second
// later.
struct Stop {
  const char* name;
  std::function<bool()> ready;
  std::function<void()> act;
};

class Tour {
 public:
  Tour(Program& program, Instrument& instrument, QDir folder)
      : module_(program.Module()), instrument_(instrument), folder_(std::move(folder)) {
    AddStops();
    timer_.setInterval(500);
    QObject::connect(&timer_, &QTimer::timeout, [this] { Turn(); });
    timer_.start();
    patience_.start();
  }

  int Failures() const { return failures_; }

 private:
  static constexpr qint64 kPatience = 60000;  // ms for one stop

  void AddStops();
  void Turn();
  void Picture(const QString& name);
  void Check(bool holds, const QString& what);
  // A visible widget by its name, in the window in front.
  QWidget* Find(const QString& name);
  void Click(const QString& name);
  void ClickText(const QString& text);
  void Drag(const QString& name, QPoint from, QPoint to);
  // The samples of the record against what the instrument has sent for its first trace.
  void CheckSamples(const QString& request);

  const WaveRecord& Wave() { return module_.sheet.Waves[0]; }
  frmWave* View() { return dynamic_cast<frmWave*>(module_.sheet.WaveViews[0].get()); }
  bool AtRest() { return View() != nullptr && View()->cmdRefresh.Enabled() && !Progress(); }
  bool Progress() { return module_.progress.Loaded(); }

  MainModule& module_;
  Instrument& instrument_;
  QDir folder_;
  std::deque<Stop> stops_;
  QTimer timer_;
  QElapsedTimer patience_;
  QString pending_;
  int taken_ = 0;
  int failures_ = 0;
};

void Tour::AddStops() {
  const auto now = [] { return true; };
  const auto rest = [this] { return AtRest(); };
  const auto refresh = [this] { Click("cmdRefresh"); };
  stops_ = {
      {"start", [this] { return module_.main.Visible(); }, [] {}},
      {"connect", now, [this] { Click("tool_Connect"); }},
      {"connected", [this] { return module_.main.picLED_ON.Visible(); }, [] {}},
      {"new", now, [this] { QTimer::singleShot(0, [this] { Click("tool_New"); }); }},
      {"new-cancelled", [this] { return module_.newDoc.Visible(); },
       [this] { Click("cmdCancel"); }},
      {"waveform-added", now, [this] { Click("tool_AddNewWaveform"); }},
      {"refreshing", rest, refresh},
      {"waveform", rest, [this] { CheckSamples(":DATA:CHANNEL1"); }},
      {"zoomed", rest,
       [this] {
         Click("BestFitChk");
         auto* zoom = qobject_cast<QComboBox*>(Find("ZoomCombo"));
         if (zoom == nullptr || zoom->lineEdit() == nullptr) return Check(false, "zoom box");
         zoom->lineEdit()->selectAll();
         QTest::keyClicks(zoom->lineEdit(), "250%");
         QTest::keyClick(zoom->lineEdit(), Qt::Key_Return);
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
         Check(Wave().Envelope, "an envelope was read");
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
         Check(Wave().IsScan, "a rolling record was read");
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
      {"xy-read", rest, [this] { Check(!Wave().IsYT && Wave().Channels == 3, "an X-Y figure"); }},
      {"second-waveform", rest, [this] { Click("tool_AddNewWaveform"); }},
      {"tiled", rest, [this] { module_.main.mnuWindowTileVertical.Click(); }},
      {"about", now,
       [this] { QTimer::singleShot(0, [this] { module_.main.mnuHelpAbout.Click(); }); }},
      {"about-closed", [this] { return module_.about.Visible(); }, [this] { Click("cmdOK"); }},
      {"end", rest,
       [this] {
         const QString unknown = instrument_.Do("count");
         Check(unknown == "0", "commands that the instrument did not know: " + unknown);
         for (QWidget* top : QApplication::topLevelWidgets()) {
           if (qobject_cast<QMainWindow*>(top) != nullptr) top->close();
         }
       }},
  };
}

void Tour::Turn() {
  if (!pending_.isEmpty()) {
    Picture(pending_);
    pending_.clear();
  }
  if (stops_.empty()) return timer_.stop();
  if (!stops_.front().ready()) {
    if (patience_.elapsed() < kPatience) return;
    Check(false, QString("the tour waits for ever before: ") + stops_.front().name);
    Picture("stuck");
    stops_.clear();
    return module_.main.Close();
  }
  const Stop stop = std::move(stops_.front());
  stops_.pop_front();
  pending_ = stop.name;
  patience_.restart();
  stop.act();
}

void Tour::Picture(const QString& name) {
  const QString file = QString("%1-%2.png").arg(++taken_, 2, 10, QChar('0')).arg(name);
  QPixmap shot = QGuiApplication::primaryScreen()->grabWindow(0);
  if (shot.isNull() && QApplication::activeWindow() != nullptr) {
    shot = QApplication::activeWindow()->grab();
  }
  shot.save(folder_.filePath(file));
}

void Tour::Check(bool holds, const QString& what) {
  QTextStream(stdout) << (holds ? "ok:     " : "FAILED: ") << what << Qt::endl;
  if (!holds) ++failures_;
}

QWidget* Tour::Find(const QString& name) {
  QWidget* modal = QApplication::activeModalWidget();
  for (QWidget* top : modal != nullptr ? QWidgetList{modal} : QApplication::topLevelWidgets()) {
    for (QWidget* found : top->findChildren<QWidget*>(name)) {
      if (found->isVisible()) return found;
    }
  }
  return nullptr;
}

void Tour::Click(const QString& name) {
  QWidget* found = Find(name);
  if (found == nullptr) return Check(false, "nothing on the screen is called " + name);
  // A check box takes the mouse on its mark and text only.
  const bool isButton = qobject_cast<QAbstractButton*>(found) != nullptr;
  const QPoint at = isButton ? QPoint(std::min(10, found->width() / 2), found->height() / 2)
                             : found->rect().center();
  QTest::mouseClick(found, Qt::LeftButton, {}, at);
}

void Tour::ClickText(const QString& text) {
  for (QWidget* widget : QApplication::allWidgets()) {
    auto* button = qobject_cast<QAbstractButton*>(widget);
    if (button == nullptr || !button->isVisible()) continue;
    if (button->text().replace("&&", "&") != text) continue;
    return QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(8, button->height() / 2));
  }
  Check(false, "nothing on the screen reads " + text);
}

void Tour::Drag(const QString& name, QPoint from, QPoint to) {
  QWidget* found = Find(name);
  if (found == nullptr) return Check(false, "nothing on the screen is called " + name);
  QTest::mousePress(found, Qt::LeftButton, {}, from);
  for (int step = 1; step <= 4; ++step) QTest::mouseMove(found, from + (to - from) * step / 4);
  QTest::mouseRelease(found, Qt::LeftButton, {}, to);
}

void Tour::CheckSamples(const QString& request) {
  const std::vector<int> bytes = instrument_.LastBlock(request);
  bool same = !bytes.empty() && Wave().Count == static_cast<int>(bytes.size());
  for (int i = 1; same && i <= Wave().Count; ++i) {
    const int byte = bytes[static_cast<std::size_t>(i - 1)];
    same = Wave().CH1Data[i] == std::clamp(byte, 26, 225) - 26;
  }
  Check(same, QString("the samples are the instrument's %1 bytes for %2 less 26")
                  .arg(bytes.size())
                  .arg(request));
}

// The program's own settings, with the simulated instrument as its first port.
void WriteSettings(const QDir& config, const QString& link) {
  config.mkpath("Oriolemark");
  QFile file(config.filePath("Oriolemark/Oriolemark.ini"));
  if (!file.open(QIODevice::WriteOnly)) return;
  QTextStream(&file) << "[Drivers]\nCOM1=\"" << link << "\"\n\n[IO%20Settings]\nScopeIOType=2\n"
                     << "BaudRate=115200\n\n[Settings]\nMainLeft=600\nMainTop=600\n"
                     << "MainWidth=17400\nMainHeight=12000\n";
}

// What a desktop with a dark theme would hand to the program.
QPalette DarkPalette() {
  QPalette dark(QColor(53, 53, 57), QColor(45, 45, 48));
  dark.setColor(QPalette::Base, QColor(30, 30, 32));
  dark.setColor(QPalette::Highlight, QColor(42, 110, 170));
  dark.setColor(QPalette::HighlightedText, Qt::white);
  for (const QPalette::ColorRole text :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    dark.setColor(text, QColor(230, 230, 230));
    dark.setColor(QPalette::Disabled, text, QColor(125, 125, 125));
  }
  dark.setColor(QPalette::PlaceholderText, QColor(150, 150, 150));
  dark.setColor(QPalette::ToolTipBase, QColor(60, 60, 64));
  dark.setColor(QPalette::ToolTipText, QColor(230, 230, 230));
  return dark;
}

enum class Theme { Desktop, Dark };

int TakeTour(const QString& folder, const QString& simulator, Theme theme, int& argc, char** argv) {
  QDir out(folder);
  out.mkpath(".");
  const QString link = out.absoluteFilePath("tx5000");
  const QDir config(out.absoluteFilePath("config"));
  WriteSettings(config, link);
  qputenv("XDG_CONFIG_HOME", config.absolutePath().toLocal8Bit());
  QApplication application(argc, argv);
  if (theme == Theme::Dark) QApplication::setPalette(DarkPalette());
  Program program(application);
  Instrument instrument;
  if (!instrument.Start(simulator, link, out.absoluteFilePath("wire.log"))) {
    QTextStream(stderr) << "the simulated instrument does not start: " << simulator << Qt::endl;
    return 2;
  }
  Tour tour(program, instrument, out);
  program.Run();
  return tour.Failures() == 0 ? 0 : 1;
}

}  // namespace
}  // namespace oriolemark

int main(int argc, char** argv) {
  const bool dark = argc == 4 && QByteArray(argv[1]) == "--dark";
  if (argc != 3 && !dark) {
    QTextStream(stderr) << "usage: oriolemark_tour [--dark] FOLDER TX5000SIM" << Qt::endl;
    return 2;
  }
  return oriolemark::TakeTour(argv[argc - 2], argv[argc - 1],
                              dark ? oriolemark::Theme::Dark : oriolemark::Theme::Desktop, argc,
                              argv);
}
