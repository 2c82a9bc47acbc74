#include "desktop/CtrlDialogWindow.h"

#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/Bind.h"
#include "desktop/Builders.h"
#include "desktop/ShownText.h"

namespace oriolemark {
namespace {

constexpr const char* kUnitNames[] = {"milliseconds", "microseconds", "nanoseconds", "picoseconds"};
constexpr int kRowsInSight = 15;

void AddUnitKeys(QBoxLayout& row, CtrlDialog& form) {
  for (std::size_t i = 0; i < form.cmdEnter.size(); ++i) {
    auto& key = Make<QPushButton>(QString("&") + CtrlDialog::kUnitKeys[i]);
    Name(key, QString("cmdEnter%1").arg(i), kUnitNames[i]);
    key.setToolTip(QString("OK, in %1").arg(kUnitNames[i]));
    key.setFixedWidth(key.fontMetrics().horizontalAdvance("mmmm"));
    row.addWidget(&key);
    Bind(key, form.cmdEnter[i]);
  }
}

}  // namespace

CtrlDialogWindow::CtrlDialogWindow(CtrlDialog& form, QWidget* parent)
    : FormDialog(form, "CtrlDialog", parent) {
  auto& layout = Make<QVBoxLayout>(this);
  layout.setSizeConstraint(QLayout::SetFixedSize);
  auto& frame = Make<QGroupBox>();
  frame.setObjectName("Frame");
  frame.setMinimumWidth(260);
  layout.addWidget(&frame);
  auto& row = Make<QHBoxLayout>(&frame);
  auto& combo = Make<QComboBox>();
  Name(combo, "Combo", "Value");
  combo.setMaxVisibleItems(kRowsInSight);
  // A list with a scroll bar. As a menu, 601 levels would be as high as the screen.
  combo.setStyleSheet("QComboBox { combobox-popup: 0; }");
  row.addWidget(&combo);
  Bind(combo, form.Combo);
  auto& input = Make<QLineEdit>();
  Name(input, "inputTxt", "Time in seconds");
  input.setToolTip("A time; OK takes it in seconds, the keys beside it in their unit");
  row.addWidget(&input, 1);
  Bind(input, form.inputTxt);
  AddUnitKeys(row, form);
  const QPointer<QGroupBox> guard(&frame);
  form.Frame.onChanged = [guard, &combo, &form] {
    if (!guard) return;
    const QString label = Shortened(FromWire(form.Frame.Text()));
    guard->setTitle(QString(label).replace('&', "&&"));
    if (!label.isEmpty()) combo.setAccessibleName(label);
  };
  // The first label was there before this window.
  form.Frame.onChanged();
  auto& buttons = Make<QHBoxLayout>();
  layout.addLayout(&buttons);
  buttons.addStretch(1);
  AddButton(buttons, "cmdOK", "OK", form.cmdOK).setDefault(true);
  AddButton(buttons, "cmdCancel", "Cancel", form.cmdCancel);
}

}  // namespace oriolemark
