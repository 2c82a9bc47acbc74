#include "desktop/Dialogs.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWindow>

#include "desktop/Bind.h"
#include "desktop/Builders.h"
#include "desktop/Icons.h"

namespace oriolemark {
namespace {

constexpr double kLarge = 2.2;
constexpr double kSmall = 0.9;

// `size` is a multiple of the desktop's own size of text.
QLabel& AddLabel(QBoxLayout& layout, const QString& text, double size, bool bold) {
  auto& label = Make<QLabel>(text);
  label.setTextFormat(Qt::PlainText);
  QFont font = label.font();
  if (font.pointSizeF() > 0) font.setPointSizeF(font.pointSizeF() * size);
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
  AddLabel(column, kApplicationTitle, kLarge, true);
  AddLabel(column, FromWire(version.Text()), 1, false).setObjectName("lblVersion");
  return column;
}

}  // namespace

FormDialog::FormDialog(Form& form, const QString& name, QWidget* parent)
    : QDialog(parent), form_(form) {
  setObjectName(name);
  setWindowIcon(PictureNamed("Oriolemark"));
  Follow(*this, form,
         {.show = [this] { ShowForm(); },
          .place =
              [this] {
                // The size comes first. A hidden window that is sized after it was placed is shown
                // a frame's width further up and left each time.
                adjustSize();
                move(ToPixels(form_.Place()).topLeft());
              },
          .front =
              [this] {
                setWindowState(windowState() & ~Qt::WindowMinimized);
                raise();
                activateWindow();
              }});
}

void FormDialog::reject() {
  form_.Unload();
}

void FormDialog::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  QWidget* first = nextInFocusChain();
  const auto takesFocus = [this](const QWidget& widget) {
    return (widget.focusPolicy() & Qt::TabFocus) != 0 && widget.isEnabled() &&
           widget.isVisibleTo(this);
  };
  while (first != this && !takesFocus(*first)) first = first->nextInFocusChain();
  // The toolkit selects a line of text when the focus comes by Tab.
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

SplashWindow::SplashWindow(frmSplash& form)
    : FormDialog(form, "frmSplash", nullptr), splash_(form) {
  setWindowFlags(Qt::SplashScreen);
  auto& layout = Make<QVBoxLayout>(this);
  layout.setContentsMargins(30, 24, 40, 24);
  QVBoxLayout& column = AddProduct(layout, form.lblVersion);
  AddLabel(column, "TAVIK TECHNOLOGIES", kSmall, false);
}

void SplashWindow::paintEvent(QPaintEvent* event) {
  FormDialog::paintEvent(event);
  // A paint before the desktop has put the window up is seen by nobody.
  splash_.Drawn = windowHandle() != nullptr && windowHandle()->isExposed();
}

AboutWindow::AboutWindow(frmAbout& form, QWidget* parent) : FormDialog(form, "frmAbout", parent) {
  auto& layout = Make<QVBoxLayout>(this);
  layout.setSizeConstraint(QLayout::SetFixedSize);
  QVBoxLayout& column = AddProduct(layout, form.lblVersion);
  AddLabel(column, "Works a TX5000 digital storage oscilloscope from the desktop.", 1, false);
  AddLabel(layout,
           "This program comes without warranty of any kind. Check important\n"
           "readings on the instrument.",
           kSmall, false);
  auto& buttons = Make<QHBoxLayout>();
  layout.addLayout(&buttons);
  buttons.addStretch(1);
  AddButton(buttons, "cmdOK", "OK", form.cmdOK).setDefault(true);
  AddButton(buttons, "cmdSysInfo", "System Info...", form.cmdSysInfo);
}

DocTypeWindow::DocTypeWindow(DocTypeDialog& form, const QString& name, QWidget* parent)
    : FormDialog(form, name, parent) {
  auto& layout = Make<QHBoxLayout>(this);
  layout.setSizeConstraint(QLayout::SetFixedSize);
  std::vector<OptionText> texts;
  for (const std::string& type : form.Types) texts.push_back({FromWire(type)});
  AddOptions(AddGroup(layout, "File Type"), "NewOption", form.NewOption, texts);
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
