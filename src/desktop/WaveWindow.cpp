#include "desktop/WaveWindow.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QMdiArea>
#include <QPointer>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QToolButton>
#include <QVBoxLayout>

#include "desktop/Bind.h"
#include "desktop/Icons.h"
#include "desktop/WavePictureWidget.h"

namespace oriolemark {
namespace {

constexpr QSize kFirstSize(640, 480);
constexpr QSize kLeastPicture(120, 90);  // also the height of the refresh button's frame

QGroupBox& AddGroup(QWidget& strip, const QString& title) {
  auto& group = Make<QGroupBox>(title, &strip);
  auto& layout = Make<QVBoxLayout>(&group);
  layout.setContentsMargins(4, 2, 4, 2);
  layout.setSpacing(1);
  strip.layout()->addWidget(&group);
  return group;
}

void AddCheck(QGroupBox& group, const char* name, const QString& text, CheckBox& model) {
  auto& check = Make<QCheckBox>(text, &group);
  Name(check, name, text);
  group.layout()->addWidget(&check);
  Bind(check, model);
}

void AddOptions(QGroupBox& group, const char* name, const QStringList& texts, OptionGroup& model) {
  std::vector<QRadioButton*> options;
  for (const QString& text : texts) {
    auto& option = Make<QRadioButton>(text, &group);
    const QByteArray numbered = QByteArray(name) + QByteArray::number(int(options.size()));
    Name(option, numbered.constData(), QString(text).replace("&&", "&"));
    group.layout()->addWidget(&option);
    options.push_back(&option);
  }
  Bind(options, model);
}

// The button's face is the name of its picture, and nearly its text.
void ShowFace(QToolButton& button, const Button& model) {
  const QString face = FromWire(model.Face().empty() ? kRefreshFace : model.Face());
  button.setIcon(PictureNamed(face));
  button.setAccessibleName(face);
  button.setToolTip(face == kRefreshFace ? QString("Refresh (F5)") : face);
}

void AddRefresh(QGroupBox& group, Button& model) {
  // Flat until the mouse is over it, sunk while it is pressed.
  auto& button = Make<QToolButton>(&group);
  button.setAutoRaise(true);
  button.setFocusPolicy(Qt::StrongFocus);
  button.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  button.setObjectName("cmdRefresh");
  button.setIconSize({24, 24});
  group.layout()->addWidget(&button);
  Bind(button, model);
  const QPointer<QToolButton> guard(&button);
  model.onChanged = [guard, follow = model.onChanged, &model] {
    follow();
    if (guard) ShowFace(*guard, model);
  };
  model.onChanged();
}

// The controls at the left edge.
QWidget& MakeStrip(frmWave& form) {
  auto& strip = Make<QWidget>();
  auto& layout = Make<QVBoxLayout>(&strip);
  layout.setContentsMargins(3, 3, 3, 3);
  layout.setSpacing(3);
  AddRefresh(AddGroup(strip, "Refresh"), form.cmdRefresh);
  AddOptions(AddGroup(strip, "Display"), "OptionCH", {"CH1", "CH2", "CH1&&2"}, form.OptionCH);
  QGroupBox& zoom = AddGroup(strip, "Zoom");
  auto& combo = Make<QComboBox>(&zoom);
  Name(combo, "ZoomCombo", "Zoom");
  combo.setMinimumContentsLength(5);
  zoom.layout()->addWidget(&combo);
  Bind(combo, form.ZoomCombo);
  AddCheck(zoom, "BestFitChk", "Best Fit", form.BestFitChk);
  AddOptions(AddGroup(strip, "Color"), "OptionColor", {"Color", "B&&W"}, form.OptionColor);
  AddCheck(AddGroup(strip, "Grid"), "GridCheck", "Grid", form.GridCheck);
  QGroupBox& cursor = AddGroup(strip, "Cursor");
  AddCheck(cursor, "ChkCursorX", "CursorX", form.ChkCursorX);
  AddCheck(cursor, "ChkCursorY", "CursorY", form.ChkCursorY);
  layout.addStretch(1);
  return strip;
}

void AddBar(QWidget& parent, const char* name, Qt::Orientation orientation, const QString& text,
            ScrollBar& model) {
  auto& bar = Make<QScrollBar>(orientation, &parent);
  Name(bar, name, text);
  bar.setFocusPolicy(Qt::StrongFocus);
  Bind(bar, model);
}

// The arrows move the first cursor of a pair, with Shift the second; with Ctrl further.
struct CursorKey {
  Qt::Key key;
  CursorLine line;
  CursorLine withShift;
  int units;
};

constexpr int kCtrlUnits = 10;
constexpr CursorKey kCursorKeys[] = {{Qt::Key_Left, CursorLine::X1, CursorLine::X2, -1},
                                     {Qt::Key_Right, CursorLine::X1, CursorLine::X2, 1},
                                     {Qt::Key_Up, CursorLine::Y1, CursorLine::Y2, -1},
                                     {Qt::Key_Down, CursorLine::Y1, CursorLine::Y2, 1}};

bool MoveCursor(frmWave& form, const QKeyEvent& event) {
  for (const CursorKey& row : kCursorKeys) {
    if (row.key != event.key()) continue;
    const bool shift = event.modifiers().testFlag(Qt::ShiftModifier);
    const bool far = event.modifiers().testFlag(Qt::ControlModifier);
    form.MoveCursor(shift ? row.withShift : row.line, far ? row.units * kCtrlUnits : row.units);
    return true;
  }
  return false;
}

// Scrolls its controls where it lacks the height for them.
class StripArea : public QScrollArea {
 public:
  StripArea(frmWave& form, QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    setWidget(&MakeStrip(form));
    verticalScrollBar()->setAccessibleName("Scroll the controls");
  }

