#include <QTest>

#include "desktop/RunWindows.h"

namespace oriolemark {
namespace {

TEST_F(Windows, TabVisitsTheControllersButtonsBothWays) {
  Run({[](MainModule&) {
    QWidget* tree = Shown("CtrlTreeView");
    QWidget* upload = Shown("cmdUpload");
    tree->setFocus();
    QTest::keyClick(tree, Qt::Key_Backtab);
    EXPECT_TRUE(Shown("cmdDownload")->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    EXPECT_TRUE(upload->hasFocus());
    QTest::keyClick(upload, Qt::Key_Backtab);
    EXPECT_FALSE(upload->hasFocus() || tree->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_TRUE(upload->hasFocus());
  }});
}

}  // namespace
}  // namespace oriolemark
