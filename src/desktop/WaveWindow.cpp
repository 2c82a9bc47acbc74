#include "desktop/WaveWindow.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <map>

#include "desktop/Bind.h"
#include "desktop/Builders.h"
#include "desktop/WavePictureWidget.h"
#include "platform/Keys.h"

namespace oriolemark {
namespace {

constexpr QSize kLeastPicture(120, 90);  // also the height of the refresh button's frame

constexpr QSize kOutputIcon(20, 20);

const std::map<int, int> kArrowCodes{{Qt::Key_Left, kLeftKey},
                                     {Qt::Key_Right, kRightKey},
                                     {Qt::Key_Up, kUpKey},
                                     {Qt::Key_Down, kDownKey}};

bool MoveCursor(frmWave& form, const QKeyEvent& event) {
  const auto code = kArrowCodes.find(event.key());
  return code != kArrowCodes.end() && form.WavePic_KeyDown(code->second, HeldKeys(event));
}

// A group of the strip, with small margins because the strip is narrow.
QVBoxLayout& AddTightGroup(QBoxLayout& strip, const QString& title) {
  QVBoxLayout& group = AddGroup(strip, title);
  group.setContentsMargins(4, 2, 4, 2);
  group.setSpacing(1);
  return group;
}

void AddBar(QWidget& parent, const QString& name, Qt::Orientation orientation, const QString& text,
            ScrollBar& model) {
  auto& bar = Make<QScrollBar>(orientation, &parent);
  Name(bar, name, text);
  bar.setFocusPolicy(Qt::StrongFocus);
  Bind(bar, model);
}

// Scrolls its controls if it is not high enough for them.
class StripArea : public QScrollArea {
 public:
  StripArea(QWidget& strip, QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    setWidget(&strip);
    verticalScrollBar()->setAccessibleName("Scroll the controls");
  }

  // The width that the controls need, including the scroll bar if it is shown.
  int WidthFor(int height) const {
    const bool scrolls = height < widget()->minimumSizeHint().height();
    return widget()->sizeHint().width() + (scrolls ? verticalScrollBar()->sizeHint().width() : 0);
  }
};

// The controls at the left edge, the picture and its scroll bars beside them.
class WavePanel : public ReadingPanel {
 public:
  explicit WavePanel(frmWave& form)
      : ReadingPanel(form), form_(form), strip_(Make<StripArea>(MakeStrip(), this)) {
    auto& picture = Make<WavePictureWidget>(form.WavePic, form.BackPic, this);
    picture.onKey = [&form](const QKeyEvent& event) { return MoveCursor(form, event); };
    AddBar(*this, "HScroll", Qt::Horizontal, "Scroll left and right", form.HScroll);
    AddBar(*this, "VScroll", Qt::Vertical, "Scroll up and down", form.VScroll);
  }

  QSize minimumSizeHint() const override {
    return {strip_.WidthFor(0) + kLeastPicture.width(), kLeastPicture.height()};
  }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    const int stripWidth = strip_.WidthFor(height());
    strip_.setGeometry(0, 0, stripWidth, height());
    form_.stripWidth = PixelsToUnits(stripWidth);
    form_.NoteCanvasScale(CanvasScale(*this));
    ReadingPanel::resizeEvent(event);
  }

  bool event(QEvent* event) override {
    // The window has moved to a screen with another scale. Its size may be unchanged.
    if (event->type() == QEvent::ScreenChangeInternal) form_.NoteCanvasScale(CanvasScale(*this));
    return ReadingPanel::event(event);
  }

 private:
  QWidget& MakeStrip() {
    auto& strip = Make<QWidget>();
    auto& layout = Make<QVBoxLayout>(&strip);
    layout.setContentsMargins(3, 3, 3, 3);
    layout.setSpacing(3);
    AddRefresh(AddTightGroup(layout, "Refresh"));
    auto& output = Make<QHBoxLayout>();
    layout.addLayout(&output);
    AddOutput(output, "cmdExport", "Export...", "Export", form_.cmdExport);
    AddOutput(output, "cmdPreview", "Print Preview", "Preview", form_.cmdPreview);
    AddOutput(output, "cmdPrint", "Print", "Print", form_.cmdPrint);
    AddChannels(AddTightGroup(layout, "Display"));
    QVBoxLayout& zoom = AddTightGroup(layout, "Zoom");
    auto& combo = Make<QComboBox>();
    Name(combo, "ZoomCombo", "Zoom");
    combo.setMinimumContentsLength(5);
    zoom.addWidget(&combo);
    Bind(combo, form_.ZoomCombo);
    AddCheck(zoom, "BestFitChk", "Best Fit", form_.BestFitChk);
    AddOptions(AddTightGroup(layout, "Color"), "OptionColor", form_.OptionColor,
               {{"Color"}, {"B&&W"}});
    AddCheck(AddTightGroup(layout, "Grid"), "GridCheck", "Grid", form_.GridCheck);
    QVBoxLayout& cursor = AddTightGroup(layout, "Cursor");
    AddCheck(cursor, "ChkCursorX", "CursorX", form_.ChkCursorX);
    AddCheck(cursor, "ChkCursorY", "CursorY", form_.ChkCursorY);
    layout.addStretch(1);
    return strip;
  }

  // A button for the picture's way out.
  void AddOutput(QHBoxLayout& row, const QString& name, const QString& text, const QString& picture,
                 Button& model) {
    QToolButton& button = MakeToolButton(*this, name, text, text, picture, model);
    button.setIconSize(kOutputIcon);
    button.setFocusPolicy(Qt::StrongFocus);
    row.addWidget(&button);
  }

  frmWave& form_;
  StripArea& strip_;
};

}  // namespace

WaveWindow::WaveWindow(frmWave& form)
    : InnerWindow(form, "frmWave", "Wave", Make<WavePanel>(form)) {}

}  // namespace oriolemark
