#pragma once

#include <QString>
#include <vector>

#include "platform/Button.h"
#include "platform/CheckBox.h"
#include "platform/OptionGroup.h"

class QBoxLayout;
class QPushButton;
class QToolButton;
class QVBoxLayout;
class QWidget;

namespace oriolemark {

// Each function makes a widget, names it, and binds it to its model. One with a layout parameter
// adds the widget at the end of the layout. "&" in a text marks its access key, "&&" is an
// ampersand.

// The inside of a framed group.
QVBoxLayout& AddGroup(QBoxLayout& layout, const QString& title);

struct OptionText {
  QString text;
  QString toolTip{};
};
// The name of a button is the group's name and the button's number.
void AddOptions(QBoxLayout& layout, const QString& name, OptionGroup& model,
                const std::vector<OptionText>& texts);

void AddCheck(QBoxLayout& layout, const QString& name, const QString& text, CheckBox& model,
              const QString& toolTip = {});

QPushButton& AddButton(QBoxLayout& layout, const QString& name, const QString& text, Button& model);

// A flat button with a picture. It is not added to a layout.
QToolButton& MakeToolButton(QWidget& parent, const QString& name, const QString& text,
                            const QString& toolTip, const QString& picture, Button& model);

}  // namespace oriolemark
