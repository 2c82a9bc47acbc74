#include <QAccessible>
#include <QClipboard>
#include <QIcon>
#include <QLineEdit>
#include <QPointer>
#include <QScrollBar>
#include <QTableView>
#include <QTextDocument>
#include <QTreeWidget>
#include <set>

#include "desktop/Bind.h"
#include "desktop/ListBinding.h"
#include "desktop/RunWindows.h"
#include "desktop/TreeBinding.h"
#include "support/Tables.h"

namespace oriolemark {
namespace {

constexpr int kRows = 17000;

// A long list in a window of its own. Notes how many cells were asked for.
struct Lists : testing::Test, Application {
  Lists() {
    table.resize(400, 300);
    table.show();
    SetRows(kRows);
  }
  void SetRows(int count) {
    const auto text = [this](int row, int column) {
      ++asked;
      return column == 0 ? std::to_string(row) : "<b>" + std::string(600, 'x');
    };
    const auto copied = [](int row, int) { return std::to_string(-row); };
    list.SetRows({.count = count, .text = text, .copied = copied});
    QCoreApplication::processEvents();
  }
  void Press(std::initializer_list<QKeyCombination> keys) {
    for (const auto& key : keys) QTest::keyClick(&table, key.key(), key.keyboardModifiers());
  }
  static QString Copied() { return QGuiApplication::clipboard()->text(); }

  ListView list{{"A", "B"}};
  const std::unique_ptr<QTableView> owner{&MakeList("List", "A list", list)};
  QTableView& table = *owner;
  int asked = 0;
};

TEST_F(Lists, ALongListAsksOnlyForTheCellsOnTheScreen) {
  table.grab();
  EXPECT_LT(asked, 1000);
  QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(&table);
  EXPECT_EQ(reader->tableInterface()->rowCount(), kRows);
  EXPECT_EQ(reader->text(QAccessible::Name), "A list");
  const auto cell = [&](int row, int column) {
    return reader->tableInterface()->cellAt(row, column)->text(QAccessible::Name);
  };
  EXPECT_EQ(cell(kRows - 1, 0), "16999");
  EXPECT_TRUE(cell(3, 1).startsWith("<b>xxx")) << "plain, and shortened";
  EXPECT_EQ(cell(3, 1).size(), 503);
  EXPECT_LT(asked, 1010);
}

TEST_F(Lists, KeysReachEveryRowAndCopyTheMarkedOnes) {
  // The key, and the row with the focus.
  const std::pair<QKeyCombination, int> rows[] = {{Qt::Key_End, kRows - 1}, {Qt::Key_PageUp, -1},
                                                  {Qt::Key_Home, 0},        {Qt::Key_PageDown, -1},
                                                  {Qt::Key_Up, -1},         {Qt::Key_Home, 0}};
  for (const auto& [key, row] : rows) {
    Press({key});
    const int current = table.currentIndex().row();
    EXPECT_TRUE(row < 0 ? current > 1 && current < kRows - 2 : current == row) << current;
  }
  Press({Qt::Key_Down, Qt::SHIFT | Qt::Key_Down, Qt::CTRL | Qt::Key_C});
  EXPECT_EQ(Copied(), "-1\t-1\r\n-2\t-2\r\n");
  Press({Qt::SHIFT | Qt::Key_Home, Qt::CTRL | Qt::Key_C});
  EXPECT_EQ(Copied(), "0\t0\r\n-1\t-1\r\n");
  Press({Qt::CTRL | Qt::Key_A, Qt::CTRL | Qt::Key_C});
  EXPECT_EQ(Copied().count('\n'), kRows);
  list.Select({{2, 2}});
  EXPECT_EQ(table.selectionModel()->selectedRows(), QModelIndexList{table.model()->index(2, 0)});
}

TEST_F(Lists, AsManyNewRowsKeepTheMarksAndThePlace) {
  table.verticalScrollBar()->setValue(500);
  const int place = table.verticalScrollBar()->value();
  table.setCurrentIndex(table.model()->index(502, 0));
  Press({Qt::CTRL | Qt::Key_A});
  EXPECT_EQ(list.Selected(), (std::vector<RowSpan>{{0, kRows - 1}}));
  SetRows(kRows);
  EXPECT_EQ(table.verticalScrollBar()->value(), place);
  EXPECT_EQ(table.currentIndex().row(), 502);
  EXPECT_EQ(list.Selected(), (std::vector<RowSpan>{{0, kRows - 1}}));
  EXPECT_TRUE(table.selectionModel()->hasSelection());
  list.SetColumnWidths({1500, 3000});
  table.setColumnWidth(0, 60);
  list.Select({{0, 0}});
  SetRows(40);
  EXPECT_EQ(table.model()->rowCount(), 40);
  EXPECT_FALSE(table.selectionModel()->hasSelection());
  EXPECT_EQ(std::pair(table.columnWidth(0), table.columnWidth(1)), std::pair(60, 200));
  SetRows(0);
  Press({Qt::Key_End, Qt::Key_Home, Qt::CTRL | Qt::Key_C});
  EXPECT_EQ(list.Width(), 400 * 15);
}

// The pixels of a cell's picture.
QByteArray PictureIn(int row, int column) {
  const QModelIndex cell = The<QTableView>("MeasureView").model()->index(row, column);
  const QIcon picture = cell.data(Qt::DecorationRole).value<QIcon>();
  const QImage image = picture.pixmap(16, 16).toImage();
  return {reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes()};
}

TEST_F(Windows, LimitsAreSetByKeysAloneAndVerdictsHavePictures) {
  const auto value = [](auto& module) -> auto& {
    return module.sheet.Measures[0].Values[15];
  };
  Run({[](MainModule& module) { module.main.Tools[11].action(); },
       [=](MainModule& module) {
         module.sheet.Measures[0].HasData = true;
         value(module).Text = "150.0mV";
         std::set<QByteArray> pictures;
         for (int row = 0; row < 18; ++row) pictures.insert(PictureIn(row, 0));
         EXPECT_EQ(pictures.size(), 18u) << "each its own";
         EXPECT_FALSE(pictures.contains(QByteArray()));
         Shown("cmdPassFailed")->setFocus();
       },
       Later(Keys({Qt::Key_Space})),
       [](MainModule&) {
         EXPECT_EQ(Focus(), Shown("MTypeCombo"));
         EXPECT_FALSE(Shown("OverNum")->isEnabled() || Shown("UnderPic")->isEnabled());
         for (int i = 0; i < 4; ++i) Press({Qt::Key_Down});
         Press({Qt::ALT | Qt::Key_E});
       },
       [](MainModule&) {
         Press({Qt::ALT | Qt::Key_O, Qt::CTRL | Qt::Key_A, Qt::Key_1});
         EXPECT_TRUE(Shown("OverPic")->isEnabled());
         Press({Qt::Key_Tab, Qt::Key_Up, Qt::Key_Return});
       },
       [=](MainModule& module) {
         EXPECT_EQ(Bits(value(module).Enabled, value(module).Over == 1), "11");
         const QByteArray pass = PictureIn(4, 2);
         value(module).Text = "*****";
         module.sheet.MeasureViews[0]->ShowReading();
         EXPECT_NE(PictureIn(4, 2), pass);
       }});
}

// A tree of its own in a window that shows some of its rows.
struct Tree : testing::Test, Application {
  Tree() {
    model.keyDown = [](int) {};
    Make<TreeBinding>(widget, model, QStringList{"Wave"});
    for (int i = 0; i < 40; ++i) model.Add(kNoNode, "Row " + std::to_string(i), 1);
    widget.resize(200, 210);
    widget.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&widget));
    QCoreApplication::processEvents();
  }
  TreeView model;
  QTreeWidget widget;
};

