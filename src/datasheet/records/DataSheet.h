#pragma once

#include <array>
#include <memory>
#include <string>

#include "datasheet/records/DataRecord.h"
#include "datasheet/records/MeasureRecord.h"
#include "datasheet/records/WaveRecord.h"
#include "platform/Form.h"
#include "platform/WatchedFlag.h"

namespace oriolemark {

inline constexpr int kSheetSlots = 18;

// The view of an item: a window whose tag holds the item's slot number in decimal. Once created, a
// view stays in its slot until the program ends. Closing only unloads it.
class ItemView : public Form {
 public:
  // A reading has just filled the record. Does nothing unless the view is loaded.
  virtual void ShowReading() = 0;
};

template <typename Record>
using Slots = std::array<Record, kSheetSlots>;

// The document: items of three kinds, each kind in slots 0 to count - 1 without gaps. When records
// move to other slots, the views stay where they are.
struct DataSheet {
  std::string FileName;  // empty until the sheet is saved or opened
  std::string Title;
  WatchedFlag Modified;
  Slots<std::unique_ptr<ItemView>> WaveViews;
  Slots<WaveRecord> Waves;
  int WaveCount = 0;
  Slots<std::unique_ptr<ItemView>> DataViews;
  Slots<DataRecord> Datas;
  int DataCount = 0;
  Slots<std::unique_ptr<ItemView>> MeasureViews;
  Slots<MeasureRecord> Measures;
  int MeasureCount = 0;
  TreeNode SheetNode = kNoNode;
  TreeNode RootNode = kNoNode;
};

// The slot number in the view's tag. 0 if the tag holds no valid one.
int SlotOf(const ItemView& view);

}  // namespace oriolemark
