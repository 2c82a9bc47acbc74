#include "desktop/KeyButton.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPolygonF>
#include <algorithm>
#include <array>
#include <utility>

#include "desktop/Bind.h"
#include "desktop/Icons.h"

namespace oriolemark {
namespace {

constexpr double kRound = 4;
constexpr double kArrow = 5;  // half the width of an arrow

void DrawArrow(QPainter& painter, QPointF centre, KeySign sign) {
  constexpr std::array kTurns{std::pair(KeySign::Up, 0), std::pair(KeySign::Right, 90),
                              std::pair(KeySign::Down, 180), std::pair(KeySign::Left, 270)};
  const auto* turn = std::find_if(kTurns.begin(), kTurns.end(),
                                  [sign](const auto& row) { return row.first == sign; });
  if (turn == kTurns.end()) return;
  painter.translate(centre);
  painter.rotate(turn->second);
  painter.drawPolygon(
      QPolygonF({{-kArrow, kArrow / 2}, {kArrow, kArrow / 2}, {0, -kArrow * 3 / 4}}));
}

}  // namespace

KeyButton::KeyButton(const PanelKey& key, KeySender& sender, QWidget* parent)
    : QAbstractButton(parent), key_(key), sender_(sender) {
  setFocusPolicy(Qt::StrongFocus);
  // The toolkit clicks for shortcuts and screen readers only. The handlers below do the rest.
  connect(this, &QAbstractButton::clicked, this, [this] { sender_.Click(key_); });
}

void KeyButton::SetSign(KeySign sign, const QString& text, const QColor& accent) {
  sign_ = sign;
  setText(text);
  accent_ = accent;
}

void KeyButton::Press(Hold by) {
  if (hold_) return;
  hold_ = by;
  setDown(true);
  if (by != Hold::Enter) sender_.Press(key_);
}

void KeyButton::LetGo(Hold by, KeySender::Release where) {
  if (hold_ != by) return;
  hold_.reset();
  setDown(false);
  sender_.LetGo(key_, where);
}

void KeyButton::Drop() {
  if (hold_) LetGo(*hold_, KeySender::Release::Outside);
}

void KeyButton::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) Press(Hold::Mouse);
}

void KeyButton::mouseMoveEvent(QMouseEvent* event) {
  if (hold_ == Hold::Mouse) setDown(hitButton(event->position().toPoint()));
}

void KeyButton::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const bool inside = hitButton(event->position().toPoint());
  LetGo(Hold::Mouse, inside ? KeySender::Release::Inside : KeySender::Release::Outside);
}

// The desktop repeats a held key of the keyboard by itself. The sender has its own pace.
void KeyButton::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Space:
      if (!event->isAutoRepeat()) Press(Hold::Space);
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (!event->isAutoRepeat()) Press(Hold::Enter);
      break;
    case Qt::Key_Escape:
      event->ignore();
      break;
    default:
      QAbstractButton::keyPressEvent(event);
  }
}

void KeyButton::keyReleaseEvent(QKeyEvent* event) {
  if (event->isAutoRepeat()) return;
  if (event->key() == Qt::Key_Space) LetGo(Hold::Space, KeySender::Release::Inside);
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    LetGo(Hold::Enter, KeySender::Release::Inside);
  }
}

void KeyButton::focusOutEvent(QFocusEvent* event) {
  if (hold_ != Hold::Mouse) Drop();
  QAbstractButton::focusOutEvent(event);
}

void KeyButton::hideEvent(QHideEvent* event) {
  Drop();
  QAbstractButton::hideEvent(event);
}

void KeyButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QColor ink = palette().color(QPalette::ButtonText);
  const QColor face = palette().color(QPalette::Button);
  const bool lit = underMouse() && !isDown();
  const QRectF body = QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5);
  painter.setPen(hasFocus() ? QPen(palette().color(QPalette::Highlight), 2)
                            : QPen(Mixed(face, ink, 0.45), 1));
  painter.setBrush(Mixed(face, ink, isDown() ? 0.3 : lit ? 0.02 : 0.08));
  painter.drawRoundedRect(body, kRound, kRound);
  if (accent_.isValid()) {
    painter.fillRect(QRectF(body.left() + 6, body.bottom() - 5, body.width() - 12, 2.5), accent_);
  }
  painter.setPen(ink);
  painter.setBrush(ink);
  const QRectF room = accent_.isValid() ? body.adjusted(0, 0, 0, -3) : body;
  if (sign_ == KeySign::Text) painter.drawText(room, Qt::AlignCenter, text());
  painter.setPen(Qt::NoPen);
  if (sign_ == KeySign::Dot) painter.drawEllipse(room.center(), kArrow / 2, kArrow / 2);
  DrawArrow(painter, room.center(), sign_);
}

}  // namespace oriolemark
