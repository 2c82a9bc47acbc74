#include "desktop/MeasureWindow.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QTableView>

#include "desktop/Bind.h"
#include "desktop/Builders.h"
#include "desktop/ListBinding.h"
#include "desktop/ListPanel.h"

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

class MeasurePanel : public ListPanel {
 public:
  explicit MeasurePanel(frmMeasure& form) : ListPanel(form) {
    AddButton(bar_, "cmdPassFailed", "&Pass && Fail...", form.cmdPassFailed)
        .setToolTip("Which values are tested, and their limits");
    AddButton(bar_, "cmdExport", "Export...", form.cmdExport);
    AddList(form.SettingLabel, MakeList("MeasureView", "Measures", form.MeasureView, Pictures()));
  }
};

}  // namespace

MeasureWindow::MeasureWindow(frmMeasure& form)
    : InnerWindow(form, "frmMeasure", "Measure", Make<MeasurePanel>(form)) {}

}  // namespace oriolemark
