#pragma once

#include <functional>
#include <map>
#include <memory>

#include "datasheet/records/ItemKinds.h"
#include "datasheet/records/TransferScratch.h"
#include "platform/Prompts.h"
#include "platform/TreeView.h"

namespace oriolemark {

// Creates the window of an item of one kind.
using ViewMaker = std::function<std::unique_ptr<ItemView>()>;

// The commands that add and remove items. A kind holds up to 16 items that were added. A new name
// is made from the count, so it may occur twice after a removal.
class FileFunc {
 public:
  FileFunc(DataSheet& sheet, TransferScratch& scratch, TreeView& tree, Prompts& prompts)
      : sheet_(sheet), scratch_(scratch), tree_(tree), prompts_(prompts) {}

  void Add(ItemKind kind);
  void AddWaveItem() { Add(ItemKind::Wave); }
  void AddMeasureItem() { Add(ItemKind::Measure); }
  void AddDataItem() { Add(ItemKind::Data); }

  // Removes the item in a slot in use. The items behind it move up by one slot, and their open
  // views show them there. A reading that runs follows its item, or is dropped with it.
  void Remove(ItemKind kind, int slot);
  // Unloads every view and empties the three lists. The records keep their contents. A reading that
  // runs is dropped.
  void CloseAllItems();
  // Adds the node of an item in use to the sheet's node.
  void AddNode(ItemKind kind, int slot);
  // Shows the item's view under its name.
  void ShowView(ItemKind kind, int slot);

  // Whether the sheet's node is in the tree. Also enables or disables the add buttons to match.
  bool SheetExists();
  // The same, but shows a message if the sheet is missing.
  bool RequireSheet();

  // Returns the view in the slot with its tag set, and creates it if it is missing. Returns null
  // for a kind without a maker: such a kind has only records and nodes.
  ItemView* View(ItemKind kind, int slot);

  std::function<void(bool enabled)> setAddButtons;
  std::map<ItemKind, ViewMaker> makeView;

 private:
  // Whether there is a sheet with room for one more item. If not, shows the reason.
  bool MayAdd(int count);
  void UnloadView(ItemKind kind, int slot);

  DataSheet& sheet_;
  TransferScratch& scratch_;
  TreeView& tree_;
  Prompts& prompts_;
};

}  // namespace oriolemark
