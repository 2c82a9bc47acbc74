#include "desktop/TreeBinding.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTimer>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <algorithm>
#include <map>
#include <memory>

#include "desktop/Bind.h"
#include "desktop/Icons.h"
#include "desktop/LabelEditor.h"
#include "desktop/ShownText.h"

namespace oriolemark {
namespace {

// The keys that a tree's form may handle.
const std::map<int, int> kKeyCodes{{Qt::Key_F2, kF2Key},
                                   {Qt::Key_F5, kF5Key},
                                   {Qt::Key_Delete, kDeleteKey},
                                   {Qt::Key_Return, kEnterKey},
                                   {Qt::Key_Enter, kEnterKey}};

TreeNode NodeOf(const QTreeWidgetItem* item) {
  return item != nullptr ? item->data(0, Qt::UserRole).toInt() : kNoNode;
}

}  // namespace

TreeBinding::TreeBinding(QTreeWidget& widget, TreeView& model, QStringList pictures)
    : QObject(&widget),
      widget_(widget),
      viewport_(widget.viewport()),
      model_(model),
      pictures_(std::move(pictures)) {
  widget.setHeaderHidden(true);
  widget.setColumnCount(1);
  // A narrow pane scrolls sideways. A truncated value would be useless.
  widget.header()->setStretchLastSection(false);
  widget.header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  EditLabels();
  widget.installEventFilter(this);
  widget.viewport()->installEventFilter(this);
  connect(&widget, &QTreeWidget::currentItemChanged, this,
          [this](QTreeWidgetItem* item) { model_.Click(NodeOf(item)); });
  connect(&widget, &QTreeWidget::itemExpanded, this,
          [this](QTreeWidgetItem* item) { model_.SetExpanded(NodeOf(item), true); });
  connect(&widget, &QTreeWidget::itemCollapsed, this,
          [this](QTreeWidgetItem* item) { model_.SetExpanded(NodeOf(item), false); });
  const QPointer<TreeBinding> guard(this);
  model.onChanged = [guard] {
    if (guard) guard->NoteChange();
  };
  model.onSetFocus = [guard] {
    if (guard) guard->widget_.setFocus();
  };
  model.onStartLabelEdit = [guard] {
    if (guard) guard->EditSelected();
  };
  MuteSelection(widget_);
  ShowModel();
}

void TreeBinding::EditLabels() {
  // A form that handles keys opens the editor itself.
  widget_.setEditTriggers(model_.keyDown ? QAbstractItemView::NoEditTriggers
                                         : QAbstractItemView::EditKeyPressed);
  const auto nodeOf = [](const QModelIndex& row) { return row.data(Qt::UserRole).toInt(); };
  editor_ = &Make<LabelEditor>(
      this, [=, this](const QModelIndex& row) { return FromWire(model_.Text(nodeOf(row))); },
      [=, this](const QModelIndex& row, const QString& text) {
        // Runs after the editor is closed, because a handler may show a message or rebuild the
        // tree.
        QTimer::singleShot(0, this, [this, node = nodeOf(row), text = ToWire(text)] {
          model_.EndLabelEdit(node, text);
        });
      });
  widget_.setItemDelegate(editor_);
}

bool TreeBinding::eventFilter(QObject* watched, QEvent* event) {
  const bool press = event->type() == QEvent::MouseButtonPress;
  if (watched == viewport_ && (press || event->type() == QEvent::MouseButtonDblClick)) {
    const auto& mouse = static_cast<const QMouseEvent&>(*event);
    const QTreeWidgetItem* item = widget_.itemAt(mouse.position().toPoint());
    // The model has deleted this row. The tree is about to be updated.
    if (item != nullptr && !model_.Exists(NodeOf(item))) return true;
    if (press) {
      TakePress(mouse);
    } else {
      TakeDoubleClick(mouse);
    }
  }
  if (event->type() == QEvent::Resize && watched == viewport_) {
    // The highlight of a selected row covers the width of the pane.
    widget_.header()->setMinimumSectionSize(static_cast<QResizeEvent&>(*event).size().width());
  }
  if (event->type() == QEvent::ApplicationPaletteChange && watched == &widget_)
    MuteSelection(widget_);
  if (event->type() == QEvent::KeyPress && watched == &widget_) {
    TakeKey(static_cast<const QKeyEvent&>(*event));
  }
  if (event->type() == QEvent::ContextMenu && watched == &widget_ &&
      static_cast<const QContextMenuEvent&>(*event).reason() == QContextMenuEvent::Keyboard) {
    AskForMenuByKey();
  }
  return QObject::eventFilter(watched, event);
}

// The tree also gets the keys that an open editor does not use. They belong to the edit.
void TreeBinding::TakeKey(const QKeyEvent& key) {
  if (editor_->Editing()) return;
  if (key.key() == Qt::Key_F10 && key.modifiers() == Qt::ShiftModifier) AskForMenuByKey();
  const bool plain = (key.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
  const auto code = kKeyCodes.find(key.key());
  // A key that is held acts once. Otherwise one long press would remove row after row.
  if (!plain || key.isAutoRepeat() || code == kKeyCodes.end()) return;
  Later([this, code = code->second] { model_.KeyDown(code); });
}

// The row under the mouse. Null over the arrows, because they fold rows and do not select.
QTreeWidgetItem* TreeBinding::RowAt(QPoint place) const {
  QTreeWidgetItem* item = widget_.itemAt(place);
  return item != nullptr && widget_.visualItemRect(item).contains(place) ? item : nullptr;
}

// The press counts as the click, so that the click always acts on the selected row.
void TreeBinding::TakePress(const QMouseEvent& mouse) {
  if (QTreeWidgetItem* item = RowAt(mouse.position().toPoint())) {
    const QSignalBlocker blocker(widget_);
    // A partly visible row does not scroll. The toolkit still has to handle this press, and the
    // second press of a double click, at the same place.
    widget_.setAutoScroll(false);
    widget_.setCurrentItem(item);
    widget_.setAutoScroll(true);
    model_.Click(NodeOf(item));
  }
  menuPlace_ = mouse.globalPosition().toPoint();
  const bool right = mouse.button() == Qt::RightButton;
  // Runs after the press, because it may open a menu.
  QTimer::singleShot(0, this, [this, right] {
    if (QApplication::activeModalWidget() != nullptr) return;
    model_.MouseDown(right ? kRightButton : kLeftButton);
  });
}

// A double click on the empty area acts on the row that was clicked last.
void TreeBinding::TakeDoubleClick(const QMouseEvent& mouse) {
  const QPoint place = mouse.position().toPoint();
  const bool onArrow = widget_.itemAt(place) != nullptr && RowAt(place) == nullptr;
  if (mouse.button() == Qt::LeftButton && !onArrow) Later([this] { model_.DoubleClick(); });
}

void TreeBinding::Later(std::function<void()> gesture) {
  if (!model_.PostGesture(std::move(gesture))) return;
  QTimer::singleShot(0, this, [this] {
    const bool blocked = QApplication::activeModalWidget() != nullptr;
    model_.ServeGesture(blocked ? TreeView::Reach::Blocked : TreeView::Reach::Open);
  });
}

// The key does not change the selection. The menu is for the row with the focus.
void TreeBinding::AskForMenuByKey() {
  if (QTreeWidgetItem* item = widget_.currentItem()) {
    widget_.scrollToItem(item);
    const QPoint below = widget_.visualItemRect(item).bottomLeft();
    menuPlace_ = widget_.viewport()->mapToGlobal(below);
  } else {
    menuPlace_ = widget_.viewport()->mapToGlobal(QPoint());
  }
  model_.Select(NodeOf(widget_.currentItem()));
  QTimer::singleShot(0, this, [this] { model_.MouseDown(kRightButton); });
}

void TreeBinding::NoteChange() {
  if (pending_) return;
  pending_ = true;
  // The update is delayed, because the widget may still be handling the input that caused it.
  QTimer::singleShot(0, this, [this] { ShowModel(); });
}

void TreeBinding::ShowModel() {
  pending_ = false;
  std::vector<Row> rows;
  Collect(kNoNode, 0, rows);
  const QSignalBlocker blocker(widget_);
  // Selecting a row inside a folded group does not unfold the group.
  widget_.setAutoScroll(false);
  // Items are kept if possible, because a double click needs the same item twice.
  if (!SameNodes(rows, shown_) || widget_.topLevelItemCount() == 0) {
    const int scrolled = widget_.verticalScrollBar()->value();
    shown_ = std::move(rows);
    Rebuild();
    if (model_.Selected() == kNoNode) ReturnToPlace();
    QTimer::singleShot(0, &widget_,
                       [this, scrolled] { widget_.verticalScrollBar()->setValue(scrolled); });
  } else if (rows != shown_) {
    ShowRows(std::move(rows));
  }
  for (QTreeWidgetItemIterator at(&widget_); *at != nullptr; ++at) ShowState(**at);
  widget_.setAutoScroll(true);
  widget_.setEnabled(model_.Enabled());
}

void TreeBinding::Collect(TreeNode node, int depth, std::vector<Row>& rows) const {
  for (const TreeNode child : model_.Children(node)) {
    rows.push_back({child, depth, Shortened(FromWire(model_.Text(child))), model_.Image(child),
                    model_.Marked(child)});
    Collect(child, depth + 1, rows);
  }
}

void TreeBinding::Rebuild() {
  widget_.clear();
  std::vector<QTreeWidgetItem*> parents{widget_.invisibleRootItem()};
  for (const Row& row : shown_) {
    parents.resize(static_cast<std::size_t>(row.depth) + 1);
    auto item = std::make_unique<QTreeWidgetItem>();
    item->setData(0, Qt::UserRole, row.node);
    ShowRow(*item, row);
    if (model_.afterLabelEdit) item->setFlags(item->flags() | Qt::ItemIsEditable);
    parents.push_back(item.get());
    parents[static_cast<std::size_t>(row.depth)]->addChild(item.release());
  }
}

bool TreeBinding::SameNodes(const std::vector<Row>& a, const std::vector<Row>& b) {
  return std::ranges::equal(a, b, {}, &Row::node, &Row::node);
}

void TreeBinding::ShowRow(QTreeWidgetItem& item, const Row& row) const {
  item.setText(0, row.text);
  item.setToolTip(0, PlainToolTip(row.text));
  const QStringList faces = pictures_.value(row.image - 1).split('/');
  item.setIcon(0, PictureNamed(faces.first(), faces.last(),
                               row.marked ? PictureMark::Unsaved : PictureMark::None));
  item.setData(0, Qt::AccessibleDescriptionRole, row.marked ? "unsaved changes" : "");
}

// The items are in the order of the rows. One whose row is the same is not touched.
void TreeBinding::ShowRows(std::vector<Row> rows) {
  QTreeWidgetItemIterator at(&widget_);
  for (std::size_t i = 0; i < rows.size(); ++i, ++at) {
    if (rows[i] != shown_[i]) ShowRow(**at, rows[i]);
  }
  shown_ = std::move(rows);
}

// A rebuilt tree has no selection. The row with the keyboard focus is restored.
void TreeBinding::ReturnToPlace() {
  QTreeWidgetItem* item = Find(model_.ReturnToPlace());
  if (item == nullptr) return;
  const bool selected = NodeOf(item) == model_.Selected();
  widget_.setCurrentItem(
      item, 0, selected ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate);
}

void TreeBinding::ShowState(QTreeWidgetItem& item) {
  const TreeNode node = NodeOf(&item);
  if (item.isExpanded() != model_.Expanded(node)) item.setExpanded(model_.Expanded(node));
  if (node == model_.Selected() && widget_.currentItem() != &item) widget_.setCurrentItem(&item);
}

void TreeBinding::EditSelected() {
  ShowModel();
  if (QTreeWidgetItem* item = Find(model_.Selected())) widget_.editItem(item);
}

QTreeWidgetItem* TreeBinding::Find(TreeNode node) const {
  for (QTreeWidgetItemIterator at(&widget_); *at != nullptr; ++at) {
    if (NodeOf(*at) == node) return *at;
  }
  return nullptr;
}

}  // namespace oriolemark
