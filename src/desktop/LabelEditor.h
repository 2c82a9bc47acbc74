#pragma once

#include <QPointer>
#include <QStyledItemDelegate>
#include <functional>
#include <optional>

class QLineEdit;

namespace oriolemark {

// Edits the label of a tree row in place. The row may show a shortened text, the editor has the
// whole one. The row keeps its text until its owner changes it.
class LabelEditor : public QStyledItemDelegate {
 public:
  using Whole = std::function<QString(const QModelIndex& row)>;
  using Ended = std::function<void(const QModelIndex& row, const QString& text)>;

  // `whole` is the whole text of a row. `ended` gets a text that the user has changed and not
  // cancelled. The view is still closing the editor then.
  LabelEditor(QObject* parent, Whole whole, Ended ended);

  // True from the opening of an editor until its end.
  bool Editing() const;

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& row) const override;
  void setEditorData(QWidget* editor, const QModelIndex& row) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model,
                    const QModelIndex& row) const override;

 private:
  const Whole whole_;
  const Ended ended_;
  mutable QPointer<QLineEdit> editor_;
  mutable std::optional<QString> before_;  // the text when the edit began
};

}  // namespace oriolemark
