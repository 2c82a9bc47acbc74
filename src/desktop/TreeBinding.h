#pragma once

#include <QObject>
#include <QPoint>
#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

#include "platform/TreeView.h"

class QKeyEvent;
class QMouseEvent;
class QTreeWidget;
class QTreeWidgetItem;

namespace oriolemark {

class LabelEditor;

// Shows a tree model in a tree widget and reports the user's input to the model. The widget owns
// it. Changes of the model are shown together with the next events.
class TreeBinding : public QObject {
 public:
  // `pictures` are the names of the pictures from image 1 on. "Closed/Open" names two pictures. The
  // second is for an expanded row.
  TreeBinding(QTreeWidget& widget, TreeView& model, QStringList pictures);

  // The place for a menu, in pixels of the screen: at the pointer, or below the current row if a
  // key opens the menu.
  QPoint MenuPlace() const { return menuPlace_; }

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Row {
    TreeNode node;
    int depth;
    QString text;
    int image;
    bool marked;
    bool operator==(const Row&) const = default;
  };

  void EditLabels();
  void TakeKey(const QKeyEvent& key);
  QTreeWidgetItem* RowAt(QPoint place) const;
  void TakePress(const QMouseEvent& mouse);
  void TakeDoubleClick(const QMouseEvent& mouse);
  void Later(std::function<void()> gesture);
  void AskForMenuByKey();
  void NoteChange();
  void ShowModel();
  void Collect(TreeNode node, int depth, std::vector<Row>& rows) const;
  static bool SameNodes(const std::vector<Row>& a, const std::vector<Row>& b);
  void Rebuild();
  void ShowRow(QTreeWidgetItem& item, const Row& row) const;
  void ShowRows(std::vector<Row> rows);
  void ReturnToPlace();
  void ShowState(QTreeWidgetItem& item);
  void EditSelected();
  QTreeWidgetItem* Find(TreeNode node) const;

  QTreeWidget& widget_;
  // Events still arrive while the widget is being destroyed and cannot return its viewport.
  const QObject* const viewport_;
  TreeView& model_;
  LabelEditor* editor_ = nullptr;
  const QStringList pictures_;
  std::vector<Row> shown_;
  QPoint menuPlace_;
  bool pending_ = false;
};

}  // namespace oriolemark
