#pragma once

#include <array>
#include <initializer_list>
#include <memory>

#include "datasheet/records/DataSheet.h"

namespace oriolemark {

enum class ItemKind { Wave, Measure, Data };

// One kind of item of a sheet: where it is kept, and what is its own when one is added.
struct ItemKindRow {
  const char* word;  // a new item's name is this word and the slot
  int image;         // in the Data Browser
  int DataSheet::*count;
  Slots<std::unique_ptr<ItemView>> DataSheet::*views;
  ItemRecord& (*record)(DataSheet& sheet, int slot);
  // The fields of a new item; the others keep what the slot held.
  void (*prepare)(DataSheet& sheet, int slot);
};

const ItemKindRow& RowOf(ItemKind kind);

// In the order of the tree and of the file.
inline constexpr std::array<ItemKind, 3> kTreeOrder{ItemKind::Wave, ItemKind::Measure,
                                                    ItemKind::Data};
// In the order in which a selected node is looked for.
inline constexpr std::array<ItemKind, 3> kSearchOrder{ItemKind::Data, ItemKind::Wave,
                                                      ItemKind::Measure};

// Unloads every view of the sheet, also one that was loaded and has not set its ViewOpen yet.
void UnloadViews(DataSheet& sheet);
// Empties all lists. The records keep their contents.
void ForgetItems(DataSheet& sheet);

}  // namespace oriolemark
