#include "desktop/Builders.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>

#include "desktop/Bind.h"
#include "desktop/Icons.h"

namespace oriolemark {
namespace {

// The text for a screen reader.
QString Spoken(QString text) {
  return text.replace("&&", "\n").remove('&').replace('\n', '&');
}

}  // namespace

QVBoxLayout& AddGroup(QBoxLayout& layout, const QString& title) {
  auto& group = Make<QGroupBox>(title);
  layout.addWidget(&group);
  return Make<QVBoxLayout>(&group);
}

void AddOptions(QBoxLayout& layout, const QString& name, OptionGroup& model,
                const std::vector<OptionText>& texts) {
  std::vector<QRadioButton*> options;
  for (const OptionText& entry : texts) {
    auto& option = Make<QRadioButton>(entry.text);
    Name(option, name + QString::number(options.size()), Spoken(entry.text));
    option.setToolTip(entry.toolTip);
    layout.addWidget(&option);
    options.push_back(&option);
  }
  Bind(options, model);
}

void AddCheck(QBoxLayout& layout, const QString& name, const QString& text, CheckBox& model,
              const QString& toolTip) {
  auto& check = Make<QCheckBox>(text);
  Name(check, name, Spoken(text));
  check.setToolTip(toolTip);
  layout.addWidget(&check);
  Bind(check, model);
}

QPushButton& AddButton(QBoxLayout& layout, const QString& name, const QString& text,
                       Button& model) {
  auto& button = Make<QPushButton>(text);
  Name(button, name, Spoken(text));
  layout.addWidget(&button);
  Bind(button, model);
  return button;
}

QToolButton& MakeToolButton(QWidget& parent, const QString& name, const QString& text,
                            const QString& toolTip, const QString& picture, Button& model) {
  auto& button = Make<QToolButton>(&parent);
  Name(button, name, text);
  button.setText(text);
  button.setToolTip(toolTip);
  button.setIcon(PictureNamed(picture));
  button.setIconSize({24, 24});
  button.setAutoRaise(true);
  Bind(button, model);
  return button;
}

}  // namespace oriolemark
