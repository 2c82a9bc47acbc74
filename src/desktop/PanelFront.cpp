#include "desktop/PanelFront.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>
#include <QPen>
#include <QShortcut>
#include <algorithm>
#include <cmath>
#include <string_view>

#include "desktop/Bind.h"
#include "desktop/KeyButton.h"

namespace oriolemark {
namespace {

// Rows and columns are counted in keys. Groups and headings lie between whole rows.
constexpr double kGap = 4;     // pixels between two keys
constexpr double kMargin = 4;  // pixels around the keys of a group
constexpr double kTitle = 0.6;
constexpr double kFontShare = 0.85;
constexpr double kColumns = 5.34;
constexpr double kRows = 13.3;

struct Group {
  const char* title;
  double row;  // of its title
  double column;
  double columns;
  double rows;  // without the title
};

constexpr Group kGroups[] = {
    {"SOFT", 0, 0, 1, kRows - kTitle},
    {"MENU", 0, 1.2, 3, 2},
    {"RUN", 0, 4.34, 1, 2},
    {"VERTICAL", 2.85, 1.2, 4.14, 3.5},
    {"HORIZONTAL", 7.2, 1.2, 4.14, 2.5},
    {"TRIGGER", 10.55, 1.2, 4.14, 2.15},
};

struct Heading {
  const char* text;
  double row;
  double column;
  double columns;
};

// A heading above its keys, or between the two keys that raise and lower the value.
constexpr Heading kHeadings[] = {
    {"POSITION", 3.15, 3.2, 1}, {"VOLTS", 4.7, 4.34, 1},    {"/DIV", 5.1, 4.34, 1},
    {"POSITION", 7.55, 3.2, 1}, {"TIME/DIV", 9.28, 3.2, 1}, {"LEVEL", 11.75, 3.2, 1},
};

struct KeyPlace {
  const char* control;
  double row;
  double column;
  KeySign sign;
  const char* text = "";
  const char* accent = nullptr;  // the colour of the channel's trace
};

// In the order of the Tab key.
constexpr KeyPlace kPlaces[] = {
    {"VK_F1", 0.9, 0, KeySign::Text, "F1"},
    {"VK_F2", 3.4, 0, KeySign::Text, "F2"},
    {"VK_F3", 5.9, 0, KeySign::Text, "F3"},
    {"VK_F4", 8.4, 0, KeySign::Text, "F4"},
    {"VK_F5", 10.9, 0, KeySign::Text, "F5"},
    {"VK_Acquire", 0.6, 1.2, KeySign::Text, "Acquire"},
    {"VK_Display", 0.6, 2.2, KeySign::Text, "Display"},
    {"VK_Measure", 0.6, 3.2, KeySign::Text, "Measure"},
    {"VK_Cursor", 1.6, 1.2, KeySign::Text, "Cursor"},
    {"VK_Storage", 1.6, 2.2, KeySign::Text, "Storage"},
    {"VK_Utility", 1.6, 3.2, KeySign::Text, "Utility"},
    {"VK_Auto", 0.6, 4.34, KeySign::Text, "Auto"},
    {"VK_Run_Stop", 1.6, 4.34, KeySign::Text, "Run|Stop"},
    {"VK_CH1", 3.95, 1.2, KeySign::Text, "CH1", "#e0c000"},
    {"VK_CH2", 4.95, 1.2, KeySign::Text, "CH2", "#00b8c8"},
    {"VK_CH_Off", 5.95, 1.2, KeySign::Text, "CH Off"},
    {"VK_Math", 3.95, 2.2, KeySign::Text, "Math"},
    {"VK_Ref", 4.95, 2.2, KeySign::Text, "Ref"},
    {"VK_V_Pos_Inc", 3.95, 3.2, KeySign::Up},
    {"VK_P_V", 4.95, 3.2, KeySign::Dot},
    {"VK_V_Pos_Dec", 5.95, 3.2, KeySign::Down},
    {"VK_V_Inc", 3.95, 4.34, KeySign::Up},
    {"VK_V_Dec", 5.95, 4.34, KeySign::Down},
    {"VK_TimeMenu", 8.3, 1.2, KeySign::Text, "Menu"},
    {"VK_H_Pos_Dec", 8.3, 2.2, KeySign::Left},
    {"VK_P_H", 8.3, 3.2, KeySign::Dot},
    {"VK_H_Pos_Inc", 8.3, 4.34, KeySign::Right},
    {"VK_H_Dec", 9.3, 2.2, KeySign::Down},
    {"VK_H_Inc", 9.3, 4.34, KeySign::Up},
    {"VK_Trig_Menu", 11.2, 1.2, KeySign::Text, "Menu"},
    {"VK_Trig_50", 11.2, 2.2, KeySign::Text, "50%"},
    {"VK_Trig_Force", 12.2, 1.2, KeySign::Text, "Force"},
    {"VK_Trig_Lvl_Inc", 11.2, 4.34, KeySign::Up},
    {"VK_Trig_Lvl_Dec", 12.2, 4.34, KeySign::Down},
};

const PanelKey& KeyOf(const KeyPlace& place) {
  return *std::find_if(kPanelKeys.begin(), kPanelKeys.end() - 1, [&place](const PanelKey& key) {
    return std::string_view(key.control) == place.control;
  });
}

}  // namespace

PanelFront::PanelFront(KeySender& sender, FrontOf names, QWidget& window) : QWidget(&window) {
  setObjectName("Front");
  QFont small = font();
  if (small.pointSizeF() > 0) small.setPointSizeF(small.pointSizeF() * kFontShare);
  setFont(small);
  const QFontMetricsF metrics(small);
  keyWidth_ = std::ceil(metrics.horizontalAdvance("Run|Stop")) + 12;
  keyHeight_ = std::ceil(metrics.height()) + 16;
  AddKeys(sender, names);
  const QRectF last = Cell(kRows, kColumns - 1, 1);
  setFixedSize(static_cast<int>(std::ceil(last.right() + kMargin)) + 1,
               static_cast<int>(std::ceil(last.top())) + 1);
  window.installEventFilter(this);
}

QRectF PanelFront::Cell(double row, double column, double columns) const {
  return {kMargin + column * (keyWidth_ + kGap), row * (keyHeight_ + kGap),
          columns * (keyWidth_ + kGap) - kGap, keyHeight_};
}

void PanelFront::AddKeys(KeySender& sender, FrontOf names) {
  for (const KeyPlace& place : kPlaces) {
    const PanelKey& key = KeyOf(place);
    auto& button = Make<KeyButton>(key, sender, this);
    const bool otherName = names == FrontOf::Panel && key.panelControl != nullptr;
    Name(button, otherName ? key.panelControl : key.control, key.meaning);
    button.setToolTip(key.meaning);
    button.SetSign(place.sign, place.text, place.accent == nullptr ? QColor() : place.accent);
    button.setGeometry(Cell(place.row, place.column, 1).toRect());
    keys_.push_back(&button);
    if (place.column == 0) AddSoftKey(static_cast<int>(keys_.size()), button);
  }
}

void PanelFront::AddSoftKey(int number, KeyButton& key) {
  const QString keys = QString("Ctrl+%1").arg(number);
  key.setToolTip(QString("%1 (%2)").arg(key.toolTip(), keys));
  auto& shortcut = Make<QShortcut>(QKeySequence(keys), window());
  shortcut.setAutoRepeat(false);
  connect(&shortcut, &QShortcut::activated, &key, &QAbstractButton::click);
}

bool PanelFront::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::WindowBlocked) {
    for (KeyButton* key : keys_) key->Drop();
  }
  return QWidget::eventFilter(watched, event);
}

