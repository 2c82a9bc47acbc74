#include "drivers/QtPrompts.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QScopeGuard>
#include <QString>
#include <memory>

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

void Fill(QMessageBox& box, const Message& message) {
  box.setTextFormat(Qt::PlainText);
  box.setText(Lines(message.text));
  box.setWindowTitle(Lines(message.title));
  box.setIcon(IconOf(message.icon));
  if (message.buttons == MessageButtons::Ok) {
    box.setStandardButtons(QMessageBox::Ok);
    box.setDefaultButton(QMessageBox::Ok);
  } else {
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    box.setDefaultButton(QMessageBox::Yes);
    box.setEscapeButton(QMessageBox::Cancel);
  }
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
    answer = AnswerOf(result, message.buttons);
    answered = true;
  });
  box->show();
  waiting_.WaitForUser([&] { return answered || box.isNull(); });
  // Its destruction must not be heard: the answer is given.
  if (!box.isNull()) box->disconnect();
  return answer;
}

void QtPrompts::ShowPrinterDialog(const std::string& title) {
  if (waiting_.Closing()) return;
  QPrinter printer;
  QPrintDialog dialog(&printer);
  dialog.setWindowTitle(Lines(title));
  dialog.setWindowModality(Qt::ApplicationModal);
  bool answered = false;
  QObject::connect(&dialog, &QDialog::finished, [&answered](int) { answered = true; });
  dialog.show();
  waiting_.WaitForUser([&answered] { return answered; });
  dialog.disconnect();
}

}  // namespace oriolemark
