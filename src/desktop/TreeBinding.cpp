#include "desktop/TreeBinding.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QSignalBlocker>
#include <QTimer>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <map>
#include <memory>

#include "desktop/Bind.h"
#include "desktop/Icons.h"

namespace oriolemark {
namespace {

constexpr int kLeftButton = 1;
constexpr int kRightButton = 2;
constexpr int kEnterKey = 13;

// Virtual key codes of the keys that a tree's form may ask for.
const std::map<int, int> kKeyCodes{{Qt::Key_F2, 113},
                                   {Qt::Key_F5, 116},
                                   {Qt::Key_Delete, 46},
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
  widget.setEditTriggers(QAbstractItemView::EditKeyPressed);
  widget.installEventFilter(this);
  widget.viewport()->installEventFilter(this);
  connect(&widget, &QTreeWidget::itemClicked, this,
          [this](QTreeWidgetItem* item) { model_.Click(NodeOf(item)); });
  connect(&widget, &QTreeWidget::currentItemChanged, this,
          [this](QTreeWidgetItem* item) { model_.Click(NodeOf(item)); });
  // Served after the click: a handler may show a dialog or build the tree anew.
  connect(
      &widget, &QTreeWidget::itemDoubleClicked, this, [this] { model_.DoubleClick(); },
      Qt::QueuedConnection);
  connect(&widget, &QTreeWidget::itemExpanded, this,
          [this](QTreeWidgetItem* item) { model_.SetExpanded(NodeOf(item), true); });
  connect(&widget, &QTreeWidget::itemCollapsed, this,
          [this](QTreeWidgetItem* item) { model_.SetExpanded(NodeOf(item), false); });
  connect(&widget, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item) {
    shown_.clear();  // the widget's text is the user's now: built anew from the model's
    model_.EndLabelEdit(ToWire(item->text(0)));
  });
  const QPointer<TreeBinding> guard(this);
  model.onChanged = [guard] {
    if (guard) guard->NoteChange();
  };
  model.onStartLabelEdit = [guard] {
    if (guard) guard->EditSelected();
  };
  ShowModel();
}

bool TreeBinding::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress && watched == viewport_) {
    const auto& mouse = static_cast<const QMouseEvent&>(*event);
    QTreeWidgetItem* item = widget_.itemAt(mouse.position().toPoint());
    if (item != nullptr) {
      const QSignalBlocker blocker(widget_);
      widget_.setCurrentItem(item);
    }
    model_.Select(NodeOf(item));
    const bool right = mouse.button() == Qt::RightButton;
    // Served after the press, so that a menu may open from it.
    QTimer::singleShot(0, this,
                       [this, right] { model_.MouseDown(right ? kRightButton : kLeftButton); });
  }
  if (event->type() == QEvent::KeyPress && watched == &widget_) {
    const auto code = kKeyCodes.find(static_cast<const QKeyEvent&>(*event).key());
    if (code != kKeyCodes.end()) {
      QTimer::singleShot(0, this, [this, code = code->second] { TakeKey(code); });
    }
  }
  // The menu key selects nothing new: it means the row that has the focus.
  if (event->type() == QEvent::ContextMenu && watched == &widget_ &&
      static_cast<const QContextMenuEvent&>(*event).reason() == QContextMenuEvent::Keyboard) {
    model_.Select(NodeOf(widget_.currentItem()));
    QTimer::singleShot(0, this, [this] { model_.MouseDown(kRightButton); });
  }
  return QObject::eventFilter(watched, event);
}

// Enter stands for the double click where the form knows no keys of its own.
void TreeBinding::TakeKey(int code) {
  if (code == kEnterKey && !model_.keyDown) {
    model_.DoubleClick();
  } else {
    model_.KeyDown(code);
  }
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
  // The items stay as long as they can: a double click needs the same item twice.
  if (rows != shown_ || widget_.topLevelItemCount() == 0) {
    shown_ = std::move(rows);
    Rebuild();
  }
  for (QTreeWidgetItemIterator at(&widget_); *at != nullptr; ++at) ShowState(**at);
  widget_.setEnabled(model_.Enabled());
}

void TreeBinding::Collect(TreeNode node, int depth, std::vector<Row>& rows) const {
  for (const TreeNode child : model_.Children(node)) {
    rows.push_back({child, depth, FromWire(model_.Text(child)), model_.Image(child)});
    Collect(child, depth + 1, rows);
  }
}

void TreeBinding::Rebuild() {
  widget_.clear();
  std::vector<QTreeWidgetItem*> parents{widget_.invisibleRootItem()};
  for (const Row& row : shown_) {
    parents.resize(static_cast<std::size_t>(row.depth) + 1);
    auto item = std::make_unique<QTreeWidgetItem>(QStringList{row.text});
    item->setData(0, Qt::UserRole, row.node);
    const QStringList faces = pictures_.value(row.image - 1).split('/');
    item->setIcon(0, PictureNamed(faces.first(), faces.last()));
    if (model_.afterLabelEdit) item->setFlags(item->flags() | Qt::ItemIsEditable);
    parents.push_back(item.get());
    parents[static_cast<std::size_t>(row.depth)]->addChild(item.release());
  }
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