void PanelFront::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  // A line of whole pixels of the screen, which begins on one of them.
  const double ratio = devicePixelRatioF();
  const double thin = std::max(1.0, std::floor(ratio)) / ratio;
  const auto onPixel = [ratio, thin](double at) {
    return std::floor(at * ratio) / ratio + thin / 2;
  };
  QColor line = palette().color(QPalette::WindowText);
  QFont bold = font();
  bold.setBold(true);
  for (const Group& group : kGroups) {
    const QRectF title = Cell(group.row, group.column, group.columns);
    const double height = (group.rows + kTitle) * (keyHeight_ + kGap);
    line.setAlphaF(0.35F);
    painter.setPen(QPen(line, thin));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(
        QRectF(QPointF(onPixel(title.left() - kMargin), onPixel(title.top())),
               QPointF(onPixel(title.right() + kMargin - 1), onPixel(title.top() + height - 1))),
        kMargin, kMargin);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.setFont(bold);
    painter.drawText(QRectF(title.left(), title.top(), title.width(), kTitle * keyHeight_),
                     Qt::AlignCenter, group.title);
  }
  painter.setFont(font());
  for (const Heading& heading : kHeadings) {
    painter.drawText(Cell(heading.row, heading.column, heading.columns), Qt::AlignCenter,
                     heading.text);
  }
}

}  // namespace oriolemark
