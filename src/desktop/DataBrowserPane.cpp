#include "desktop/DataBrowserPane.h"

#include <QTreeWidget>
#include <QVBoxLayout>

#include "desktop/Bind.h"
#include "desktop/Menus.h"
#include "desktop/TreeBinding.h"

namespace oriolemark {
namespace {

// Pictures of the tree, by image from 1 on. Those of the items follow.
const QStringList kPictures{"TreeGroupClosed/TreeGroupOpen", "TreeSheet"};

}  // namespace

DataBrowserPane::DataBrowserPane(frmDataSheetTree& form) {
  auto& column = Make<QVBoxLayout>(this);
  column.setContentsMargins(0, 0, 0, 0);
  auto& tree = Make<QTreeWidget>();
  Name(tree, "DataSheetTree", FromWire(form.Caption()));
  QStringList pictures = kPictures;
  for (const ItemKind kind : kTreeOrder) pictures << RowOf(kind).word;
  const auto& binding = Make<TreeBinding>(tree, form.DataSheetTree, pictures);
  column.addWidget(&tree, 1);
  AddPopup(*this, "pop_mnu1", form.pop_mnu1, [&binding] { return binding.MenuPlace(); });
}

}  // namespace oriolemark
