#include <QAccessible>
#include <QClipboard>
#include <QIcon>
#include <QScrollBar>
#include <QTableView>
#include <QTextBrowser>
#include <set>

#include "desktop/ListBinding.h"
#include "desktop/RunWindows.h"
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
    list.SetRows({.count = count,
                  .text =
                      [this](int row, int column) {
                        ++asked;
                        return column == 0 ? std::to_string(row) : "<b>" + std::string(600, 'x');
                      },
                  .copied = [](int row, int) { return std::to_string(-row); }});
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
  ASSERT_NE(reader->tableInterface(), nullptr);
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
         Press({Qt::Key_Tab, Qt::Key_Up, Qt::Key_F1});
       },
       [](MainModule&) {
         EXPECT_EQ(The<QTextBrowser>("HelpPage").source().fileName(), "limits.html");
         QTest::keyClick(Shown("frmPassFailed")->windowHandle(), Qt::Key_Return);
       },
       [=](MainModule& module) {
         EXPECT_EQ(Bits(value(module).Enabled, value(module).Over == 1), "11");
         const auto* model = The<QTableView>("MeasureView").model();
         EXPECT_EQ(model->index(4, 2).data().toString(), "Pass");
         const QByteArray pass = PictureIn(4, 2);
         value(module).Text = "*****";
         module.sheet.MeasureViews[0]->ShowReading();
         EXPECT_EQ(model->index(4, 2).data().toString(), "Fail");
         EXPECT_NE(PictureIn(4, 2), pass);
       }});
}

}  // namespace
}  // namespace oriolemark
