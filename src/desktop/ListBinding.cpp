#include "desktop/ListBinding.h"

#include <QAbstractTableModel>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPointer>
#include <QSignalBlocker>
#include <QTableView>
#include <algorithm>
#include <utility>
#include <vector>

#include "desktop/Bind.h"
#include "desktop/Icons.h"
#include "desktop/ShownText.h"

namespace oriolemark {
namespace {

constexpr int kNotSet = -1;    // a column's width
constexpr int kLongest = 24;   // characters of a text that widens its column
constexpr int kRowMargin = 2;  // pixels above and below the text of a row

// The model as the toolkit asks for it.
class Cells : public QAbstractTableModel {
 public:
  Cells(QObject* parent, const ListView& list, QStringList pictures)
      : QAbstractTableModel(parent), list_(list), pictures_(std::move(pictures)) {}

  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : count_;
  }
  int columnCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : list_.ColumnCount();
  }
  QVariant data(const QModelIndex& cell, int role) const override {
    if (role == Qt::DisplayRole) {
      return Shortened(FromWire(list_.Text(cell.row(), cell.column())));
    }
    // A narrow column cuts its texts.
    if (role == Qt::ToolTipRole) return PlainToolTip(data(cell, Qt::DisplayRole).toString());
    if (role != Qt::DecorationRole) return {};
    const int picture = list_.Picture(cell.row(), cell.column());
    return picture > 0 ? QVariant(PictureNamed(pictures_.value(picture - 1))) : QVariant();
  }
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
    if (orientation == Qt::Vertical) return {};
    if (role == Qt::TextAlignmentRole) return int(Qt::AlignLeft | Qt::AlignVCenter);
    if (role != Qt::DisplayRole) return {};
    return FromWire(list_.Columns()[static_cast<std::size_t>(section)]);
  }

  // The list has new contents. With as many rows as before, the place in the list stays.
  void NoteRows() {
    if (list_.Count() == count_) {
      if (count_ > 0) emit dataChanged(index(0, 0), index(count_ - 1, columnCount() - 1));
      return;
    }
    beginResetModel();
    count_ = list_.Count();
    endResetModel();
  }

 private:
  const ListView& list_;
  const QStringList pictures_;
  int count_ = 0;  // as the toolkit knows it
};

class ListTable : public QTableView {
 public:
  ListTable(ListView& model, QStringList pictures)
      : model_(model), cells_(Make<Cells>(this, model, std::move(pictures))) {
    SetLooks();
    setModel(&cells_);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
      reporting_ = true;
      model_.Select(MarkedRows());
      reporting_ = false;
    });
    const QPointer<ListTable> guard(this);
    model.onChanged = [guard] {
      if (guard) guard->ShowState();
    };
    model.onRows = [guard] {
      if (guard) guard->ShowRows();
    };
    ShowRows();
    ShowState();
  }

 protected:
  bool event(QEvent* event) override {
    if (event->type() == QEvent::ApplicationPaletteChange) MuteSelection(*this);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) SetRowHeight();
    return QTableView::event(event);
  }

  void resizeEvent(QResizeEvent* event) override {
    QTableView::resizeEvent(event);
    model_.NoteWidth(PixelsToUnits(width()));
  }

  void keyPressEvent(QKeyEvent* event) override {
    if (!event->matches(QKeySequence::Copy)) return QTableView::keyPressEvent(event);
    const std::string text = model_.SelectedText();
    if (!text.empty()) QGuiApplication::clipboard()->setText(FromWire(text));
  }

  // The toolkit's tables go to the first and the last cell of the row.
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override {
    const bool home = action == MoveHome;
    if (!home && action != MoveEnd) return QTableView::moveCursor(action, modifiers);
    return cells_.index(home ? 0 : cells_.rowCount() - 1, std::max(0, currentIndex().column()));
  }

 private:
  void SetLooks() {
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setWordWrap(false);
    setShowGrid(false);
    setAlternatingRowColors(true);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setResizeContentsPrecision(0);  // looks at the rows in sight only
    SetRowHeight();
    MuteSelection(*this);
  }

  // The same for all rows, so that none has to be looked at.
  void SetRowHeight() {
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 2 * kRowMargin);
  }

  std::vector<RowSpan> MarkedRows() const {
    std::vector<RowSpan> spans;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
      spans.push_back({range.top(), range.bottom()});
    }
    return spans;
  }

  void ShowRows() {
    cells_.NoteRows();
    GrowColumns();
    ShowSelection();
  }

  void ShowState() {
    if (isEnabled() != model_.Enabled()) setEnabled(model_.Enabled());
    if (isHidden() == model_.Visible()) setVisible(model_.Visible());
    ShowSelection();
    if (placed_ == model_.ColumnWidths()) return GrowColumns();
    placed_ = model_.ColumnWidths();
    widths_.assign(placed_.size(), kNotSet);
    GrowColumns();
  }

  // A column has the model's width, or that of its longest text in sight, up to a limit. A narrow
  // table scrolls sideways. Columns that the user has dragged stay until the model's widths change.
  void GrowColumns() {
    const int limit = kLongest * fontMetrics().averageCharWidth();
    for (std::size_t i = 0; i < placed_.size(); ++i) {
      const int column = static_cast<int>(i);
      if (widths_[i] != kNotSet && columnWidth(column) != widths_[i]) continue;
      const int needed =
          std::max(sizeHintForColumn(column), horizontalHeader()->sectionSizeHint(column));
      const int width = ToPixels({.width = placed_[i]}).width();
      setColumnWidth(column, std::max(width, std::min(needed, limit)));
      widths_[i] = columnWidth(column);
    }
  }

  void ShowSelection() {
    if (reporting_ || MarkedRows() == model_.Selected()) return;
    QItemSelection selection;
    for (const RowSpan& span : model_.Selected()) {
      selection.select(cells_.index(span.first, 0),
                       cells_.index(span.last, cells_.columnCount() - 1));
    }
    const QSignalBlocker blocker(selectionModel());
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    viewport()->update();
  }

  ListView& model_;
  Cells& cells_;
  std::vector<double> placed_;  // the model's widths
  std::vector<int> widths_;     // as they were set
  bool reporting_ = false;      // the user's marks to the model, which the table shows already
};

}  // namespace

QTableView& MakeList(const QString& name, const QString& accessibleName, ListView& model,
                     QStringList pictures) {
  auto& table = Make<ListTable>(model, std::move(pictures));
  Name(table, name, accessibleName);
  return table;
}

}  // namespace oriolemark