  // What the controls need, with the bar where it shows.
  int WidthFor(int height) const {
    const bool scrolls = height < widget()->minimumSizeHint().height();
    return widget()->sizeHint().width() + (scrolls ? verticalScrollBar()->sizeHint().width() : 0);
  }
};

// The room inside the window.
class WavePanel : public QWidget {
 public:
  explicit WavePanel(frmWave& form) : form_(form), strip_(Make<StripArea>(form, this)) {
    auto& picture = Make<WavePictureWidget>(form.WavePic, form.BackPic, this);
    picture.onKey = [&form](const QKeyEvent& event) { return MoveCursor(form, event); };
    AddBar(*this, "HScroll", Qt::Horizontal, "Scroll left and right", form.HScroll);
    AddBar(*this, "VScroll", Qt::Vertical, "Scroll up and down", form.VScroll);
  }

  QSize minimumSizeHint() const override {
    return {strip_.WidthFor(0) + kLeastPicture.width(), kLeastPicture.height()};
  }

 protected:
  void resizeEvent(QResizeEvent*) override {
    const int stripWidth = strip_.WidthFor(height());
    strip_.setGeometry(0, 0, stripWidth, height());
    form_.stripWidth = PixelsToUnits(stripWidth);
    form_.canvasScale = CanvasScale(*this);
    form_.NoteInnerSize(PixelsToUnits(width()), PixelsToUnits(height()));
  }

  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() != Qt::Key_F5) return QWidget::keyPressEvent(event);
    const bool plain = event->modifiers() == Qt::NoModifier;
    form_.KeyDown(kF5Key, plain ? frmWave::ShiftKeys::None : frmWave::ShiftKeys::Held);
  }

 private:
  frmWave& form_;
  StripArea& strip_;
};

}  // namespace

WaveWindow::WaveWindow(frmWave& form) : form_(form) {
  setAttribute(Qt::WA_DeleteOnClose, false);
  setObjectName("frmWave");
  setWindowIcon(PictureNamed("Wave"));
  setWidget(&Make<WavePanel>(form));
  resize(kFirstSize);
  // Sizing, moving and maximising by keys.
  auto& menu = Make<QShortcut>(QKeySequence("Alt+-"), this);
  menu.setContext(Qt::WidgetWithChildrenShortcut);
  connect(&menu, &QShortcut::activated, this, &QMdiSubWindow::showSystemMenu);
  const QPointer<WaveWindow> guard(this);
  form.onChanged = [guard] {
    if (guard) guard->ShowForm();
  };
  form.onFront = [guard] {
    if (guard == nullptr || guard->mdiArea() == nullptr) return;
    if (guard->isMinimized()) guard->showNormal();
    guard->raise();
    guard->mdiArea()->setActiveSubWindow(guard);
  };
  form.onRepaint = [guard] {
    if (guard) guard->repaint();
  };
  form.onMoved = [guard] {
    if (guard) guard->setGeometry(ToPixels(guard->form_.Place()));
  };
}

void WaveWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  form_.Unload();
}

void WaveWindow::ShowForm() {
  ShowTitle(*this, form_);
  if (isHidden() == form_.Visible()) setVisible(form_.Visible());
}

}  // namespace oriolemark