TEST_F(Tree, AClickOnARowThatIsPartlyHiddenMeansThatRowAndMovesNothing) {
  TreeNode opened = kNoNode;
  std::vector<TreeNode> clicked;
  model.nodeClick = [&](TreeNode node) { clicked.push_back(node); };
  model.doubleClick = [&] { opened = model.Selected(); };
  QApplication::setDoubleClickInterval(50);
  QScrollBar& bar = *widget.verticalScrollBar();
  const int rowHeight = widget.visualItemRect(widget.topLevelItem(0)).height();
  const int frame = widget.height() - widget.viewport()->height();
  widget.resize(200, frame + 10 * rowHeight + rowHeight / 2);
  bar.setValue(5);
  const QPoint place(40, widget.viewport()->height() - 1);
  const TreeNode meant = widget.itemAt(place)->data(0, Qt::UserRole).toInt();
  const QPoint at = widget.viewport()->mapTo(&widget, place);
  QTest::mouseClick(widget.windowHandle(), Qt::LeftButton, {}, at);
  EXPECT_EQ(clicked, std::vector{meant});
  QTest::qWait(QApplication::doubleClickInterval() + 50);
  QTest::mouseDClick(widget.windowHandle(), Qt::LeftButton, {}, at);
  QCoreApplication::processEvents();
  EXPECT_EQ(opened, meant);
  EXPECT_EQ(widget.currentItem(), widget.itemAt(place));
  EXPECT_EQ(bar.value(), 5);
}

