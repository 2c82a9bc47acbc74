#include "desktop/Dialogs.h"

#include <QCloseEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "desktop/Bind.h"
#include "desktop/Icons.h"

namespace oriolemark {
namespace {

QLabel& AddLabel(QBoxLayout& layout, const QString& text, int points, bool bold) {
  auto& label = Make<QLabel>(text);
  label.setTextFormat(Qt::PlainText);
  QFont font = label.font();
  font.setPointSize(points);
  font.setBold(bold);
  label.setFont(font);
  layout.addWidget(&label);
  return label;
}

// Picture at the left, product and version beside it.
QVBoxLayout& AddProduct(QBoxLayout& layout, const Label& version) {
  auto& row = Make<QHBoxLayout>();
  layout.addLayout(&row);
  auto& picture = Make<QLabel>();
  picture.setPixmap(PictureNamed("Oriolemark").pixmap(72, 72));
  row.addWidget(&picture);
  auto& column = Make<QVBoxLayout>();
  row.addLayout(&column);
  AddLabel(column, kApplicationTitle, 22, true);
  AddLabel(column, FromWire(version.Text()), 10, false).setObjectName("lblVersion");
  return column;
}

}  // namespace

QPushButton& AddButton(QBoxLayout& layout, const char* name, const QString& text, Button& model) {
  auto& button = Make<QPushButton>(text);
  Name(button, name, text);
  layout.addWidget(&button);
  Bind(button, model);
  return button;
}

FormDialog::FormDialog(Form& form, const char* name, QWidget* parent)
    : QDialog(parent), form_(form) {
  setObjectName(QString::fromLatin1(name));
  setWindowIcon(PictureNamed("Oriolemark"));
  const QPointer<FormDialog> guard(this);
  form.onChanged = [guard] {
    if (guard) guard->ShowForm();
  };
  form.onMoved = [guard] {
    if (!guard) return;
    // A window that is sized after it was placed, and before it is up, loses its place: its frame
    // is put around what was asked for, and so a little further up and left each time.
    guard->adjustSize();
    guard->move(ToPixels(guard->form_.Place()).topLeft());
  };
  form.onFront = [guard] {
    if (!guard) return;
    guard->raise();
    guard->activateWindow();
  };
  form.onRepaint = [guard] {
    if (guard) guard->repaint();
  };
}

void FormDialog::reject() {
  form_.Unload();
}

void FormDialog::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  QWidget* first = nextInFocusChain();
  const auto takesFocus = [this](const QWidget& widget) {
    return (widget.focusPolicy() & Qt::TabFocus) != 0 && widget.isVisibleTo(this);
  };
  while (first != this && !takesFocus(*first)) first = first->nextInFocusChain();
  // As with Tab, so that a line of text is selected.
  first->setFocus(Qt::TabFocusReason);
}

void FormDialog::closeEvent(QCloseEvent* event) {
  event->setAccepted(form_.Unload());
}

void FormDialog::moveEvent(QMoveEvent*) {
  form_.NotePlace(ToUnits(QRect(pos(), size())));
}

void FormDialog::ShowForm() {
  ShowTitle(*this, form_);
  if (isHidden() != form_.Visible()) return;
  if (form_.Visible()) setWindowModality(form_.Modal() ? Qt::ApplicationModal : Qt::NonModal);
  setVisible(form_.Visible());
}

SplashWindow::SplashWindow(frmSplash& form) : FormDialog(form, "frmSplash", nullptr) {
  setWindowFlags(Qt::SplashScreen);
  auto& layout = Make<QVBoxLayout>(this);
  layout.setContentsMargins(30, 24, 40, 24);
  QVBoxLayout& column = AddProduct(layout, form.lblVersion);
  AddLabel(column, "TAVIK TECHNOLOGIES", 9, false);
}

AboutWindow::AboutWindow(frmAbout& form, QWidget* parent) : FormDialog(form, "frmAbout", parent) {
  auto& layout = Make<QVBoxLayout>(this);
  layout.setSizeConstraint(QLayout::SetFixedSize);
  QVBoxLayout& column = AddProduct(layout, form.lblVersion);
  AddLabel(column, "Works a TX5000 digital storage oscilloscope from the desktop.", 10, false);
  AddLabel(layout,
           "This program comes without warranty of any kind. Check what matters\n"
           "on the instrument itself.",
           9, false);
  auto& buttons = Make<QHBoxLayout>();
  layout.addLayout(&buttons);
  buttons.addStretch(1);
  AddButton(buttons, "cmdOK", "OK", form.cmdOK).setDefault(true);
  AddButton(buttons, "cmdSysInfo", "System Info...", form.cmdSysInfo);
}

DocTypeWindow::DocTypeWindow(DocTypeDialog& form, const char* name, QWidget* parent)
    : FormDialog(form, name, parent) {
  auto& layout = Make<QHBoxLayout>(this);
  layout.setSizeConstraint(QLayout::SetFixedSize);
  auto& group = Make<QGroupBox>("File Type");
  layout.addWidget(&group);
  auto& list = Make<QVBoxLayout>(&group);
  std::vector<QRadioButton*> options;
  for (const std::string& type : form.Types) {
    auto& option = Make<QRadioButton>(FromWire(type));
    const QByteArray numbered = "NewOption" + QByteArray::number(int(options.size()));
    Name(option, numbered.constData(), FromWire(type));
    list.addWidget(&option);
    options.push_back(&option);
  }
  Bind(options, form.NewOption);
  auto& buttons = Make<QVBoxLayout>();
  layout.addLayout(&buttons);
  AddButton(buttons, "cmdOK", "OK", form.cmdOK).setDefault(true);
  AddButton(buttons, "cmdCancel", "Cancel", form.cmdCancel);
  buttons.addStretch(1);
}

ProgressWindow::ProgressWindow(frmPrgress& form, QWidget* parent)
    : FormDialog(form, "frmPrgress", parent) {
  setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
  auto& layout = Make<QVBoxLayout>(this);
  auto& bar = Make<QProgressBar>();
  Name(bar, "ProgressBar1", "Progress");
  bar.setMinimumWidth(320);
  layout.addWidget(&bar);
  layout.setSizeConstraint(QLayout::SetFixedSize);
  Bind(bar, form.ProgressBar1);
}

}  // namespace oriolemark
