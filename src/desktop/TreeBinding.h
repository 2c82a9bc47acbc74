#pragma once

#include <QObject>
#include <QPoint>
#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

#include "platform/TreeView.h"

class QMouseEvent;
class QTreeWidget;
class QTreeWidgetItem;

namespace oriolemark {

// Shows a tree model in a tree widget and hands the user's gestures to it. Owned by the widget.
// Changes of the model show with the next events, in one go.
class TreeBinding : public QObject {
 public:
  // `pictures` are the names of the pictures from image 1 on; "Closed/Open" names two, the second
  // for an expanded row.
  TreeBinding(QTreeWidget& widget, TreeView& model, QStringList pictures);

  // Where a menu belongs that a gesture has asked for: at the pointer, or below the current row
  // when it was a key. In pixels of the screen.
  QPoint MenuPlace() const { return menuPlace_; }

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Row {
    TreeNode node;
    int depth;
    QString text;
    int image;
    bool operator==(const Row&) const = default;
  };

  void MuteSelection();
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
  void ShowTexts();
  void ReturnToPlace();
  void ShowState(QTreeWidgetItem& item);
  void EditSelected();
  QTreeWidgetItem* Find(TreeNode node) const;

  QTreeWidget& widget_;
  // Events still pass here while the widget is being destroyed and cannot be asked for it.
  const QObject* const viewport_;
  TreeView& model_;
  const QStringList pictures_;
  std::vector<Row> shown_;
  QPoint menuPlace_;
  bool pending_ = false;
};

}  // namespace oriolemark
