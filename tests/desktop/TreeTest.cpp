#include <QAccessible>
#include <QClipboard>
#include <QLineEdit>
#include <QPointer>
#include <QScrollBar>
#include <QTextDocument>
#include <QTreeWidget>

#include "desktop/Bind.h"
#include "desktop/RunWindows.h"
#include "desktop/TreeBinding.h"

namespace oriolemark {
namespace {

// A tree of its own in a window that shows some of its rows.
struct Tree : testing::Test, Application {
  Tree() {
    for (int i = 0; i < 40; ++i) model.Add(kNoNode, "Row " + std::to_string(i), 1);
    widget.resize(200, 210);
    widget.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&widget));
    QCoreApplication::processEvents();
  }
  TreeView model;
  QTreeWidget widget;
  TreeBinding& binding =
      *std::make_unique<TreeBinding>(widget, model, QStringList{"Wave"}).release();
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

TEST(LabelEditor, AnEditBeginsWithTheWholeNameAndReportsOnlyWhatTheUserHasChanged) {
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
  Application own;
  QTreeWidget widget;
  TreeView model;
  bool refused = true;
  int opened = 0;
  std::string reported;
  model.keyDown = [&](int code) {
    opened += code == kF2Key ? 1 : 100;
    if (!refused) model.StartLabelEdit();
  };
  model.afterLabelEdit = [&](std::string& text) { reported = text; };
  Make<TreeBinding>(widget, model, QStringList{"Wave"});
  widget.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&widget));
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
