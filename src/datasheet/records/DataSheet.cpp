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

int SlotOf(const ItemView& view) {
  const std::string& tag = view.Tag();
  int slot = 0;
  std::from_chars(tag.data(), tag.data() + tag.size(), slot);
  return slot >= 0 && slot < kSheetSlots ? slot : 0;
}

}  // namespace oriolemark
