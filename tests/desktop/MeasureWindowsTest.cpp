#include <QIcon>
#include <QTableView>
#include <QTextBrowser>
#include <set>

#include "desktop/RunWindows.h"
#include "support/Tables.h"

namespace oriolemark {
namespace {

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
