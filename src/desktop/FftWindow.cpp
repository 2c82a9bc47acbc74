#include "desktop/FftWindow.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>

#include "desktop/Bind.h"
#include "desktop/Builders.h"
#include "desktop/TreeBinding.h"

namespace oriolemark {
namespace {

constexpr int kTreeWidth = 110;
constexpr int kNameLength = 24;  // characters; a longer name does not widen the window

struct ComboWords {
  const char* name;
  QString spoken;
  QString toolTip;
};

QComboBox& AddCombo(QFormLayout& rows, const QString& caption, const ComboWords& words,
                    ComboBox& model) {
  auto& combo = Make<QComboBox>();
  Name(combo, words.name, words.spoken);
  combo.setToolTip(words.toolTip);
  combo.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  combo.setMinimumContentsLength(kNameLength);
  if (caption.isEmpty()) {
    rows.addRow(&combo);
  } else {
    rows.addRow(caption, &combo);
  }
  Bind(combo, model);
  return combo;
}

QFormLayout& AddRows(QBoxLayout& column, const QString& title) {
  auto& rows = Make<QFormLayout>();
  AddGroup(column, title).addLayout(&rows);
  return rows;
}

void AddFrames(QBoxLayout& column, frmWaveSetting& form) {
  AddCombo(AddRows(column, "&Target Window"), {},
           {"TargetCombo", "Target Window", "The waveform that gets the trace. It must be read."},
           form.TargetCombo);
  AddCombo(AddRows(column, "&Source"), {},
           {"SourceCombo", "Source", "A channel of the target. It does not change the trace yet."},
           form.SourceCombo);
  QFormLayout& parameters = AddRows(column, "FFT Parameters");
  AddCombo(parameters, "FFT S&cale",
           {"ScaleCombo", "FFT Scale", "The scale does not change the trace yet."},
           form.ScaleCombo);
  AddCombo(parameters, "FFT &Window",
           {"WindowCombo", "FFT Window", "The window function does not change the trace yet."},
           form.WindowCombo);
  auto& options = Make<QHBoxLayout>();
  parameters.addRow("Display ", &options);
  AddOptions(options, "OptScreen", form.OptScreen, {{"&Full Screen"}, {"S&plit"}});
  options.addStretch(1);
}

void AddTree(QBoxLayout& row, frmWaveSetting& form) {
  auto& tree = Make<QTreeWidget>();
  Name(tree, "TreeView", FromWire(form.Caption()));
  tree.setFixedWidth(kTreeWidth);
  tree.setRootIsDecorated(false);
  Make<TreeBinding>(tree, form.TreeView, QStringList{"FFT"});
  tree.setEditTriggers(QAbstractItemView::NoEditTriggers);
  row.insertWidget(0, &tree);
}

}  // namespace

FftWindow::FftWindow(frmWaveSetting& form, QWidget* parent)
    : FormDialog(form, "frmWaveSetting", parent) {
  auto& layout = Make<QVBoxLayout>(this);
  layout.setSizeConstraint(QLayout::SetFixedSize);
  auto& row = Make<QHBoxLayout>();
  layout.addLayout(&row);
  auto& column = Make<QVBoxLayout>();
  row.addLayout(&column);
  AddFrames(column, form);
  auto& buttons = Make<QHBoxLayout>();
  layout.addLayout(&buttons);
  buttons.addStretch(1);
  AddButton(buttons, "cmdOK", "OK", form.cmdOK).setDefault(true);
  AddButton(buttons, "cmdCancel", "Cancel", form.cmdCancel);
  // Added last, because the focus begins in the target. The tree has nothing to choose.
  AddTree(row, form);
}

}  // namespace oriolemark
