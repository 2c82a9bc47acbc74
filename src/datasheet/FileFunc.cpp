#include "datasheet/FileFunc.h"

namespace oriolemark {
namespace {

constexpr int kMostItems = 16;

}  // namespace

bool FileFunc::SheetExists() {
  const bool exists = tree_.Exists(sheet_.SheetNode);
  if (setAddButtons) setAddButtons(exists);
  return exists;
}

bool FileFunc::RequireSheet() {
  if (SheetExists()) return true;
  // "Creat" stays: users know the message.
  prompts_.Show(
      {.text = "Please Open or Creat a Data Sheet First", .icon = MessageIcon::Exclamation});
  return false;
}

bool FileFunc::MayAdd(int count) {
  if (!RequireSheet()) return false;
  if (count + 1 > kMostItems) {
    prompts_.Show({.text = "Exceed maximum file numbers limit", .icon = MessageIcon::Exclamation});
    return false;
  }
  return true;
}

ItemView* FileFunc::View(ItemKind kind, int slot) {
  auto& view = (sheet_.*RowOf(kind).views)[static_cast<std::size_t>(slot)];
  if (const ViewMaker& make = makeView[kind]; !view && make) view = make();
  if (view) view->SetTag(std::to_string(slot));
  return view.get();
}

void FileFunc::Add(ItemKind kind) {
  const ItemKindRow& row = RowOf(kind);
  const int slot = sheet_.*row.count;
  if (!MayAdd(slot)) return;
  sheet_.Modified = true;
  row.prepare(sheet_, slot);
  ItemRecord& record = row.record(sheet_, slot);
  record.Name = row.word + std::to_string(slot);
  record.HasData = false;
  ShowView(kind, slot);
  AddNode(kind, slot);
  ++(sheet_.*row.count);
}

void FileFunc::ShowView(ItemKind kind, int slot) {
  ItemView* view = View(kind, slot);
  if (view == nullptr) return;
  view->SetCaption(RowOf(kind).record(sheet_, slot).Name);
  view->Show();
}

void FileFunc::UnloadView(ItemKind kind, int slot) {
  const auto& view = (sheet_.*RowOf(kind).views)[static_cast<std::size_t>(slot)];
  if (view) view->Unload();
}

void FileFunc::AddNode(ItemKind kind, int slot) {
  const ItemKindRow& row = RowOf(kind);
  ItemRecord& record = row.record(sheet_, slot);
  record.TreeNode = tree_.Add(sheet_.SheetNode, record.Name, row.image);
}

void FileFunc::Remove(ItemKind kind, int slot) {
  const ItemKindRow& row = RowOf(kind);
  sheet_.Modified = true;
  // Before the views are shown again, because a view whose item is read shows that.
  int& reading = scratch_.*row.readingSlot;
  if (reading == slot) {
    reading = kNoSlot;
  } else if (reading > slot) {
    --reading;
  }
  const int last = sheet_.*row.count - 1;
  for (int i = slot; i < last; ++i) {
    UnloadView(kind, i);
    row.copy(sheet_, i + 1, i);
    if (row.record(sheet_, i).ViewOpen) ShowView(kind, i);
  }
  UnloadView(kind, last);
  row.record(sheet_, last).HasData = false;
  --(sheet_.*row.count);
}

void FileFunc::CloseAllItems() {
  UnloadViews(sheet_);
  for (const ItemKind kind : kTreeOrder) {
    sheet_.*RowOf(kind).count = 0;
    scratch_.*RowOf(kind).readingSlot = kNoSlot;
  }
}

}  // namespace oriolemark
