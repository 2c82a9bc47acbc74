#pragma once

#include <functional>
#include <memory>
#include <string>

#include "datasheet/records/DataSheet.h"
#include "platform/Prompts.h"

namespace oriolemark {

// Makes the window of an item of one kind. A kind whose maker is empty has records and nodes only.
using ViewMaker = std::function<std::unique_ptr<ItemView>()>;

namespace tree_image {
inline constexpr int kRoot = 1;
inline constexpr int kSheet = 2;
inline constexpr int kWave = 3;
inline constexpr int kMeasure = 4;
inline constexpr int kData = 5;
}  // namespace tree_image

// The add commands of the data sheet. A kind holds at most 16 items by them; the name of a new one
// comes from the count and may stand twice after a removal.
class FileFunc {
 public:
  FileFunc(DataSheet& sheet, TreeView& tree, Prompts& prompts)
      : sheet_(sheet), tree_(tree), prompts_(prompts) {}

  void AddWaveItem();
  void AddMeasureItem();
  void AddDataItem();

  // Whether the sheet's node stands in the tree. Enables or disables the add buttons by it.
  bool SheetExists();

  // The view in the slot, made if it is missing, with its tag set. Null for a kind without windows.
  ItemView* WaveView(int slot) { return View(sheet_.WaveViews, makeWaveView, slot); }
  ItemView* MeasureView(int slot) { return View(sheet_.MeasureViews, makeMeasureView, slot); }
  ItemView* DataView(int slot) { return View(sheet_.DataViews, makeDataView, slot); }

  std::function<void(bool enabled)> setAddButtons;
  ViewMaker makeWaveView;
  ViewMaker makeMeasureView;
  ViewMaker makeDataView;

 private:
  static ItemView* View(Slots<std::unique_ptr<ItemView>>& views, const ViewMaker& make, int slot);
  // Whether there is a sheet with room for one more item; shows why not.
  bool MayAdd(int count);
  // Name, view and node of the new item: what the three kinds have in common.
  template <typename Record>
  void Add(Record& record, ItemView* view, const char* word, int slot, int image);

  DataSheet& sheet_;
  TreeView& tree_;
  Prompts& prompts_;
};

}  // namespace oriolemark
