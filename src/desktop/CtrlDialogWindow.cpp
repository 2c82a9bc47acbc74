#include "desktop/CtrlDialogWindow.h"

#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/Bind.h"

namespace oriolemark {
namespace {

constexpr const char* kUnitNames[] = {"milliseconds", "microseconds", "nanoseconds", "picoseconds"};
constexpr int kRowsInSight = 15;

void AddUnitKeys(QBoxLayout& row, CtrlDialog& form) {
  for (std::size_t i = 0; i < form.cmdEnter.size(); ++i) {
    auto& key = Make<QPushButton>(QString("&") + CtrlDialog::kUnitKeys[i]);
    Name(key, ("cmdEnter" + std::to_string(i)).c_str(), kUnitNames[i]);
    key.setToolTip(QString("OK, in %1").arg(kUnitNames[i]));
    key.setFixedWidth(key.fontMetrics().horizontalAdvance("mmmm"));
    row.addWidget(&key);
    Bind(key, form.cmdEnter[i]);
  }
}

}  // namespace

CtrlDialogWindow::CtrlDialogWindow(CtrlDialog& form, QWidget* parent)
    : FormDialog(form, "CtrlDialog", parent), combo_(Make<QComboBox>()), input_(Make<QLineEdit>()) {
  auto& layout = Make<QVBoxLayout>(this);
  layout.setSizeConstraint(QLayout::SetFixedSize);
  auto& frame = Make<QGroupBox>();
  frame.setObjectName("Frame");
  frame.setMinimumWidth(260);
  layout.addWidget(&frame);
  auto& row = Make<QHBoxLayout>(&frame);
  Name(combo_, "Combo", "Value");
  combo_.setMaxVisibleItems(kRowsInSight);
  // A list with a scroll bar: a menu of 601 levels would be as high as the screen.
  combo_.setStyleSheet("QComboBox { combobox-popup: 0; }");
  row.addWidget(&combo_);
  Bind(combo_, form.Combo);
  Name(input_, "inputTxt", "Time in seconds");
  input_.setToolTip("A time; OK takes it in seconds, the keys beside it in their unit");
  row.addWidget(&input_, 1);
  Bind(input_, form.inputTxt);
  AddUnitKeys(row, form);
  const QPointer<QGroupBox> guard(&frame);
  form.Frame.onChanged = [guard, this, &form] {
    if (!guard) return;
    const QString label = FromWire(form.Frame.Text());
    guard->setTitle(label);
    combo_.setAccessibleName(label);
  };
  auto& buttons = Make<QHBoxLayout>();
  layout.addLayout(&buttons);
  buttons.addStretch(1);
  AddButton(buttons, "cmdOK", "OK", form.cmdOK).setDefault(true);
  AddButton(buttons, "cmdCancel", "Cancel", form.cmdCancel);
}

void CtrlDialogWindow::showEvent(QShowEvent* event) {
  FormDialog::showEvent(event);
  // The window is the same for every setting: the value has the focus, not what had it last.
  if (!combo_.isHidden()) return combo_.setFocus();
  input_.setFocus();
  input_.selectAll();
}

}  // namespace oriolemark
