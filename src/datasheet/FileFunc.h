#pragma once

#include <functional>
#include <map>
#include <memory>

#include "datasheet/records/ItemKinds.h"
#include "platform/Prompts.h"
#include "platform/TreeView.h"

namespace oriolemark {

// Makes the window of an item of one kind.
using ViewMaker = std::function<std::unique_ptr<ItemView>()>;

// The add commands of the data sheet. A kind holds at most 16 items by them; the name of a new one
// comes from the count and may stand twice after a removal.
class FileFunc {
 public:
  FileFunc(DataSheet& sheet, TreeView& tree, Prompts& prompts)
      : sheet_(sheet), tree_(tree), prompts_(prompts) {}

  void AddWaveItem() { Add(ItemKind::Wave); }
  void AddMeasureItem() { Add(ItemKind::Measure); }
  void AddDataItem() { Add(ItemKind::Data); }

  // Whether the sheet's node is in the tree. Enables or disables the add buttons by it.
  bool SheetExists();

  // The view in the slot, made if it is missing, with its tag set. Null for a kind without a maker,
  // which has records and nodes only.
  ItemView* View(ItemKind kind, int slot);

  std::function<void(bool enabled)> setAddButtons;
  std::map<ItemKind, ViewMaker> makeView;

 private:
  // Whether there is a sheet with room for one more item; shows why not.
  bool MayAdd(int count);
  void Add(ItemKind kind);

  DataSheet& sheet_;
  TreeView& tree_;
  Prompts& prompts_;
};

}  // namespace oriolemark
