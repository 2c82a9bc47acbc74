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

bool FileFunc::MayAdd(int count) {
  if (!SheetExists()) {
    // "Creat" stays: users know the message.
    prompts_.Show(
        {.text = "Please Open or Creat a Data Sheet First", .icon = MessageIcon::Exclamation});
    return false;
  }
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
  ItemView* view = View(kind, slot);
  ItemRecord& record = row.record(sheet_, slot);
  record.Name = row.word + std::to_string(slot);
  record.HasData = false;
  if (view != nullptr) {
    view->SetCaption(record.Name);
    view->Show();
  }
  record.TreeNode = tree_.Add(sheet_.SheetNode, record.Name, row.image);
  ++(sheet_.*row.count);
}

}  // namespace oriolemark
