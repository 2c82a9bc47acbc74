#pragma once

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QMessageBox>
#include <QPoint>
#include <QString>
#include <QTimer>
#include <deque>
#include <functional>
#include <vector>

#include "Instrument.h"
#include "desktop/Program.h"

class QAction;
class QMainWindow;
class QTreeWidgetItem;

namespace oriolemark {

// One stop of the tour. When `ready` returns true, `act` runs from the event loop. The picture is
// taken a moment later.
struct Stop {
  const char* name;
  std::function<bool()> ready;
  std::function<void()> act;
};

// Operates the real windows by mouse and key events, stop after stop, and counts failed checks.
class Tour {
 public:
  // The second start opens what the first has saved.
  enum class Start { First, Second };

  Tour(Program& program, Instrument& instrument, const Link& link, QDir folder, Start start);

  // The failed checks, and the stops that were not reached, when the program has ended.
  int Failures();

 private:
  static constexpr int kPause = 400;          // ms until a picture is taken
  static constexpr qint64 kPatience = 60000;  // ms for one stop

  void Add(std::vector<Stop> stops);
  void AddWaveStops();
  void AddTreeStops();
  void AddEditStops();
  void AddFileStops();
  void AddOutputStops();
  void AddSheetStops();
  void AddMeasureStops();
  void AddDataStops();
  void AddPanelStops();
  void AddSaveStops();
  void AddReturnStops();
  void AddEnd();
  void Turn();
  void GiveUp();
  void Picture(const QString& name);

  void Check(bool holds, const QString& what);
  void CheckInstrument(const QString& path, const QString& value);
  // Checks the samples of the record against the bytes that the instrument sent for the first
  // trace.
  void CheckSamples(const QString& request);
  // Checks the labels of the Trigger group's rows, without their values. Scrolls to the rows.
  void CheckTrigger(const QStringList& labels);
  // Checks the list against the instrument's replies, then the exported file against the list.
  void CheckMeasures();
  // Checks the table and the exported file against the samples that the instrument sent.
  void CheckTable();
  // Checks that the file has these lines and no other byte.
  void CheckFile(const QString& name, const QStringList& lines);
  // Checks the three cells of a row of the list or the table.
  void CheckRow(int row, const QStringList& cells);
  // A cell of the list or of the table in front, as it is shown.
  static QString Cell(int row, int column);
  static int RowCount();
  // Enables the test of a quantity in the limits dialog and types its limits.
  void SetLimits(const QString& quantity, const QString& over, const QString& under,
                 const QString& unit);
  // Chooses an entry of a list by the keyboard.
  void ChooseByKey(const QString& list, const QString& text);
  // Checks the items and the pictures of the sheet against those of the first start.
  void CheckReopened();

  // The dialog in front, otherwise the child window in front and then all windows.
  static QWidgetList Windows();
  // A visible widget by its name, in the window in front.
  static QWidget* Find(const QString& name);
  void Click(const QString& name);
  void ClickText(const QString& text);
  void Drag(const QString& name, QPoint from, QPoint to);
  static QWidget* Focus();
  void Press(QKeyCombination key);
  void Type(const QString& text);
  void Answer(QMessageBox::StandardButton button);
  void NameFile(const QString& name);
  void SetZoom(const QString& zoom);
  static QMainWindow* Main();
  static void OpenFileMenu();
  static void CloseMain();

  // A row of the settings tree by the name of its group and the label below it, if any. The clicks
  // scroll to the row first.
  QTreeWidgetItem* Row(const QString& group, const QString& label);
  void ClickRow(const QString& group, const QString& label, Qt::MouseButton button);
  void OpenRow(const QString& group, const QString& label);
  // The value shown in a row.
  QString Shown(const QString& group, const QString& label);
  // The entry of the menu in front. Null if there is none.
  static QAction* Entry(const QString& text);
  void ChooseEntry(const QString& text);
  // A row of the Data Browser.
  QTreeWidgetItem* Item(const QString& name);
  void OpenItem(const QString& name) { OpenItem(Item(name)); }
  static void ClickItem(QTreeWidgetItem* item, Qt::MouseButton button);
  static void OpenItem(QTreeWidgetItem* item);
  // Checks the printed page's measures. The left edge is in inches.
  void CheckPage(double left);
  // Holds the key of the instrument's front for a second, then checks what that sent.
  void Hold(const PanelKey& key, QWidget* button);
  void CheckHeld(const PanelKey& key);
  // The mirrored screen.
  QImage Screen();
  // The whole picture of a waveform: as it is, and as a second start draws it. KeepPictures writes
  // one file for each.
  QImage Raster(int slot);
  QImage Drawn(int slot);
  void KeepPictures();

  const WaveRecord& Wave(std::size_t slot) { return module_.sheet.Waves[slot]; }
  frmWave* View() { return dynamic_cast<frmWave*>(module_.sheet.WaveViews[0].get()); }
  bool AtRest() { return View() != nullptr && View()->cmdRefresh.Enabled() && !Progress(); }
  bool Progress() { return module_.progress.Loaded(); }
  bool Editing() { return module_.controller.dialog.Visible(); }
  static bool Asking() { return QApplication::activeModalWidget() != nullptr; }
  static bool MenuOpen() { return QApplication::activePopupWidget() != nullptr; }
  // No dialog is open, and no transfer is running.
  bool Idle() { return !Progress() && !Asking() && !MenuOpen(); }

  MainModule& module_;
  Instrument& instrument_;
  const Link& link_;
  QDir folder_;
  std::deque<Stop> stops_;
  QTimer timer_;
  QElapsedTimer patience_;
  QString pending_;
  int taken_ = 0;
  // While a key is held, and what was there before.
  bool holding_ = false;
  int heldBefore_ = 0;
  int topBefore_ = 0;
  int frozen_ = 0;  // frames that the mirror had asked for when it was stopped
  int failures_ = 0;
};

}  // namespace oriolemark