TEST_F(Tree, ATextIsShownAsItIsAndOneOfAMegabyteInPart) {
  const TreeNode added = model.Add(kNoNode, "x", 1);
  for (const std::string text : {"<img src='/dev/zero'>", "Wide [A <b>&lt;"}) {
    const std::string wide = text + std::string(1'000'000, 'w');
    model.SetText(model.First(), text);
    model.SetText(added, wide);
    QCoreApplication::processEvents();
    EXPECT_EQ(widget.topLevelItem(0)->text(0), FromWire(text));
    QTextDocument tip;
    tip.setHtml(widget.topLevelItem(0)->toolTip(0));
    EXPECT_EQ(tip.toPlainText(), FromWire(text));
    EXPECT_LT(widget.topLevelItem(40)->toolTip(0).size(), 1000);
    EXPECT_LT(widget.columnWidth(0), 10'000);
    EXPECT_EQ(model.Text(added), wide);
  }
}

TEST_F(Tree, ASelectionIsMutedAsLongAsTheTreeHasNotTheFocus) {
  QLineEdit other(&widget);
  other.show();
  model.Select(model.Children(kNoNode)[3]);
  const auto ground = [&](QWidget& focus) {
    focus.setFocus();
    QCoreApplication::processEvents();
    const QRect row = widget.visualItemRect(widget.topLevelItem(3));
    return widget.viewport()->grab(row).toImage().pixelColor(row.width() - 3, row.height() / 2);
  };
  for (const QColor& theme : {QColor(240, 240, 240), QColor(50, 50, 50)}) {
    QApplication::setPalette(QPalette(theme));
    EXPECT_GT(ground(widget).saturation(), 100);
    EXPECT_LT(ground(other).saturation(), 20);
    EXPECT_NE(ground(other), widget.palette().color(QPalette::Base));
  }
}

TEST_F(Tree, AMarkIsInTheCornerOfThePictureAndReadAloudButNotInTheText) {
  QTreeWidgetItem& item = *widget.topLevelItem(3);
  const TreeNode node = model.Children(kNoNode)[3];
  for (const QColor& theme : {QColor(240, 240, 240), QColor(50, 50, 50)}) {
    QApplication::setPalette(QPalette(theme));
    const auto look = [&] {
      QCoreApplication::processEvents();
      return item.icon(0).pixmap(16, 16, QIcon::Selected).toImage();
    };
    const QImage plain = look();
    model.SetMarked(node, true);
    const QImage marked = look();
    const int half = plain.width() / 2;
    const QRect rest(0, 0, half, half), corner(half, half, half, half);
    EXPECT_EQ(marked.copy(rest), plain.copy(rest));
    EXPECT_NE(marked.copy(corner), plain.copy(corner));
    EXPECT_EQ(item.text(0), "Row 3");
    // The header is the first child.
    const auto* row = QAccessible::queryAccessibleInterface(&widget)->child(4);
    EXPECT_EQ(row->text(QAccessible::Description), "unsaved changes");
    model.SetMarked(node, false);
    EXPECT_EQ(look(), plain);
    EXPECT_EQ(row->text(QAccessible::Description), "");
  }
}

TEST_F(Tree, AnEditBeginsWithTheWholeNameAndReportsOnlyWhatTheUserHasChanged) {
  const std::string wide = std::string(40'000, 'w');
  // The keys of the edit, and the name that is reported at its end.
  const std::tuple<std::string, std::vector<int>, QString, Qt::Key, std::string> rows[] = {
      {"refused", {}, "", Qt::Key_Return, "none"},
      {wide, {}, "", Qt::Key_Return, "none"},
      {"Wave0", {Qt::Key_Delete}, "a", Qt::Key_Escape, "none"},
      {"Wave0", {Qt::Key_F2, Qt::Key_Delete}, "", Qt::Key_Return, ""},
      {"Wave0", {}, "\u00b5 \u03a9\U0001f600", Qt::Key_Return, "\xb5 ??"},
      {"Wave0", {}, "a\r\nb\nc", Qt::Key_Return, "a b c"},
      {wide, {Qt::Key_Home, Qt::Key_Delete}, "", Qt::Key_Return, wide.substr(1)}};
  bool refused = true;
  int opened = 0;
  std::string reported;
  model.keyDown = [&](int code) {
    opened += code == kF2Key ? 1 : 100;
    if (!refused) model.StartLabelEdit();
  };
  model.afterLabelEdit = [&](std::string& text) { reported = text; };
  for (const auto& [name, keys, paste, end, expected] : rows) {
    model.Clear();
    const TreeNode node = model.Add(kNoNode, name, 1);
    model.Select(node);
    reported = "none", opened = 0;
    QCoreApplication::processEvents();
    QTest::keyClick(&widget, Qt::Key_F2);
    QTest::qWait(1);
    const QPointer<QLineEdit> line = widget.findChild<QLineEdit*>();
    ASSERT_EQ(line.isNull(), refused);
    if (std::exchange(refused, false)) continue;
    for (const int key : keys) QTest::keyClick(line, Qt::Key(key));
    QApplication::clipboard()->setText(paste);
    if (!paste.isEmpty()) line->paste();
    model.SetMarked(node, true);
    QTest::qWait(1);
    QTest::keyClick(line, end);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !line && reported == expected; })) << reported.size();
    EXPECT_EQ(model.Text(node), expected == "none" ? name : expected);
    EXPECT_EQ(opened, 1) << "keys of the edit are not the tree's";
  }
}

}  // namespace
}  // namespace oriolemark
