#pragma once

#include <functional>
#include <map>
#include <memory>

#include "datasheet/records/ItemKinds.h"
#include "platform/Prompts.h"
#include "platform/TreeView.h"

namespace oriolemark {

// Creates the window of an item of one kind.
using ViewMaker = std::function<std::unique_ptr<ItemView>()>;

// The add commands of the data sheet. They add items of a kind up to 16. A new name is made from
// the count, so it may occur twice after a removal.
class FileFunc {
 public:
  FileFunc(DataSheet& sheet, TreeView& tree, Prompts& prompts)
      : sheet_(sheet), tree_(tree), prompts_(prompts) {}

  void Add(ItemKind kind);
  void AddWaveItem() { Add(ItemKind::Wave); }
  void AddMeasureItem() { Add(ItemKind::Measure); }
  void AddDataItem() { Add(ItemKind::Data); }

  // Whether the sheet's node is in the tree. Also enables or disables the add buttons to match.
  bool SheetExists();

  // Returns the view in the slot with its tag set, and creates it if it is missing. Returns null
  // for a kind without a maker: such a kind has only records and nodes.
  ItemView* View(ItemKind kind, int slot);

  std::function<void(bool enabled)> setAddButtons;
  std::map<ItemKind, ViewMaker> makeView;

 private:
  // Whether there is a sheet with room for one more item. If not, shows the reason.
  bool MayAdd(int count);

  DataSheet& sheet_;
  TreeView& tree_;
  Prompts& prompts_;
};

}  // namespace oriolemark
