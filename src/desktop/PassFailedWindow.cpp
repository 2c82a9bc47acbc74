#include "desktop/PassFailedWindow.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPointer>
#include <QPushButton>

#include "desktop/Bind.h"
#include "desktop/Builders.h"
#include "desktop/Icons.h"

namespace oriolemark {
namespace {

constexpr int kNumberWidth = 190;  // so that the title shows the item's name

// A picture that fades while it is disabled.
class LimitPicture : public QWidget {
 public:
  explicit LimitPicture(const QString& picture) : icon_(PictureNamed(picture)) {
    setFixedSize(24, 24);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    icon_.paint(&painter, rect(), Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
  }

 private:
  QIcon icon_;
};

// The words for one limit. The access key follows "&".
struct LimitWords {
  QString name;
  QString caption;
  QString spoken;
};

QLabel& AddCaption(QGridLayout& grid, int row, const QString& text, QWidget& buddy) {
  auto& label = Make<QLabel>(text);
  label.setBuddy(&buddy);
  grid.addWidget(&label, row, 1);
  return label;
}

void AddLimit(QGridLayout& grid, int row, const LimitWords& words, TextBox& number, ComboBox& unit,
              Control& picture) {
  auto& shownPicture = Make<LimitPicture>("Limit" + words.name);
  Name(shownPicture, words.name + "Pic", {});
  grid.addWidget(&shownPicture, row, 0);
  Bind(shownPicture, picture);
  auto& line = Make<QLineEdit>();
  Name(line, words.name + "Num", words.spoken);
  // The caption is grey whenever its box is.
  QLabel& caption = AddCaption(grid, row, words.caption, line);
  grid.addWidget(&line, row, 2);
  Bind(line, number);
  number.onChanged = [guard = QPointer<QLabel>(&caption), follow = number.onChanged, &number] {
    follow();
    if (guard) guard->setEnabled(number.Enabled());
  };
  number.onChanged();
  auto& units = Make<QComboBox>();
  Name(units, words.name + "Unit", "Unit of the " + words.spoken.toLower());
  units.setMinimumContentsLength(4);
  grid.addWidget(&units, row, 3);
  Bind(units, unit);
}

}  // namespace

PassFailedWindow::PassFailedWindow(frmPassFailed& form, QWidget* parent)
    : FormDialog(form, "frmPassFailed", parent) {
  auto& layout = Make<QVBoxLayout>(this);
  layout.setSizeConstraint(QLayout::SetFixedSize);
  auto& grid = Make<QGridLayout>();
  layout.addLayout(&grid);
  grid.setColumnMinimumWidth(2, kNumberWidth);
  auto& measure = Make<QComboBox>();
  Name(measure, "MTypeCombo", "Measure");
  measure.setMaxVisibleItems(kMeasureValues);
  AddCaption(grid, 0, "&Measure", measure);
  grid.addWidget(&measure, 0, 2, 1, 2);
  Bind(measure, form.MTypeCombo);
  auto& enabled = Make<QVBoxLayout>();
  AddCheck(enabled, "EnabledChk", "&Enabled", form.EnabledChk,
           "Tests this value against the two limits");
  grid.addLayout(&enabled, 1, 2, 1, 2);
  AddLimit(grid, 2, {"Over", "&Over", "Upper limit"}, form.OverNum, form.OverUnit, form.OverPic);
  AddLimit(grid, 3, {"Under", "&Under", "Lower limit"}, form.UnderNum, form.UnderUnit,
           form.UnderPic);
  auto& buttons = Make<QHBoxLayout>();
  layout.addLayout(&buttons);
  buttons.addStretch(1);
  AddButton(buttons, "OKButton", "OK", form.OKButton).setDefault(true);
  AddButton(buttons, "CancelButton", "Cancel", form.CancelButton);
}

}  // namespace oriolemark
