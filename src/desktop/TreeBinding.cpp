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
#include "drivers/ShownText.h"

namespace oriolemark {
namespace {

// The keys that a tree's form may ask for.
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
  // A narrow pane scrolls sideways: a value cut short would be as good as none.
  widget.header()->setStretchLastSection(false);
  widget.header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  widget.setEditTriggers(QAbstractItemView::EditKeyPressed);
  widget.installEventFilter(this);
  widget.viewport()->installEventFilter(this);
  connect(&widget, &QTreeWidget::currentItemChanged, this,
          [this](QTreeWidgetItem* item) { model_.Click(NodeOf(item)); });
  connect(&widget, &QTreeWidget::itemExpanded, this,
          [this](QTreeWidgetItem* item) { model_.SetExpanded(NodeOf(item), true); });
  connect(&widget, &QTreeWidget::itemCollapsed, this,
          [this](QTreeWidgetItem* item) { model_.SetExpanded(NodeOf(item), false); });
  connect(&widget, &QTreeWidget::itemChanged, this, [this](const QTreeWidgetItem* item) {
    // Served after the editor has gone: a handler may show a message, or build the tree anew.
    QTimer::singleShot(0, this, [this, node = NodeOf(item), text = ToWire(item->text(0))] {
      shown_.clear();  // the widget's text is the user's now: built anew from the model's
      model_.EndLabelEdit(node, text);
    });
  });
  const QPointer<TreeBinding> guard(this);
  model.onChanged = [guard] {
    if (guard) guard->NoteChange();
  };
  model.onStartLabelEdit = [guard] {
    if (guard) guard->EditSelected();
  };
  MuteSelection();
  ShowModel();
}

// A tree without the focus marks its row in the grey of the theme's mark, whose text stays as easy
// to read.
void TreeBinding::MuteSelection() {
  const QColor mark = QApplication::palette(&widget_).color(QPalette::Active, QPalette::Highlight);
  const int grey = qGray(mark.rgb());
  QPalette muted;
  muted.setColor(QPalette::Inactive, QPalette::Highlight, QColor(grey, grey, grey));
  widget_.setPalette(muted);
}

bool TreeBinding::eventFilter(QObject* watched, QEvent* event) {
  const bool press = event->type() == QEvent::MouseButtonPress;
  if (watched == viewport_ && (press || event->type() == QEvent::MouseButtonDblClick)) {
    const auto& mouse = static_cast<const QMouseEvent&>(*event);
    const QTreeWidgetItem* item = widget_.itemAt(mouse.position().toPoint());
    // A row that the model has given up means nothing any more; the tree is about to show so.
    if (item != nullptr && !model_.Exists(NodeOf(item))) return true;
    if (press) {
      TakePress(mouse);
    } else {
      TakeDoubleClick(mouse);
    }
  }
  if (event->type() == QEvent::Resize && watched == viewport_) {
    // The mark of a selected row goes across the whole pane.
    widget_.header()->setMinimumSectionSize(static_cast<QResizeEvent&>(*event).size().width());
  }
  if (event->type() == QEvent::ApplicationPaletteChange && watched == &widget_) MuteSelection();
  if (event->type() == QEvent::KeyPress && watched == &widget_) {
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (key.key() == Qt::Key_F10 && key.modifiers() == Qt::ShiftModifier) AskForMenuByKey();
    const auto code = kKeyCodes.find(key.key());
    if (code != kKeyCodes.end()) Later([this, code = code->second] { model_.KeyDown(code); });
  }
  if (event->type() == QEvent::ContextMenu && watched == &widget_ &&
      static_cast<const QContextMenuEvent&>(*event).reason() == QContextMenuEvent::Keyboard) {
    AskForMenuByKey();
  }
  return QObject::eventFilter(watched, event);
}

// The row under the mouse; none in the room of the arrows, which fold and do not select.
QTreeWidgetItem* TreeBinding::RowAt(QPoint place) const {
  QTreeWidgetItem* item = widget_.itemAt(place);
  return item != nullptr && widget_.visualItemRect(item).contains(place) ? item : nullptr;
}

// The press is the click, so that the row that is marked is the one that is meant.
void TreeBinding::TakePress(const QMouseEvent& mouse) {
  if (QTreeWidgetItem* item = RowAt(mouse.position().toPoint())) {
    const QSignalBlocker blocker(widget_);
    // A row that is partly out of sight stays where it is: the toolkit still has to serve this very
    // press, and the second one of a double click, at the same place.
    widget_.setAutoScroll(false);
    widget_.setCurrentItem(item);
    widget_.setAutoScroll(true);
    model_.Click(NodeOf(item));
  }
  menuPlace_ = mouse.globalPosition().toPoint();
  const bool right = mouse.button() == Qt::RightButton;
  // Served after the press, so that a menu may open from it.
  QTimer::singleShot(0, this,
                     [this, right] { model_.MouseDown(right ? kRightButton : kLeftButton); });
}

// Also on the empty ground, where it means the row that was clicked last.
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

// It selects nothing new: it means the row that has the focus.
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
  // Not at once: the widget may be in the middle of the gesture that made the change.
  QTimer::singleShot(0, this, [this] { ShowModel(); });
}

