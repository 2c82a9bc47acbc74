#include "desktop/InnerWindow.h"

#include <QBoxLayout>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMdiArea>
#include <QShortcut>
#include <QToolButton>

#include "desktop/Bind.h"
#include "desktop/Builders.h"
#include "desktop/Icons.h"
#include "platform/Keys.h"

namespace oriolemark {
namespace {

constexpr QSize kFirstSize(640, 510);

// The button's face is the name of its picture. It is also the tool tip, except on the refresh
// face.
void ShowFace(QToolButton& button, const Button& model) {
  const QString face = FromWire(model.Face());
  button.setIcon(PictureNamed(face));
  button.setAccessibleName(face);
  button.setToolTip(face == kRefreshFace ? QString("Refresh (F5)") : face);
}

}  // namespace

void ReadingPanel::resizeEvent(QResizeEvent*) {
  form_.NoteInnerSize(PixelsToUnits(width()), PixelsToUnits(height()));
}

void ReadingPanel::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_F5) return QWidget::keyPressEvent(event);
  form_.KeyDown(kF5Key, HeldKeys(*event));
}

void ReadingPanel::AddRefresh(QBoxLayout& layout) {
  Button& model = form_.cmdRefresh;
  QToolButton& button = MakeToolButton(*this, "cmdRefresh", {}, {}, kRefreshFace, model);
  button.setFocusPolicy(Qt::StrongFocus);
  button.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  layout.addWidget(&button);
  const QPointer<QToolButton> guard(&button);
  model.onChanged = [guard, follow = model.onChanged, &model] {
    follow();
    if (guard) ShowFace(*guard, model);
  };
  model.onChanged();
}

void ReadingPanel::AddChannels(QBoxLayout& layout) {
  std::vector<OptionText> texts{{"CH1"}, {"CH2"}, {"CH1&&2"}};
  texts.resize(static_cast<std::size_t>(form_.OptionCH.Count()));
  AddOptions(layout, "OptionCH", form_.OptionCH, texts);
}

InnerWindow::InnerWindow(Form& form, const QString& name, const QString& picture, QWidget& panel)
    : form_(form) {
  setAttribute(Qt::WA_DeleteOnClose, false);
  setObjectName(name);
  setWindowIcon(PictureNamed(picture));
  setWidget(&panel);
  resize(kFirstSize);
  // The menu sizes, moves and maximises the window by keys.
  auto& menu = Make<QShortcut>(QKeySequence("Alt+-"), this);
  menu.setContext(Qt::WidgetWithChildrenShortcut);
  connect(&menu, &QShortcut::activated, this, &QMdiSubWindow::showSystemMenu);
  Follow(*this, form,
         {.place = [this] { setGeometry(ToPixels(form_.Place())); },
          .front = [this] { BringToFront(); }});
}

void InnerWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  form_.Unload();
}

void InnerWindow::BringToFront() {
  if (mdiArea() == nullptr) return;
  if (isMinimized()) showNormal();
  raise();
  mdiArea()->setActiveSubWindow(this);
}

}  // namespace oriolemark
