#include "datasheet/records/DataSheet.h"

#include <charconv>

namespace oriolemark {

int SlotOf(const ItemView& view) {
  const std::string& tag = view.Tag();
  int slot = 0;
  std::from_chars(tag.data(), tag.data() + tag.size(), slot);
  return slot >= 0 && slot < kSheetSlots ? slot : 0;
}

}  // namespace oriolemark
