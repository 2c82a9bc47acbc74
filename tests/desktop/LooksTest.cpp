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

// By how many pixels the text of this widget exceeds its place.
int Excess(const QWidget& widget) {
  const auto words = [&](const QString& text) {
    return widget.fontMetrics().size(Qt::TextShowMnemonic, text).width() - widget.width();
  };
  if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
    return button->icon().isNull() ? words(button->text()) : 0;
  }
  if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) return words(group->title());
  if (const auto* tabs = qobject_cast<const QTabBar*>(&widget)) {
    return tabs->tabRect(tabs->count() - 1).right() - tabs->width();
  }
  if (const auto* table = qobject_cast<const QTableView*>(&widget)) {
    const QAbstractItemView& items = *table;
    int most = 0;
    for (int i = 0; i < table->model()->columnCount(); ++i) {
      const int header = table->horizontalHeader()->sectionSizeHint(i);
      const int needed = std::max(header, items.sizeHintForColumn(i));
      most = std::max(most, needed - table->columnWidth(i));
    }
    return most;
  }
  const auto* label = qobject_cast<const QLabel*>(&widget);
  if (label == nullptr || label->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored) return 0;
  return label->wordWrap() ? label->heightForWidth(label->width()) - label->height()
                           : label->minimumSizeHint().width() - label->width();
}

TEST_F(Windows, WithALargeBaseFontNoTextIsCutAndNoneStaysSmall) {
  basePoints_ = 14;
  const auto look = [](MainModule& module) {
    dynamic_cast<frmData&>(*module.sheet.DataViews[0])
        .MeasureView.SetRows({.count = 1, .text = [](int, int) { return "-2.9900E-04 V"; }});
    LoadDialogs(module);
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (qobject_cast<QDialog*>(window) != nullptr) window->show();
    }
    for (auto* pages : Shown("frmOptions")->findChildren<QTabWidget*>()) pages->setCurrentIndex(2);
    int seen = 0;
    for (const QWidget* widget : QApplication::allWidgets()) {
      if (!widget->isVisible()) continue;
      ++seen;
      SCOPED_TRACE(widget->metaObject()->className() + (" " + widget->objectName().toStdString()));
      EXPECT_LE(Excess(*widget), 1) << "for a fraction of a pixel";
      EXPECT_GE(widget->font().pointSizeF(), 11.5);
    }
    EXPECT_GT(seen, 200);
  };
  Run({AddView, [](MainModule& module) { module.main.Tools[11].action(); },
       [](MainModule& module) {
         module.main.Tools[12].action();
         module.main.mnuWindowTileVertical.Click();
       },
       [](MainModule& module) { module.main.mnuHelpContents.Click(); }, look,
       [](MainModule&) {
         for (QWidget* window : QApplication::topLevelWidgets()) {
           if (qobject_cast<QDialog*>(window) != nullptr) window->hide();
         }
       }});
}

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
