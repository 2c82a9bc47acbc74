#pragma once

#include <QDir>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QPoint>
#include <QString>
#include <QTimer>
#include <deque>
#include <functional>
#include <vector>

#include "Instrument.h"
#include "desktop/Program.h"

class QTreeWidgetItem;

namespace oriolemark {

// One stop of the tour: once `ready` holds, `act` runs from the event loop, and its picture is
// taken a moment later.
struct Stop {
  const char* name;
  std::function<bool()> ready;
  std::function<void()> act;
};

// Works the real windows by mouse and key events, stop after stop, and counts what was not as it
// should be.
class Tour {
 public:
  Tour(Program& program, Instrument& instrument, const Link& link, QDir folder);

  int Failures() const { return failures_; }

 private:
  static constexpr int kPause = 400;          // ms until a picture is taken
  static constexpr qint64 kPatience = 60000;  // ms for one stop

  void Add(std::vector<Stop> stops);
  void AddWaveStops();
  void AddTreeStops();
  void AddEditStops();
  void AddFileStops();
  void AddEnd();
  void Turn();
  void Picture(const QString& name);

  void Check(bool holds, const QString& what);
  void CheckInstrument(const QString& path, const QString& value);
  // The samples of the record against what the instrument has sent for its first trace.
  void CheckSamples(const QString& request);
  // The rows of the Trigger group, their values left out; brings them into sight.
  void CheckTrigger(const QStringList& labels);

  // A visible widget by its name, in the window in front.
  QWidget* Find(const QString& name);
  void Click(const QString& name);
  void ClickText(const QString& text);
  void Drag(const QString& name, QPoint from, QPoint to);
  static QWidget* Focus();
  void Press(int key);
  void Type(const QString& text);
  void Answer(QMessageBox::StandardButton button);
  void NameFile(const QString& name);

  // A row of the settings tree by the name of its group and the label below it, if any. The clicks
  // bring it into sight first.
  QTreeWidgetItem* Row(const QString& group, const QString& label);
  void ClickRow(const QString& group, const QString& label, Qt::MouseButton button);
  void OpenRow(const QString& group, const QString& label);
  // The value that a row shows.
  QString Shown(const QString& group, const QString& label);
  void ChooseEntry(const QString& text);

  const WaveRecord& Wave() { return module_.sheet.Waves[0]; }
  frmWave* View() { return dynamic_cast<frmWave*>(module_.sheet.WaveViews[0].get()); }
  bool AtRest() { return View() != nullptr && View()->cmdRefresh.Enabled() && !Progress(); }
  bool Progress() { return module_.progress.Loaded(); }
  bool Editing() { return module_.controller.dialog.Visible(); }
  // Nothing stands before the main window, and nothing is on the line.
  bool Idle();

  MainModule& module_;
  Instrument& instrument_;
  const Link& link_;
  QDir folder_;
  std::deque<Stop> stops_;
  QTimer timer_;
  QElapsedTimer patience_;
  QString pending_;
  int taken_ = 0;
  int failures_ = 0;
};

}  // namespace oriolemark
