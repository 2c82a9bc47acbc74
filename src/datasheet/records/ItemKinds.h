#pragma once

#include <array>
#include <memory>

#include "datasheet/records/DataSheet.h"

namespace oriolemark {

struct TransferScratch;

enum class ItemKind { Wave, Measure, Data };

// One kind of item: where the sheet keeps its items, and how a new one is set up.
struct ItemKindRow {
  const char* word;     // a new item's name is this word and the slot; its picture has this name
  const char* noun;     // of the add button
  const char* newType;  // in the dialog New
  int image;            // in the Data Browser
  int DataSheet::*count;
  Slots<std::unique_ptr<ItemView>> DataSheet::*views;
  int TransferScratch::*readingSlot;
  ItemRecord& (*record)(DataSheet& sheet, int slot);
  // Copies the whole record, samples included.
  void (*copy)(DataSheet& sheet, int from, int to);
  // Sets the fields of a new item. The other fields keep what the slot held.
  void (*prepare)(DataSheet& sheet, int slot);
};

const ItemKindRow& RowOf(ItemKind kind);

// In the order of the tree, the file, the toolbar and the dialog New.
inline constexpr std::array<ItemKind, 3> kTreeOrder{ItemKind::Wave, ItemKind::Measure,
                                                    ItemKind::Data};
// The order in which the selected node is searched for.
inline constexpr std::array<ItemKind, 3> kSearchOrder{ItemKind::Data, ItemKind::Wave,
                                                      ItemKind::Measure};

// Unloads every view of the sheet, including one that is loaded and has not set its ViewOpen yet.
void UnloadViews(DataSheet& sheet);

}  // namespace oriolemark
