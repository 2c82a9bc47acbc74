#include "desktop/Bind.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QProgressBar>
#include <QRadioButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QSignalBlocker>
#include <algorithm>
#include <memory>

#include "desktop/ShownText.h"
#include "platform/Keys.h"
#include "platform/Rounding.h"

namespace oriolemark {
namespace {

// Steps of a scroll bar widget to one per cent of its model.
constexpr double kStepsPerCent = 100;

// Shows the state now, and after each change for as long as the widget exists.
template <typename Shown, typename Model, typename Show>
void Follow(Shown& shown, Model& model, Show show) {
  model.onChanged = [guard = QPointer<Shown>(&shown), show] {
    if (guard) show();
  };
  show();
}

// A control that is disabled while it has the focus passes the focus to another control, which may
// be disabled later too. When it is enabled again, it gets the focus back unless the user has moved
// the focus.
void ShowEnabled(QWidget& widget, bool enabled) {
  static constexpr char kOwner[] = "focusOwner";
  static constexpr char kStandIn[] = "focusStandIn";
  QWidget& window = *widget.window();
  const auto noted = [&window](const char* name) {
    return window.property(name).value<QPointer<QWidget>>();
  };
  const auto note = [&window](const char* name, QWidget* which) {
    window.setProperty(name, QVariant::fromValue(QPointer<QWidget>(which)));
  };
  const QWidget* before = window.focusWidget();
  widget.setEnabled(enabled);
  QWidget* after = window.focusWidget();
  if (before == &widget && after != before) {
    if (before != noted(kStandIn)) note(kOwner, &widget);
    note(kStandIn, after);
  } else if (enabled && noted(kOwner) == &widget) {
    if (after == noted(kStandIn)) widget.setFocus(Qt::OtherFocusReason);
    note(kOwner, nullptr);
    note(kStandIn, nullptr);
  }
}

void ShowCommon(QWidget& widget, const Control& model) {
  ShowEnabled(widget, model.Enabled());
  if (widget.isHidden() == model.Visible()) widget.setVisible(model.Visible());
}

QString Decoded(const std::string& text, TextCode code) {
  return code == TextCode::Utf8 ? QString::fromStdString(text) : FromWire(text);
}

std::string Encoded(const QString& text, TextCode code) {
  return code == TextCode::Utf8 ? text.toStdString() : ToWire(text);
}

QStringList Decoded(const std::vector<std::string>& texts, TextCode code) {
  QStringList list;
  for (const std::string& text : texts) list << Decoded(text, code);
  return list;
}

QStringList Items(const QComboBox& widget) {
  QStringList list;
  for (int i = 0; i < widget.count(); ++i) list << widget.itemText(i);
  return list;
}

void ShowCombo(QComboBox& widget, const ComboBox& model, TextCode code) {
  const QSignalBlocker blocker(widget), textBlocker(widget.lineEdit());
  const QStringList items = Decoded(model.Items(), code);
  if (Items(widget) != items) {
    widget.clear();
    widget.addItems(items);
  }
  widget.setCurrentIndex(model.ListIndex());
  const QString text = Decoded(model.Text(), code);
  if (widget.isEditable() && widget.currentText() != text) widget.setEditText(text);
  ShowCommon(widget, model);
}

void ShowOptions(const std::vector<QRadioButton*>& options, QButtonGroup& group,
                 const OptionGroup& model) {
  // An exclusive group does not allow all options to be off.
  group.setExclusive(false);
  for (std::size_t i = 0; i < options.size(); ++i) {
    const int index = static_cast<int>(i);
    const QSignalBlocker blocker(options[i]);
    options[i]->setChecked(model.IsSelected(index));
    ShowEnabled(*options[i], model.Enabled() && model.OptionEnabled(index));
  }
  group.setExclusive(true);
}

}  // namespace

QString FromWire(const std::string& text) {
  return QString::fromLatin1(text.data(), text.size());
}

std::string ToWire(const QString& text) {
  std::string bytes;
  for (const char32_t code : text.toStdU32String()) {
    bytes += code < 0x100 ? static_cast<char>(code) : '?';
  }
  return bytes;
}

QRect ToPixels(const UnitRect& place) {
  // A stored place may be any number. One beyond every screen is limited to this distance.
  static constexpr double kFar = 1e6;
  const auto pixels = [](double units) {
    return RoundToInt(std::clamp(UnitsToPixels(units), -kFar, kFar));
  };
  return {pixels(place.left), pixels(place.top), pixels(place.width), pixels(place.height)};
}

UnitRect ToUnits(const QRect& place) {
  return {.left = PixelsToUnits(place.x()),
          .top = PixelsToUnits(place.y()),
          .width = PixelsToUnits(place.width()),
          .height = PixelsToUnits(place.height())};
}

void Bind(QWidget& widget, Control& model) {
  Follow(widget, model, [&] { ShowCommon(widget, model); });
}

void Bind(QAbstractButton& widget, Button& model) {
  QObject::connect(&widget, &QAbstractButton::clicked, &widget, [&model] { model.Click(); });
  Follow(widget, model, [&] { ShowCommon(widget, model); });
}

void Bind(QCheckBox& widget, CheckBox& model) {
  QObject::connect(&widget, &QCheckBox::toggled, &widget,
                   [&model](bool value) { model.SetValue(value); });
  Follow(widget, model, [&] {
    const QSignalBlocker blocker(widget);
    widget.setChecked(model.Value());
    ShowCommon(widget, model);
  });
}

void Bind(const std::vector<QRadioButton*>& options, OptionGroup& model) {
  if (options.empty()) return;
  auto* group = std::make_unique<QButtonGroup>(options.front()).release();
  for (std::size_t i = 0; i < options.size(); ++i) {
    group->addButton(options[i], static_cast<int>(i));
  }
  QObject::connect(group, &QButtonGroup::idToggled, group, [&model](int index, bool on) {
    if (on) model.Select(index);
  });
  Follow(*group, model, [options, group, &model] { ShowOptions(options, *group, model); });
}

void Bind(QComboBox& widget, ComboBox& model, TextCode code) {
  QObject::connect(&widget, &QComboBox::activated, &widget,
                   [&model](int index) { model.SetListIndex(index); });
  if (model.Style() == ComboStyle::Free) {
    widget.setEditable(true);
    widget.setInsertPolicy(QComboBox::NoInsert);
    widget.setCompleter(nullptr);
    QObject::connect(widget.lineEdit(), &QLineEdit::editingFinished, &widget,
                     [&, code] { model.EndEdit(Encoded(widget.currentText(), code)); });
    // A text that is set as a whole, for instance by a screen reader, is a finished edit. The list
    // reports its own choices.
    QObject::connect(
        widget.lineEdit(), &QLineEdit::textChanged, &widget, [&, code](const QString& text) {
          if (!widget.lineEdit()->isModified() && text != widget.itemText(widget.currentIndex()))
            model.EndEdit(Encoded(text, code));
        });
    // The inner line has the focus, so a screen reader reads the name there.
    widget.lineEdit()->setAccessibleName(widget.accessibleName());
  }
  widget.view()->setAccessibleName(widget.accessibleName());
  Follow(widget, model, [&, code] { ShowCombo(widget, model, code); });
}

void Bind(QLineEdit& widget, TextBox& model, TextCode code) {
  QObject::connect(&widget, &QLineEdit::textChanged, &widget,
                   [&model, code](const QString& text) { model.SetText(Encoded(text, code)); });
  QObject::connect(&widget, &QLineEdit::editingFinished, &widget, [&, code] {
    const QSignalBlocker blocker(widget);
    widget.setText(Decoded(model.Text(), code));
  });
  Follow(widget, model, [&, code] {
    const QSignalBlocker blocker(widget);
    // The typed text stays as it is until the edit ends.
    if (Encoded(widget.text(), code) != model.Text()) widget.setText(Decoded(model.Text(), code));
    ShowCommon(widget, model);
  });
}

void Bind(QScrollBar& widget, ScrollBar& model) {
  widget.setRange(0, RoundToInt(100 * kStepsPerCent));
  widget.setSingleStep(RoundToInt(ScrollBar::kLineStep * kStepsPerCent));
  QObject::connect(&widget, &QScrollBar::valueChanged, &widget,
                   [&model](int steps) { model.SetValue(steps / kStepsPerCent); });
  Follow(widget, model, [&] {
    const QSignalBlocker blocker(widget);
    widget.setPageStep(std::max(1, RoundToInt(model.PageStep() * kStepsPerCent)));
    widget.setValue(RoundToInt(model.Value() * kStepsPerCent));
    widget.setGeometry(ToPixels(model.Place()));
    ShowCommon(widget, model);
  });
}

void Bind(QLabel& widget, Label& model) {
  widget.setTextFormat(Qt::PlainText);
  widget.setTextInteractionFlags(Qt::TextSelectableByMouse);
  widget.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  Follow(widget, model, [&] {
    const QString text = Shortened(FromWire(model.Text())).replace('\n', ' ').replace('\r', ' ');
    widget.setText(text);
    widget.setToolTip(PlainToolTip(text));
    ShowCommon(widget, model);
  });
}

void Bind(QProgressBar& widget, ProgressBar& model) {
  widget.setRange(0, RoundToInt(ProgressBar::kMaximum));
  // A widget that shows draws a new number by itself, before `setValue` returns. A second paint for
  // Refresh would cost as much as the rest of a read.
  Follow(widget, model, [&] {
    widget.setValue(RoundToInt(model.Value()));
    ShowCommon(widget, model);
  });
}

void Bind(QAction& action, MenuEntry& model) {
  QObject::connect(&action, &QAction::triggered, &action, [&model] {
    model.Click();
    // The widget has toggled its mark by itself. The model's mark counts.
    if (model.onChanged) model.onChanged();
  });
  Follow(action, model, [&] {
    const bool bar = model.Caption() == kBarCaption;
    action.setSeparator(bar);
    // The toolkit would show the text of a bar as a heading, and the text after a tab as a
    // shortcut.
    const QString caption = bar ? QString() : QString::fromStdString(model.Caption());
    action.setText(Shortened(caption, kShownInMenu).replace('\t', ' '));
    // An entry reserves space for a mark only once it has had one.
    if (model.Checked()) action.setCheckable(true);
    action.setChecked(model.Checked());
    action.setEnabled(model.Enabled());
    action.setVisible(model.Visible());
  });
}

void ShowTitle(QWidget& widget, const Form& form) {
  // "[*]" is the toolkit's mark of a changed document. It is shown as text when doubled.
  widget.setWindowTitle(Shortened(FromWire(form.Caption())).replace("[*]", "[*][*]"));
}

void Follow(QWidget& window, Form& form, FormSteps steps) {
  if (!steps.show) {
    steps.show = [&window, &form] {
      ShowTitle(window, form);
      if (window.isHidden() == form.Visible()) window.setVisible(form.Visible());
    };
  }
  if (!steps.front) steps.front = [&window] { window.raise(); };
  const auto guarded = [guard = QPointer(&window)](const std::function<void()>& step) {
    return [guard, step] {
      if (guard && step) step();
    };
  };
  form.onChanged = guarded(steps.show);
  form.onMoved = guarded(steps.place);
  form.onFront = guarded(steps.front);
  form.onRepaint = guarded([&window] { window.repaint(); });
}

int HeldKeys(const QKeyEvent& event) {
  const auto held = [&event](Qt::KeyboardModifier key, int code) {
    return event.modifiers().testFlag(key) ? code : 0;
  };
  return held(Qt::ShiftModifier, kShiftHeld) + held(Qt::ControlModifier, kCtrlHeld) +
         held(Qt::AltModifier, kAltHeld);
}

QString PlainToolTip(const QString& text) {
  if (text.isEmpty()) return {};
  constexpr qsizetype kLine = 70;
  static const QRegularExpression kBreak("[ \u200b]");
  QString lines;
  for (const QString& word : Breakable(Shortened(text)).split(kBreak)) {
    const qsizetype used = lines.size() - lines.lastIndexOf('\n') - 1;
    if (!lines.isEmpty()) lines += used + word.size() < kLine ? ' ' : '\n';
    lines += word;
  }
  return "<p style='white-space:pre'>" + lines.toHtmlEscaped() + "</p>";
}

void MuteSelection(QWidget& view) {
  const QColor mark = QApplication::palette(&view).color(QPalette::Active, QPalette::Highlight);
  const int grey = qGray(mark.rgb());
  QPalette muted;
  muted.setColor(QPalette::Inactive, QPalette::Highlight, QColor(grey, grey, grey));
  view.setPalette(muted);
}

void Name(QWidget& widget, const QString& objectName, const QString& accessibleName) {
  widget.setObjectName(objectName);
  widget.setAccessibleName(accessibleName);
}

}  // namespace oriolemark
