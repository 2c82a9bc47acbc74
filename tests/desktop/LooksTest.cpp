#include <QCheckBox>
#include <QDialog>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableView>

#include "desktop/OutlinedStyle.h"
#include "desktop/RunWindows.h"

namespace oriolemark {
namespace {

// How many pixels differ from the first of their row enough to be seen.
int Seen(QWidget& widget, const QRect& part) {
  const QImage image = widget.grab(part).toImage();
  int seen = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      seen += std::abs(qGray(image.pixel(x, y)) - qGray(image.pixel(0, y))) >= 50 ? 1 : 0;
    }
  }
  return seen;
}

TEST(OutlinedStyle, UncheckedBoxesAndTheButtonsOfAChildWindowAreSeenInEachTheme) {
  for (const char* ground : {"#ffffff", "#efefef", "#353539", "#000000"}) {
    SCOPED_TRACE(ground);
    Application own;
    QApplication::setStyle(std::make_unique<OutlinedStyle>().release());
    QPalette palette{QColor(ground), QColor(ground)};
    palette.setColor(QPalette::Base, ground);
    QApplication::setPalette(palette);
    QCheckBox check;
    QRadioButton option;
    EXPECT_GE(Seen(check, check.rect()), 30);
    EXPECT_GE(Seen(option, option.rect()), 20);
    QMdiArea area;
    area.resize(400, 300);
    QMdiSubWindow& back = *area.addSubWindow(std::make_unique<QWidget>().release());
    QMdiSubWindow& front = *area.addSubWindow(std::make_unique<QWidget>().release());
    area.show();
    area.setActiveSubWindow(&front);
    back.setGeometry(0, 0, 300, 200);
    EXPECT_GE(Seen(back, {220, 4, 76, 16}), 140);
  }
}

}  // namespace
}  // namespace oriolemark
