#include "desktop/LabelEditor.h"

#include <QLineEdit>
#include <algorithm>
#include <utility>

namespace oriolemark {

LabelEditor::LabelEditor(QObject* parent, Whole whole, Ended ended)
    : QStyledItemDelegate(parent), whole_(std::move(whole)), ended_(std::move(ended)) {}

bool LabelEditor::Editing() const {
  return editor_ && editor_->isVisible();
}

QWidget* LabelEditor::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                   const QModelIndex& row) const {
  QWidget* editor = QStyledItemDelegate::createEditor(parent, option, row);
  editor_ = qobject_cast<QLineEdit*>(editor);
  before_.reset();
  return editor;
}

void LabelEditor::setEditorData(QWidget*, const QModelIndex& row) const {
  // The view calls this again when the row changes. What the user has typed stays.
  if (!editor_ || before_) return;
  const QString text = whole_(row);
  // A paste is limited as in every other line. A longer name from a file is not cut.
  editor_->setMaxLength(std::max(editor_->maxLength(), static_cast<int>(text.size())));
  editor_->setText(text);
  before_ = editor_->text();
}

void LabelEditor::setModelData(QWidget*, QAbstractItemModel*, const QModelIndex& row) const {
  if (!editor_ || editor_->text() == before_) return;
  // The line shows pasted line ends as blanks.
  ended_(row, editor_->text().replace("\r\n", " ").replace('\n', ' '));
}

}  // namespace oriolemark
