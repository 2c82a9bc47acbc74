#pragma once

#include <QWidget>

#include "platform/Picture.h"

namespace oriolemark {

// Shows the copy of the instrument's screen. Each of its pixels is a square of the same whole
// number of screen pixels, as large as fits.
class ScreenWidget : public QWidget {
 public:
  ScreenWidget(Picture& picture, QWidget* parent);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Picture& picture_;
};

}  // namespace oriolemark
