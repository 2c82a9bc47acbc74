#include "datasheet/records/DataSheet.h"

#include <charconv>

namespace oriolemark {

void UnloadViews(DataSheet& sheet) {
  for (auto* views : {&sheet.WaveViews, &sheet.MeasureViews, &sheet.DataViews}) {
    for (auto& view : *views) {
      if (view) view->Unload();
    }
  }
}

std::optional<int> FindWave(const DataSheet& sheet, TreeNode node, int lastSlot) {
  const auto holds = [&](int slot) {
    return sheet.Waves[static_cast<std::size_t>(slot)].TreeNode == node;
  };
  if (lastSlot < sheet.WaveCount && holds(lastSlot)) return lastSlot;
  for (int slot = 0; slot < sheet.WaveCount; ++slot) {
    if (holds(slot)) return slot;
  }
  return std::nullopt;
}

int SlotOf(const ItemView& view) {
  const std::string& tag = view.Tag();
  int slot = 0;
  std::from_chars(tag.data(), tag.data() + tag.size(), slot);
  return slot >= 0 && slot < kSheetSlots ? slot : 0;
}

}  // namespace oriolemark
