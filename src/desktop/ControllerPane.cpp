#include "desktop/ControllerPane.h"

#include <QHBoxLayout>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "desktop/Bind.h"
#include "desktop/Builders.h"
#include "desktop/Menus.h"
#include "desktop/TreeBinding.h"

namespace oriolemark {
namespace {

// Pictures of the tree, by image from 1 on.
const QStringList kPictures{
    "TreeInstrument", "TreeGroupClosed/TreeGroupOpen", "TreeLeaf", "TreeAction", "", "Panel"};

constexpr int kIndentation = 10;  // pixels; leaves room for labels with their values

void AddExchange(QBoxLayout& row, const QString& text, const QString& toolTip, Button& model) {
  QToolButton& button =
      MakeToolButton(*row.parentWidget(), "cmd" + text, text, toolTip, text, model);
  button.setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  button.setFocusPolicy(Qt::StrongFocus);
  row.addWidget(&button);
}

}  // namespace

ControllerPane::ControllerPane(frmCtrlList& form) {
  auto& column = Make<QVBoxLayout>(this);
  column.setContentsMargins(0, 0, 0, 0);
  auto& row = Make<QHBoxLayout>();
  column.addLayout(&row);
  AddExchange(row, "Upload", "Sends all settings to the oscilloscope", form.cmdUpload);
  row.addStretch(1);
  AddExchange(row, "Download", "Reads all settings from the oscilloscope", form.cmdDownload);
  auto& tree = Make<QTreeWidget>();
  Name(tree, "CtrlTreeView", FromWire(form.Caption()));
  tree.setIndentation(kIndentation);
  const auto& binding = Make<TreeBinding>(tree, form.CtrlTreeView, kPictures);
  column.addWidget(&tree, 1);
  AddPopup(*this, "popmenu1", form.popmenu1, [&binding] { return binding.MenuPlace(); });
}

}  // namespace oriolemark
