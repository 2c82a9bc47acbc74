#pragma once

#include <QWidget>
#include <functional>

#include "platform/Picture.h"

namespace oriolemark {

// Picture pixels per widget pixel. Each picture pixel takes a whole number of screen pixels, the
// nearest one, so that strokes are even and texts keep about their size.
double CanvasScale(const QWidget& widget);

// Shows a picture inside the area behind it and reports the mouse in pixels of the picture. The
// picture's pixels are shown as they are and never copied.
class WavePictureWidget : public QWidget {
 public:
  // Handles a key over the picture. Returns false if the view does not use the key.
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
  // The picture pixel at a point of the widget.
  QPointF InPicture(QPointF at) const;
  bool OverPicture(QPointF at) const;
  void ShowPointer();

  Picture& picture_;
  Backdrop& backdrop_;
  bool marked_ = false;  // the focus came by keyboard and is shown by a frame
  bool held_ = false;    // a button was pressed over the picture and is still down
};

}  // namespace oriolemark
