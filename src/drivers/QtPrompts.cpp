#include "drivers/QtPrompts.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QList>
#include <QMessageBox>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QScopeGuard>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <memory>
#include <optional>

#include "drivers/ShownText.h"

namespace oriolemark {

namespace {

QMessageBox::Icon IconOf(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::Exclamation:
      return QMessageBox::Warning;
    case MessageIcon::Critical:
      return QMessageBox::Critical;
    case MessageIcon::Question:
      return QMessageBox::Question;
    case MessageIcon::Information:
      return QMessageBox::Information;
    case MessageIcon::None:
      break;
  }
  return QMessageBox::NoIcon;
}

MessageAnswer CancelledAnswer(MessageButtons buttons) {
  return buttons == MessageButtons::Ok ? MessageAnswer::Ok : MessageAnswer::Cancel;
}

MessageAnswer AnswerOf(int result, MessageButtons buttons) {
  if (buttons == MessageButtons::YesNoCancel) {
    if (result == QMessageBox::Yes) return MessageAnswer::Yes;
    if (result == QMessageBox::No) return MessageAnswer::No;
  }
  return CancelledAnswer(buttons);
}

QString Lines(const std::string& text) {
  auto lines = QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
  lines.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  return lines.replace(QLatin1Char('\r'), QLatin1Char('\n'));
}

// How often a dialog looks whether the program is closing, in ms.
constexpr int kWatchInterval = 100;

struct Filter {
  QString name;
  QString pattern;
  QString suffix;  // empty where any will do
};

// Name and pattern in turn, with bars between them.
QList<Filter> FiltersOf(const std::string& text) {
  const QStringList parts = QString::fromStdString(text).split('|');
  QList<Filter> filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    const bool any = parts[i + 1] == "*.*";
    filters.append({parts[i], any ? QString("*") : parts[i + 1],
                    any ? QString() : parts[i + 1].section('.', -1)});
  }
  return filters;
}

// Whichever way the user came to a filter, it is the one chosen at the end that counts.
class NamingDialog : public QFileDialog {
 public:
  NamingDialog(QWidget* parent, const FileQuestion& question)
      : QFileDialog(parent), filters_(FiltersOf(question.filter)) {
    setAcceptMode(question.action == FileAction::Save ? AcceptSave : AcceptOpen);
    // A name that leads to no file is for whoever opens it to refuse.
    setFileMode(AnyFile);
    // The names of the filters hold their patterns already.
    setOption(HideNameFilterDetails);
    QStringList names;
    for (const Filter& filter : filters_) names << filter.name + " (" + filter.pattern + ")";
    setNameFilters(names);
  }

 protected:
  void accept() override {
    // It comes with its pattern behind it or without, as the toolkit pleases.
    const QString chosen = selectedNameFilter();
    for (const Filter& filter : filters_) {
      if (acceptMode() == AcceptSave && chosen.startsWith(filter.name))
        setDefaultSuffix(filter.suffix);
    }
    QFileDialog::accept();
  }

 private:
  const QList<Filter> filters_;
};

void Fill(QMessageBox& box, const Message& message) {
  box.setTextFormat(Qt::PlainText);
  const QString text = Lines(message.text) + QString::fromStdString(message.systemText);
  box.setText(Breakable(Shortened(text, kShownInMessage)));
  box.setWindowTitle(Shortened(Lines(message.title)));
  box.setIcon(IconOf(message.icon));
  if (message.buttons == MessageButtons::Ok) {
    box.setStandardButtons(QMessageBox::Ok);
    box.setDefaultButton(QMessageBox::Ok);
  } else {
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    box.setDefaultButton(QMessageBox::Yes);
    box.setEscapeButton(QMessageBox::Cancel);
  }
  if (message.mayMute) {
    box.setCheckBox(
        std::make_unique<QCheckBox>("Do not show this message again during this transfer")
            .release());
  }
  // As in our own dialogs, the words alone.
  for (QAbstractButton* button : box.buttons()) button->setIcon({});
  // A second window of the program must not be worked behind an open question.
  box.setWindowModality(Qt::ApplicationModal);
}

}  // namespace

MessageAnswer QtPrompts::Show(const Message& message) {
  if (waiting_.Closing()) return CancelledAnswer(message.buttons);
  // The window it stands before owns it, and may go first while events are served.
  const QPointer<QMessageBox> box =
      std::make_unique<QMessageBox>(QApplication::activeWindow()).release();
  const auto destroy = qScopeGuard([&box] { delete box.data(); });
  Fill(*box, message);
  auto answer = CancelledAnswer(message.buttons);
  bool answered = false;
  QObject::connect(box, &QDialog::finished, [&](int result) {
    const QCheckBox* mute = box->checkBox();
    answer = mute != nullptr && mute->isChecked() ? MessageAnswer::OkAndMute
                                                  : AnswerOf(result, message.buttons);
    answered = true;
  });
  box->show();
  waiting_.WaitForUser([&] { return answered || box.isNull(); });
  // Its destruction must not be heard: the answer is given.
  if (!box.isNull()) box->disconnect();
  return answer;
}

bool QtPrompts::Run(QDialog& dialog, const std::string& title) {
  dialog.setWindowTitle(Lines(title));
  dialog.setWindowModality(Qt::ApplicationModal);
  std::optional<int> result;
  QObject::connect(&dialog, &QDialog::finished, [&result](int code) { result = code; });
  // The toolkit's own questions before the dialog wait by themselves, and end only when told.
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [this] {
    QWidget* front = QApplication::activeModalWidget();
    if (waiting_.Closing() && front != nullptr) front->close();
  });
  watch.start(kWatchInterval);
  dialog.show();
  waiting_.WaitForUser([&result] { return result.has_value(); });
  dialog.disconnect();
  return result == QDialog::Accepted;
}

void QtPrompts::ShowPrinterDialog(const std::string& title) {
  if (waiting_.Closing()) return;
  QPrinter printer;
  QPrintDialog dialog(&printer, QApplication::activeWindow());
  Run(dialog, title);
}

std::string QtPrompts::AskFileName(const FileQuestion& question) {
  if (waiting_.Closing()) return {};
  NamingDialog dialog(QApplication::activeWindow(), question);
  dialog.setDirectory(folder_.isEmpty() ? QDir::homePath() : folder_);
  if (!Run(dialog, question.title)) return {};
  folder_ = dialog.directory().absolutePath();
  return dialog.selectedFiles().value(0).toStdString();
}

}  // namespace oriolemark
