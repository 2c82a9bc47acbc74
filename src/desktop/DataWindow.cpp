#include "desktop/DataWindow.h"

#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include "desktop/Bind.h"
#include "desktop/Builders.h"
#include "desktop/ListBinding.h"

namespace oriolemark {
namespace {

// The controls in a row above the table.
class DataPanel : public ReadingPanel {
 public:
  explicit DataPanel(frmData& form) : ReadingPanel(form) {
    auto& layout = Make<QVBoxLayout>(this);
    layout.setContentsMargins(3, 3, 3, 3);
    auto& bar = Make<QHBoxLayout>();
    layout.addLayout(&bar);
    AddRefresh(bar);
    AddChannels(bar);
    bar.addStretch(1);
    AddButton(bar, "cmdExport", "Export...", form.cmdExport);
    auto& setting = Make<QLabel>();
    setting.setObjectName("SettingLabel");
    layout.addWidget(&setting);
    Bind(setting, form.SettingLabel);
    layout.addWidget(&MakeList("MeasureView", "Samples", form.MeasureView));
  }
};

}  // namespace

DataWindow::DataWindow(frmData& form)
    : InnerWindow(form, "frmData", "Data", Make<DataPanel>(form)) {}

}  // namespace oriolemark
