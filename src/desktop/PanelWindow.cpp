#include "desktop/PanelWindow.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include "desktop/Bind.h"
#include "desktop/Builders.h"
#include "desktop/PanelFront.h"
#include "desktop/ScreenWidget.h"

namespace oriolemark {
namespace {

constexpr QSize kFrame(16, 48);  // room for the desktop's window frame

}  // namespace

PanelWindow::PanelWindow(frmV_Panel& form, QWidget* parent)
    : FormDialog(form, "frmV_Panel", parent) {
  auto& layout = Make<QHBoxLayout>(this);
  auto& column = Make<QVBoxLayout>();
  layout.addLayout(&column, 1);
  column.addWidget(&Make<ScreenWidget>(form.WavePic, this), 1);
  auto& buttons = Make<QHBoxLayout>();
  column.addLayout(&buttons);
  QPushButton& run = AddButton(buttons, "cmdRun", "&Run", form.cmdRun);
  run.setToolTip("Follows the instrument's screen");
  QPushButton& stop = AddButton(buttons, "cmdStop", "&Stop", form.cmdStop);
  stop.setToolTip("Freezes the picture");
  // Each disables itself. The focus goes to the other one, so that Space is a switch.
  connect(&run, &QPushButton::clicked, &stop, [&stop] { stop.setFocus(); });
  connect(&stop, &QPushButton::clicked, &run, [&run] { run.setFocus(); });
  buttons.addStretch(1);
  AddButton(buttons, "cmdExport", "&Export...", form.cmdExport)
      .setToolTip("Saves the picture as a bitmap");
  AddButton(buttons, "cmdPreview", "Print Pre&view", form.cmdPreview)
      .setToolTip("Shows the page with the picture");
  AddButton(buttons, "cmdPrint", "&Print", form.cmdPrint).setToolTip("Prints the picture");
  layout.addWidget(&Make<PanelFront>(form.Keys, FrontOf::Panel, *this), 0, Qt::AlignTop);
  // Enter belongs to the keys.
  for (auto* button : findChildren<QPushButton*>()) button->setAutoDefault(false);
  setWindowFlag(Qt::WindowMinMaxButtonsHint);
  // The toolkit would open it at two thirds of the screen at most.
  resize(sizeHint().boundedTo(screen()->availableSize() - kFrame));
}

}  // namespace oriolemark
