#pragma once

#include <QProxyStyle>

class QStyleOptionTitleBar;

namespace oriolemark {

// The desktop's style. On dark and high-contrast themes, the toolkit's own style derives its
// outlines from the background and cannot be seen there. Boxes, fields and the titles of the child
// windows are then drawn in the colours of the text.
class OutlinedStyle : public QProxyStyle {
 public:
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                          QPainter* painter, const QWidget* widget) const override;

  // Themes without a colour for a field's hint leave it dark. It gets that of the text, fainter.
  using QProxyStyle::polish;
  void polish(QPalette& palette) override;

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override;

 private:
  bool Outlines(const QStyleOption& option) const;
  void DrawTitleBar(const QStyleOptionTitleBar& bar, QPainter& painter,
                    const QWidget* widget) const;
};

}  // namespace oriolemark
