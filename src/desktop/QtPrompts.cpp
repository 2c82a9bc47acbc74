#include "desktop/QtPrompts.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QList>
#include <QMessageBox>
#include <QPointer>
#include <QScopeGuard>
#include <QString>
#include <QStringList>
#include <memory>

#include "desktop/ModalDialog.h"
#include "desktop/PagePrinter.h"
#include "desktop/ShownText.h"

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

struct ButtonsRow {
  QMessageBox::StandardButtons shown;
  QMessageBox::StandardButton first;   // the default button
  QMessageBox::StandardButton escape;  // the button of the Escape key
  MessageAnswer cancelled;
};

const ButtonsRow& RowOf(MessageButtons buttons) {
  using Box = QMessageBox;
  static const ButtonsRow kOk{Box::Ok, Box::Ok, Box::Ok, MessageAnswer::Ok};
  static const ButtonsRow kYesNo{Box::Yes | Box::No, Box::No, Box::No, MessageAnswer::No};
  static const ButtonsRow kYesNoCancel{Box::Yes | Box::No | Box::Cancel, Box::Yes, Box::Cancel,
                                       MessageAnswer::Cancel};
  if (buttons == MessageButtons::Ok) return kOk;
  return buttons == MessageButtons::YesNo ? kYesNo : kYesNoCancel;
}

MessageAnswer AnswerOf(int result, MessageButtons buttons) {
  if (result == QMessageBox::Yes) return MessageAnswer::Yes;
  if (result == QMessageBox::No) return MessageAnswer::No;
  return RowOf(buttons).cancelled;
}

QString Lines(const std::string& text) {
  auto lines = QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
  lines.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  return lines.replace(QLatin1Char('\r'), QLatin1Char('\n'));
}

constexpr const char* kFolderSection = "Settings";
constexpr const char* kFolderKey = "LastFolder";

struct Filter {
  QString name;
  QString pattern;
  QString suffix;  // empty if any suffix is allowed
};

// Names and patterns alternate, separated by bars.
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

// The filter that is selected at the end counts, however the user chose it.
class NamingDialog : public QFileDialog {
 public:
  NamingDialog(QWidget* parent, const FileQuestion& question)
      : QFileDialog(parent), filters_(FiltersOf(question.filter)) {
    setAcceptMode(question.action == FileAction::Save ? AcceptSave : AcceptOpen);
    // The code that opens the file reports a name without a file.
    setFileMode(AnyFile);
    // The suffix is added before the toolkit asks about an existing file. A dialog of the desktop
    // would ask first.
    setOption(DontUseNativeDialog);
    // The names of the filters include their patterns already.
    setOption(HideNameFilterDetails);
    QStringList names;
    for (const Filter& filter : filters_) names << filter.name + " (" + filter.pattern + ")";
    setNameFilters(names);
  }

 protected:
  void accept() override {
    // The toolkit returns it with or without its pattern.
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
  const ButtonsRow& buttons = RowOf(message.buttons);
  box.setStandardButtons(buttons.shown);
  box.setDefaultButton(buttons.first);
  box.setEscapeButton(buttons.escape);
  if (message.mayMute) {
    box.setCheckBox(
        std::make_unique<QCheckBox>("Do not show this message again during this transfer")
            .release());
  }
  // The buttons show only text, as in our own dialogs.
  for (QAbstractButton* button : box.buttons()) button->setIcon({});
  // No other window of the program may be used while a question is open.
  box.setWindowModality(Qt::ApplicationModal);
}

}  // namespace

MessageAnswer QtPrompts::Show(const Message& message) {
  if (waiting_.Closing()) return RowOf(message.buttons).cancelled;
  // Its parent window owns it, and may be destroyed while events are served.
  const QPointer<QMessageBox> box =
      std::make_unique<QMessageBox>(QApplication::activeWindow()).release();
  const auto destroy = qScopeGuard([&box] { delete box.data(); });
  Fill(*box, message);
  auto answer = RowOf(message.buttons).cancelled;
  bool answered = false;
  QObject::connect(box, &QDialog::finished, [&](int result) {
    const QCheckBox* mute = box->checkBox();
    answer = mute != nullptr && mute->isChecked() ? MessageAnswer::OkAndMute
                                                  : AnswerOf(result, message.buttons);
    answered = true;
  });
  box->show();
  waiting_.WaitForUser([&] { return answered || box.isNull(); });
  // The answer is known, so the signals of its destruction are disconnected.
  if (!box.isNull()) box->disconnect();
  return answer;
}

void QtPrompts::ShowPrinterDialog(const std::string& title) {
  printer_.ShowDialog(title);
}

QString QtPrompts::LastFolder() {
  const auto kept = store_.Read(kFolderSection, kFolderKey);
  const QString folder = QString::fromStdString(kept.value_or(std::string()));
  return !folder.isEmpty() && QDir(folder).exists() ? folder : QDir::homePath();
}

std::string QtPrompts::AskFileName(const FileQuestion& question) {
  if (waiting_.Closing()) return {};
  NamingDialog dialog(QApplication::activeWindow(), question);
  dialog.setDirectory(LastFolder());
  dialog.setWindowTitle(Lines(question.title));
  if (!RunModal(dialog, waiting_)) return {};
  const QString path = dialog.selectedFiles().value(0);
  // A name may have been typed with its path, so the folder of the dialog does not count.
  const QString folder = QFileInfo(path).absolutePath();
  store_.Write(kFolderSection, kFolderKey, folder.toStdString());
  return path.toStdString();
}

}  // namespace oriolemark
