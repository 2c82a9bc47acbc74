#pragma once

#include <QAbstractButton>
#include <QString>
#include <optional>

#include "panel/KeySender.h"

namespace oriolemark {

// The sign on a key: a text, or a drawn arrow or dot.
enum class KeySign { Text, Up, Down, Left, Right, Dot };

// A front key. The mouse and Space press, hold and release it. Enter only clicks. A key that loses
// the user meanwhile is released outside: by the focus, by a message, or with its window.
class KeyButton : public QAbstractButton {
 public:
  KeyButton(const PanelKey& key, KeySender& sender, QWidget* parent);

  // `accent` is a bar below the sign; an invalid colour draws none.
  void SetSign(KeySign sign, const QString& text, const QColor& accent);

  // Releases the key outside, if it is held.
  void Drop();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  enum class Hold { Mouse, Space, Enter };

  void Press(Hold by);
  void LetGo(Hold by, KeySender::Release where);

  const PanelKey& key_;
  KeySender& sender_;
  KeySign sign_ = KeySign::Text;
  QColor accent_;
  std::optional<Hold> hold_;
};

}  // namespace oriolemark
