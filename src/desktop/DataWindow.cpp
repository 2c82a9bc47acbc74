#include "desktop/DataWindow.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QTableView>

#include "desktop/Bind.h"
#include "desktop/Builders.h"
#include "desktop/ListBinding.h"
#include "desktop/ListPanel.h"

namespace oriolemark {
namespace {

class DataPanel : public ListPanel {
 public:
  explicit DataPanel(frmData& form) : ListPanel(form) {
    AddButton(bar_, "cmdExport", "Export...", form.cmdExport);
    AddList(form.SettingLabel, MakeList("MeasureView", "Samples", form.MeasureView));
  }
};

}  // namespace

DataWindow::DataWindow(frmData& form)
    : InnerWindow(form, "frmData", "Data", Make<DataPanel>(form)) {}

}  // namespace oriolemark
