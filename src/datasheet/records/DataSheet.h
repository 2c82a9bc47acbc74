#pragma once

#include <array>
#include <memory>
#include <string>

#include "datasheet/records/DataRecord.h"
#include "datasheet/records/MeasureRecord.h"
#include "datasheet/records/WaveRecord.h"
#include "platform/Form.h"

namespace oriolemark {

inline constexpr int kSheetSlots = 18;

// The view of an item: a window whose tag holds the item's slot number as decimal text. A view that
// was made stays in its slot until the program ends; closing it unloads it.
using ItemView = Form;

template <typename Record>
using Slots = std::array<Record, kSheetSlots>;

// The document: items of three kinds, each in slots 0 to count - 1 with no gaps. The views' slots
// do not move with the records.
struct DataSheet {
  std::string FileName;  // empty while the sheet was never saved or opened
  std::string Title;
  bool Modified = false;
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

// The slot that a view's tag names; 0 where the tag names none.
int SlotOf(const ItemView& view);

}  // namespace oriolemark
