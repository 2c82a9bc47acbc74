#include "desktop/OutlinedStyle.h"

#include <QPainter>
#include <QStyleOption>
#include <QWidget>
#include <algorithm>
#include <array>
#include <cmath>

#include "desktop/Icons.h"

namespace oriolemark {
namespace {

constexpr double kShare = 0.6;        // of the text's colour in an outline
constexpr double kMarkedShare = 0.3;  // the same in that of the control with the focus
constexpr float kHint = 0.6F;         // how opaque the hint in an empty field is
constexpr double kRound = 2;          // the radius of the corners, in pixels
constexpr double kGlyph = 0.45;       // the size of a title button's sign, as a share of the button
constexpr double kHover = 0.2;        // how strongly a title button is filled under the mouse
constexpr double kPressed = 0.45;     // and while it is pressed
constexpr int kHighContrast = 250;    // from this difference in grey on, out of 255
constexpr int kDark = 128;            // lightness of the background

constexpr std::array kSquare{QStyle::PE_IndicatorCheckBox,  QStyle::PE_FrameLineEdit,
                             QStyle::PE_PanelButtonCommand, QStyle::PE_Frame,
                             QStyle::PE_PanelMenu,          QStyle::PE_FrameWindow};

constexpr std::array kTitleButtons{QStyle::SC_TitleBarMinButton, QStyle::SC_TitleBarNormalButton,
                                   QStyle::SC_TitleBarMaxButton, QStyle::SC_TitleBarCloseButton};

// A thin line lies between whole coordinates.
QRectF EdgeOf(const QRect& rect) {
  return QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5);
}

// Draws with the painter's settings restored at the end.
template <typename Draw>
void WithPen(QPainter& painter, const QPen& pen, Draw draw) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(pen);
  draw();
  painter.restore();
}

// The highlight's colour alone would be too dark as well.
QPen PenOf(const QStyleOption& option) {
  const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
  const bool marked =
      (option.state & QStyle::State_HasFocus) != 0 ||
      (button != nullptr && (button->features & QStyleOptionButton::DefaultButton) != 0);
  const auto from = marked ? QPalette::Highlight : QPalette::Window;
  return Mixed(option.palette.color(from), option.palette.color(QPalette::WindowText),
               marked ? kMarkedShare : kShare);
}

void Outline(QPainter& painter, const QStyleOption& option, const QRect& rect) {
  WithPen(painter, PenOf(option), [&] { painter.drawRoundedRect(EdgeOf(rect), kRound, kRound); });
}

void DrawGlyph(QPainter& painter, QStyle::SubControl button, const QRectF& place) {
  switch (button) {
    case QStyle::SC_TitleBarMinButton:
      return painter.drawLine(place.bottomLeft(), place.bottomRight());
    case QStyle::SC_TitleBarCloseButton:
      painter.drawLine(place.topLeft(), place.bottomRight());
      return painter.drawLine(place.topRight(), place.bottomLeft());
    case QStyle::SC_TitleBarNormalButton:
      return painter.drawRect(place.adjusted(2, 2, -2, -2));
    default:
      return painter.drawRect(place);
  }
}

}  // namespace

void OutlinedStyle::polish(QPalette& palette) {
  QProxyStyle::polish(palette);
  QColor hint = palette.color(QPalette::Text);
  hint.setAlphaF(kHint);
  palette.setColor(QPalette::PlaceholderText, hint);
}

// Other styles know their themes.
bool OutlinedStyle::Outlines(const QStyleOption& option) const {
  const QStyle* style = baseStyle();
  while (const auto* proxy = qobject_cast<const QProxyStyle*>(style)) style = proxy->baseStyle();
  if (!style->inherits("QFusionStyle")) return false;
  const QColor ground = option.palette.color(QPalette::Active, QPalette::Window);
  const QColor text = option.palette.color(QPalette::Active, QPalette::WindowText);
  return ground.lightness() < kDark ||
         std::abs(qGray(ground.rgb()) - qGray(text.rgb())) >= kHighContrast;
}

void OutlinedStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                  QPainter* painter, const QWidget* widget) const {
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  const bool round = element == PE_IndicatorRadioButton;
  if (!round && std::ranges::find(kSquare, element) == kSquare.end()) return;
  if (!Outlines(*option)) return;
  if (!round) return Outline(*painter, *option, option->rect);
  WithPen(*painter, PenOf(*option), [&] { painter->drawEllipse(EdgeOf(option->rect)); });
}

void OutlinedStyle::drawControl(ControlElement element, const QStyleOption* option,
                                QPainter* painter, const QWidget* widget) const {
  QProxyStyle::drawControl(element, option, painter, widget);
  if (element == CE_ProgressBarGroove && Outlines(*option)) {
    Outline(*painter, *option, option->rect);
  }
}

void OutlinedStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                       QPainter* painter, const QWidget* widget) const {
  const auto* bar = qstyleoption_cast<const QStyleOptionTitleBar*>(option);
  const bool outlines = Outlines(*option);
  if (bar != nullptr && outlines) return DrawTitleBar(*bar, *painter, widget);
  QProxyStyle::drawComplexControl(control, option, painter, widget);
  if (!outlines) return;
  if (control == CC_ComboBox) Outline(*painter, *option, option->rect);
  if (control == CC_ScrollBar) {
    Outline(*painter, *option, subControlRect(control, option, SC_ScrollBarSlider, widget));
  }
}

// Disabled text with a bright shadow cannot be read on a dark background.
int OutlinedStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                             QStyleHintReturn* returned) const {
  return hint == SH_EtchDisabledText ? 0 : QProxyStyle::styleHint(hint, option, widget, returned);
}

// The toolkit draws its words and signs in plain black or white.
void OutlinedStyle::DrawTitleBar(const QStyleOptionTitleBar& bar, QPainter& painter,
                                 const QWidget* widget) const {
  const auto place = [&](SubControl part) {
    return proxy()->subControlRect(CC_TitleBar, &bar, part, widget);
  };
  QStyleOptionTitleBar ground(bar);
  ground.text.clear();
  ground.subControls = SC_TitleBarLabel;
  QProxyStyle::drawComplexControl(CC_TitleBar, &ground, &painter, widget);
  const bool active = (bar.titleBarState & State_Active) != 0;
  QColor ink = bar.palette.color(active ? QPalette::HighlightedText : QPalette::WindowText);
  const QIcon icon = widget != nullptr ? widget->windowIcon() : bar.icon;
  icon.paint(&painter, place(SC_TitleBarSysMenu), Qt::AlignCenter,
             active ? QIcon::Selected : QIcon::Normal);
  const QRect label = place(SC_TitleBarLabel);
  WithPen(painter, ink, [&] {
    painter.drawText(label, Qt::AlignCenter | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(bar.text, Qt::ElideRight, label.width()));
  });
  for (const SubControl button : kTitleButtons) {
    const QRect rect = place(button);
    if (rect.isEmpty()) continue;
    const double side = std::floor(rect.height() * kGlyph);
    QRectF glyph(0, 0, side, side);
    glyph.moveCenter(EdgeOf(rect).center());
    WithPen(painter, ink, [&] {
      if ((bar.activeSubControls & button) != 0) {
        painter.setOpacity((bar.state & State_Sunken) != 0 ? kPressed : kHover);
        painter.fillRect(rect, ink);
        painter.setOpacity(1);
      }
      painter.drawRoundedRect(EdgeOf(rect), kRound, kRound);
      DrawGlyph(painter, button, glyph);
    });
  }
}

}  // namespace oriolemark
