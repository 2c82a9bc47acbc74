#pragma once

#include <QWidget>
#include <vector>

#include "panel/KeySender.h"

namespace oriolemark {

class KeyButton;

// The window whose names the keys get. The virtual panel has another name for one of them.
enum class FrontOf { KeyWindow, Panel };

// The keys of the instrument's front in their groups. Its size follows from the font. Ctrl+1 to
// Ctrl+5 press the soft keys anywhere in the window.
class PanelFront : public QWidget {
 public:
  PanelFront(KeySender& sender, FrontOf names, QWidget& window);

  // A message that blocks the window lets no release through to a held key.
  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QRectF Cell(double row, double column, double columns) const;
  void AddKeys(KeySender& sender, FrontOf names);
  void AddSoftKey(int number, KeyButton& key);

  double keyWidth_ = 0;
  double keyHeight_ = 0;
  std::vector<KeyButton*> keys_;
};

}  // namespace oriolemark