void TreeBinding::ShowModel() {
  pending_ = false;
  std::vector<Row> rows;
  Collect(kNoNode, 0, rows);
  const QSignalBlocker blocker(widget_);
  // A row that is marked inside a folded group leaves it folded.
  widget_.setAutoScroll(false);
  // The items stay as long as they can: a double click needs the same item twice.
  if (!SameNodes(rows, shown_) || widget_.topLevelItemCount() == 0) {
    const int scrolled = widget_.verticalScrollBar()->value();
    shown_ = std::move(rows);
    Rebuild();
    if (model_.Selected() == kNoNode) ReturnToPlace();
    QTimer::singleShot(0, &widget_,
                       [this, scrolled] { widget_.verticalScrollBar()->setValue(scrolled); });
  } else if (rows != shown_) {
    shown_ = std::move(rows);
    ShowTexts();
  }
  for (QTreeWidgetItemIterator at(&widget_); *at != nullptr; ++at) ShowState(**at);
  widget_.setAutoScroll(true);
  widget_.setEnabled(model_.Enabled());
}

void TreeBinding::Collect(TreeNode node, int depth, std::vector<Row>& rows) const {
  for (const TreeNode child : model_.Children(node)) {
    rows.push_back({child, depth, Shortened(FromWire(model_.Text(child))), model_.Image(child)});
    Collect(child, depth + 1, rows);
  }
}

void TreeBinding::Rebuild() {
  widget_.clear();
  std::vector<QTreeWidgetItem*> parents{widget_.invisibleRootItem()};
  for (const Row& row : shown_) {
    parents.resize(static_cast<std::size_t>(row.depth) + 1);
    auto item = std::make_unique<QTreeWidgetItem>(QStringList{row.text});
    item->setToolTip(0, PlainToolTip(row.text));
    item->setData(0, Qt::UserRole, row.node);
    const QStringList faces = pictures_.value(row.image - 1).split('/');
    item->setIcon(0, PictureNamed(faces.first(), faces.last()));
    if (model_.afterLabelEdit) item->setFlags(item->flags() | Qt::ItemIsEditable);
    parents.push_back(item.get());
    parents[static_cast<std::size_t>(row.depth)]->addChild(item.release());
  }
}

bool TreeBinding::SameNodes(const std::vector<Row>& a, const std::vector<Row>& b) {
  return std::ranges::equal(a, b, {}, &Row::node, &Row::node);
}

// The items stand in the order of the rows.
void TreeBinding::ShowTexts() {
  QTreeWidgetItemIterator at(&widget_);
  for (const Row& row : shown_) {
    if ((*at)->text(0) != row.text) {
      (*at)->setText(0, row.text);
      (*at)->setToolTip(0, PlainToolTip(row.text));
    }
    ++at;
  }
}

// A tree that was built anew has nothing selected; the keyboard goes on from where it was.
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
