#pragma once

#include <QWidget>
#include <functional>
#include <memory>

#include "platform/Picture.h"
#include "platform/RasterCanvas.h"

namespace oriolemark {

// A raster that draws its texts in the font of the program's pictures.
std::unique_ptr<Canvas> MakeRasterCanvas();

// Picture pixels per widget pixel. Each picture pixel takes a whole number of screen pixels, the
// nearest one, so that strokes are even and texts keep about their size.
double CanvasScale(const QWidget& widget);

// Shows a picture inside the area behind it and reports the mouse in pixels of the picture. The
// picture's pixels are shown as they are and never copied.
class WavePictureWidget : public QWidget {
 public:
  // A key over the picture; false when it is none of the view's.
  std::function<bool(const QKeyEvent&)> onKey;

  WavePictureWidget(Picture& picture, Backdrop& backdrop, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  // The pixel of the picture at a place of the widget.
  QPointF InPicture(QPointF at) const;
  bool OverPicture(QPointF at) const;
  void ShowPointer();

  Picture& picture_;
  Backdrop& backdrop_;
  bool marked_ = false;  // the keyboard brought the focus here: a frame shows it
  bool held_ = false;    // a button that went down over the picture keeps the mouse
};

}  // namespace oriolemark
