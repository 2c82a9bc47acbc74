#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QRegularExpression>
#include <QTableView>
#include <QTest>

#include "Tour.h"

namespace oriolemark {
namespace {

constexpr const char* kMeasureFile = "measures.xls";
constexpr const char* kSampleFile = "samples.txt";
constexpr int kWide = 1200;  // samples in a trace of 100 a division

// The settings of both readings. The signal fills 3.2 of the 8 divisions.
constexpr const char* kSettings[] = {
    "signal 1 sine 1000 1.6",
    "set :CHANNEL1:RANGE 1.00V",
    "set :CHANNEL1:OFFSET 1.00div",
    "set :TimeBase:RANGE 500.0us",
    "set :TimeBase:TRIGGER DELAY 0.0ns",
};
// Of the table. No time comes near a power of ten, below which a mantissa may be rounded up to 10.
constexpr const char* kDelayed = "set :TimeBase:TRIGGER DELAY 400.8us";
constexpr double kVolts = 1;         // a division
constexpr double kOffset = 1;        // volts
constexpr double kSeconds = 5e-4;    // a division
constexpr double kDelay = 400.8e-6;  // seconds

// In the order of the list: the name on the screen, the one in the file, and the request.
constexpr const char* kMeasures[][3] = {
    {"Vpp", "Vpp", "Vpp"},
    {"Vmax", "Vmax", "Vmax"},
    {"Vmin", "Vmin", "Vmin"},
    {"Vavg", "Vavg", "Vavg"},
    {"Vamp", "Vamp", "Vamp"},
    {"Vtop", "Vtop", "Vtop"},
    {"Vbase", "Vbase", "Vbase"},
    {"Vrms", "Vrms", "Vrms"},
    {"Vover", "Vover", "Vovr"},
    {"Vpre", "Vpre", "Vpre"},
    {"Frequency", "Frequency", "Freq"},
    {"Rise Time", "Rise Time", "RiseTime"},
    {"Fall Time", "Fall Time", "FallTime"},
    {"Period", "Period", "Period"},
    {"+Pulse Width", "Pulse Width+", "+Width"},
    {"-Pulse Width", "Pulse Width-", "-Width"},
    {"+Duty", "Duty+", "+Duty"},
    {"-Duty", "Duty-", "-Duty"},
};

// The verdicts on the limits that the tour types.
QString VerdictOn(const QString& caption) {
  if (caption == "Vpp") return "Fail [Over Limit]";
  if (caption == "Vmax") return "Pass";
  return caption == "Frequency" ? "Fail [Under Limit]" : "";
}

}  // namespace

void Tour::AddMeasureStops() {
  const auto idle = [this] { return Idle(); };
  const auto limits = [this] { return module_.passFailed.Visible(); };
  Add({
      {"measure-window", idle,
       [this] {
         for (const char* line : kSettings) {
           Check(instrument_.Do(line) == "ok", QString("the instrument takes ") + line);
         }
         Click("tool_AddNewMeasure");
       }},
      {"measures-empty", idle,
       [this] {
         CheckRow(4, {"Vtamp", "", ""});
         Click("cmdRefresh");
       }},
      {"measures-read", idle, [this] { Click("cmdPassFailed"); }},
      {"limits-vpp", limits, [this] { SetLimits("Vpp", "3", "1", "V"); }},
      {"limits-vmax", limits, [this] { SetLimits("Vmax", "2", "0.5", "V"); }},
      {"limits-frequency", limits, [this] { SetLimits("Frequency", "5.5", "2", "kHz"); }},
      {"limits-ok", limits, [this] { Click("OKButton"); }},
      {"measures-export", idle,
       [this] {
         QFile::remove(folder_.filePath(kMeasureFile));
         Click("cmdExport");
       }},
      {"measures-named", Asking, [this] { NameFile(kMeasureFile); }},
      {"measures-exported", idle, [this] { CheckMeasures(); }},
  });
}

void Tour::AddDataStops() {
  const auto idle = [this] { return Idle(); };
  Add({
      {"data-window", idle,
       [this] {
         Check(instrument_.Do(kDelayed) == "ok", QString("the instrument takes ") + kDelayed);
         Click("tool_AddNewData");
       }},
      {"table-blank", idle,
       [this] {
         Check(RowCount() == 1000, "a table without data has 1000 empty rows");
         CheckRow(0, {"", "", ""});
         Click("cmdRefresh");
       }},
      {"table-export", idle,
       [this] {
         QFile::remove(folder_.filePath(kSampleFile));
         Click("cmdExport");
       }},
      {"table-named", Asking, [this] { NameFile(kSampleFile); }},
      {"table-exported", idle, [this] { CheckTable(); }},
      {"table-last-row", idle,
       [] {
         if (auto* table = qobject_cast<QTableView*>(Find("MeasureView"))) {
           table->setFocus();
           QTest::keyClick(table, Qt::Key_End);
         }
       }},
  });
}

void Tour::ChooseByKey(const QString& list, const QString& text) {
  auto* box = qobject_cast<QComboBox*>(Find(list));
  if (box == nullptr) return Check(false, "nothing on the screen is called " + list);
  box->setFocus();
  QTest::keyClick(box, Qt::Key_Home);
  for (int i = 1; i < box->count() && box->currentText() != text; ++i) {
    QTest::keyClick(box, Qt::Key_Down);
  }
  Check(box->currentText() == text, "the keyboard chooses " + text + " in " + list);
}

void Tour::SetLimits(const QString& quantity, const QString& over, const QString& under,
                     const QString& unit) {
  ChooseByKey("MTypeCombo", quantity);
  Click("EnabledChk");
  for (const auto& [limit, number] : {std::pair("Over", over), std::pair("Under", under)}) {
    ChooseByKey(limit + QString("Unit"), unit);
    Click(limit + QString("Num"));
    Type(number);
  }
}

QString Tour::Cell(int row, int column) {
  const auto* table = qobject_cast<QTableView*>(Find("MeasureView"));
  return table != nullptr ? table->model()->index(row, column).data().toString() : QString();
}

int Tour::RowCount() {
  const auto* table = qobject_cast<QTableView*>(Find("MeasureView"));
  return table != nullptr ? table->model()->rowCount() : 0;
}

void Tour::CheckRow(int row, const QStringList& cells) {
  const QStringList shown{Cell(row, 0), Cell(row, 1), Cell(row, 2)};
  Check(shown == cells, QString("row %1 reads %2").arg(row + 1).arg(shown.join(" | ")));
}

void Tour::CheckFile(const QString& name, const QStringList& lines) {
  QFile file(folder_.filePath(name));
  const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  const QByteArray expected = (lines.join("\r\n") + "\r\n").toLatin1();
  Check(bytes == expected, QString("%1 has the %2 bytes that belong into it, and has %3")
                               .arg(name)
                               .arg(expected.size())
                               .arg(bytes.size()));
}

void Tour::CheckMeasures() {
  const auto* label = qobject_cast<QLabel*>(Find("SettingLabel"));
  const QString title = label != nullptr ? label->text() : "";
  Check(title.startsWith("CH1 1.00V  500.0us [Date:"), "the title of the measures: " + title);
  QStringList lines{"Tavik Technologies -[Measure]", "", "", "", "", title, ""};
  int row = 0;
  for (const auto& [caption, name, request] : kMeasures) {
    const QByteArray reply = instrument_.LastReply(QString(":MEASURE:") + request);
    QString value = reply.mid(reply.indexOf('=') + 1).chopped(2);
    // The instrument sends these without their sign.
    if (QRegularExpression("Duty|Vovr|Vpre").match(request).hasMatch()) value += "%";
    CheckRow(row++, {caption, value, VerdictOn(caption)});
    lines << QStringList{name, value.remove(' '), VerdictOn(caption)}.join('\t');
  }
  Check(RowCount() == row, "the list has no other row");
  CheckFile(kMeasureFile, lines);
}

void Tour::CheckTable() {
  const std::vector<int> bytes = instrument_.LastBlock(":DATA:CHANNEL1");
  const int count = static_cast<int>(bytes.size());
  const auto* label = qobject_cast<QLabel*>(Find("SettingLabel"));
  const QString title = label != nullptr ? label->text() : "";
  Check(title.startsWith(QString("CH1 1.00V  500.0us  Size=%1 [Date:").arg(count)),
        "the title of the table: " + title);
  QStringList lines{"Tavik Technologies -[Data]", "", "", "", title, "", "",
                    "NO.\tVoltage\tTime",         ""};
  const double perDivision = count == kWide ? 100 : 200;
  for (int i = 1; i <= count; ++i) {
    const double volts = (125 - bytes[static_cast<std::size_t>(i - 1)]) * kVolts / 25 - kOffset;
    const double seconds = kDelay - (count / 2.0 - i) * kSeconds / perDivision;
    const QStringList cells{QString::number(i), QString::number(volts, 'E', 2),
                            QString::number(seconds, 'E', 4)};
    if (i == 1 || i == count) CheckRow(i - 1, cells);
    lines << " " + cells[0] + " \t" + cells[1] + "\t" + cells[2];
  }
  Check(count > 0 && RowCount() == count,
        QString("the table has a row for each of %1 samples").arg(count));
  CheckFile(kSampleFile, lines);
}

}  // namespace oriolemark
