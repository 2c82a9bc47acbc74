#pragma once

#include <QRect>
#include <QString>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/Button.h"
#include "platform/CheckBox.h"
#include "platform/ComboBox.h"
#include "platform/Control.h"
#include "platform/Form.h"
#include "platform/MenuEntry.h"
#include "platform/OptionGroup.h"
#include "platform/ProgressBar.h"
#include "platform/ScrollBar.h"
#include "platform/TextBox.h"

class QAbstractButton;
class QAction;
class QCheckBox;
class QComboBox;
class QKeyEvent;
class QLineEdit;
class QProgressBar;
class QRadioButton;
class QScrollBar;
class QWidget;

namespace oriolemark {

// A widget or layout that its parent owns, or will own once it is added to one.
template <typename Widget, typename... Arguments>
Widget& Make(Arguments&&... arguments) {
  return *std::make_unique<Widget>(std::forward<Arguments>(arguments)...).release();
}

// Text of the core is 8-bit: byte values are Latin-1, and what has no such byte becomes '?'.
QString FromWire(const std::string& text);
std::string ToWire(const QString& text);

QRect ToPixels(const UnitRect& place);
UnitRect ToUnits(const QRect& place);

// Each binding shows the model's state at once and from then on, and hands the user's gestures to
// the model. A widget may go before its model; a model must outlive the gestures of its widget.
void Bind(QWidget& widget, Control& model);
void Bind(QAbstractButton& widget, Button& model);
void Bind(QCheckBox& widget, CheckBox& model);
// One radio button an option, in the order of the options.
void Bind(const std::vector<QRadioButton*>& options, OptionGroup& model);
// A model with free text makes the widget editable, with no completion of its own. Its parts
// bear the accessible name that the widget has by now.
void Bind(QComboBox& widget, ComboBox& model);
// A typed character outside Latin-1 becomes '?' when the edit ends.
void Bind(QLineEdit& widget, TextBox& model);
// Also takes the place of the bar within its parent from the model.
void Bind(QScrollBar& widget, ScrollBar& model);
void Bind(QProgressBar& widget, ProgressBar& model);
void Bind(QAction& action, MenuEntry& model);

// A title as the form's caption has it, shortened.
void ShowTitle(QWidget& widget, const Form& form);

// What a window does for its form. An empty step does what most windows need: `show` sets title and
// visibility, `place` does nothing, `front` raises the window.
struct FormSteps {
  std::function<void()> show{};
  std::function<void()> place{};
  std::function<void()> front{};
};
// The window follows its form as long as it exists.
void Follow(QWidget& window, Form& form, FormSteps steps = {});

// A tool tip that shows the text as it is, shortened, in lines that fit a screen and end at blanks.
// Without this the toolkit takes a text that looks like marks for rich text, and loads what it
// names.
QString PlainToolTip(const QString& text);

// The keys that are held with this one, added up.
int HeldKeys(const QKeyEvent& event);

// Object name and accessible name: how screen readers and tests find a widget.
void Name(QWidget& widget, const QString& objectName, const QString& accessibleName);

}  // namespace oriolemark
