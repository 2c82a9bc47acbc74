#include "desktop/MeasureWindow.h"

#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include "desktop/Bind.h"
#include "desktop/Builders.h"
#include "desktop/ListBinding.h"

namespace oriolemark {
namespace {

// From picture 1 on: the quantities, then the two verdicts.
QStringList Pictures() {
  return {"MeasureVpp",
          "MeasureVmax",
          "MeasureVmin",
          "MeasureVavg",
          "MeasureVamp",
          "MeasureVtop",
          "MeasureVbase",
          "MeasureVrms",
          "MeasureVover",
          "MeasureVpre",
          "MeasureFreq",
          "MeasurePeriod",
          "MeasureRise",
          "MeasureFall",
          "MeasurePlusWidth",
          "MeasureMinusWidth",
          "MeasurePlusDuty",
          "MeasureMinusDuty",
          "Pass",
          "Fail"};
}

// The controls in a row above the list.
class MeasurePanel : public ReadingPanel {
 public:
  explicit MeasurePanel(frmMeasure& form) : ReadingPanel(form) {
    auto& layout = Make<QVBoxLayout>(this);
    layout.setContentsMargins(3, 3, 3, 3);
    auto& bar = Make<QHBoxLayout>();
    layout.addLayout(&bar);
    AddRefresh(bar);
    AddChannels(bar);
    bar.addStretch(1);
    AddButton(bar, "cmdPassFailed", "&Pass && Fail...", form.cmdPassFailed)
        .setToolTip("Which values are tested, and their limits");
    AddButton(bar, "cmdExport", "Export...", form.cmdExport);
    auto& setting = Make<QLabel>();
    setting.setObjectName("SettingLabel");
    layout.addWidget(&setting);
    Bind(setting, form.SettingLabel);
    layout.addWidget(&MakeList("MeasureView", "Measures", form.MeasureView, Pictures()));
  }
};

}  // namespace

MeasureWindow::MeasureWindow(frmMeasure& form)
    : InnerWindow(form, "frmMeasure", "Measure", Make<MeasurePanel>(form)) {}

}  // namespace oriolemark
