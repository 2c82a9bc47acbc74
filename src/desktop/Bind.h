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
#include "platform/Label.h"
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
class QLabel;
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

// The core's texts are Latin-1 bytes. A character outside Latin-1 becomes '?'.
QString FromWire(const std::string& text);
std::string ToWire(const QString& text);

QRect ToPixels(const UnitRect& place);
UnitRect ToUnits(const QRect& place);

// The code of a control's texts. Paths are UTF-8.
enum class TextCode { Latin1, Utf8 };

// Each binding shows the model's state now and after each change, and reports the user's input to
// the model. A widget may be destroyed before its model. A model must exist as long as its widget
// gets input.
void Bind(QWidget& widget, Control& model);
void Bind(QAbstractButton& widget, Button& model);
void Bind(QCheckBox& widget, CheckBox& model);
// One radio button for each option, in the order of the options.
void Bind(const std::vector<QRadioButton*>& options, OptionGroup& model);
// A model with free text makes the widget editable, without completion. The parts of the widget
// take over its present accessible name.
void Bind(QComboBox& widget, ComboBox& model, TextCode code = TextCode::Latin1);
// A typed character outside the code becomes '?' when the edit ends.
void Bind(QLineEdit& widget, TextBox& model, TextCode code = TextCode::Latin1);
// Shows the text shortened, on one line, and whole in the tool tip. Its length does not widen the
// window.
void Bind(QLabel& widget, Label& model);
// Also moves the bar to the model's place within the parent.
void Bind(QScrollBar& widget, ScrollBar& model);
void Bind(QProgressBar& widget, ProgressBar& model);
void Bind(QAction& action, MenuEntry& model);

// Shows the form's caption, shortened, as the title.
void ShowTitle(QWidget& widget, const Form& form);

// What a window does for its form. An empty step does what most windows need: `show` sets title and
// visibility, `place` does nothing, `front` raises the window.
struct FormSteps {
  std::function<void()> show{};
  std::function<void()> place{};
  std::function<void()> front{};
};
// The window follows its form until the window is destroyed.
void Follow(QWidget& window, Form& form, FormSteps steps = {});

// A plain-text tool tip, shortened, with lines that fit a screen and end at blanks. Otherwise the
// toolkit treats a text with tags as rich text, and loads the files that it names.
QString PlainToolTip(const QString& text);

// The sum of the modifier keys that are held.
int HeldKeys(const QKeyEvent& event);

// A view without the focus shows its selected rows in grey. The text stays as easy to read. To be
// called again when the application's palette has changed.
void MuteSelection(QWidget& view);

// Object name and accessible name: how screen readers and tests find a widget.
void Name(QWidget& widget, const QString& objectName, const QString& accessibleName);

}  // namespace oriolemark
