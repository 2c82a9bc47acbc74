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

TEST_F(Windows, AButtonThatWasDisabledUnderTheKeyboardGetsTheFocusBack) {
  Run({[](MainModule& module) { module.main.Tools[10].action(); },
       [](MainModule& module) {
         auto& view = dynamic_cast<frmWave&>(*module.sheet.WaveViews[0]);
         QWidget* refresh = Shown("cmdRefresh");
         const auto disable = [&] {
           refresh->setFocus();
           view.cmdRefresh.SetEnabled(false);
           EXPECT_FALSE(refresh->hasFocus());
         };
         disable();
         view.cmdRefresh.SetFace(kStopFace);
         view.OptionCH.SetOptionEnabled(0, false);  // the neighbour, too
         view.cmdRefresh.SetEnabled(true);
         EXPECT_TRUE(refresh->hasFocus());
         disable();
         QWidget* picture = Shown("WavePic");
         picture->setFocus();
         view.cmdRefresh.SetEnabled(true);
         EXPECT_TRUE(picture->hasFocus()) << "where the user has gone meanwhile";
       }});
}

}  // namespace
}  // namespace oriolemark
