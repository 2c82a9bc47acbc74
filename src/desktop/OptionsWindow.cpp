#include "desktop/OptionsWindow.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "desktop/Bind.h"
#include "desktop/Builders.h"
#include "desktop/ShownText.h"

namespace oriolemark {
namespace {

// A labelled combo box, followed by its unit if there is one.
QComboBox& AddCombo(QFormLayout& layout, const char* name, const QString& label,
                    const QString& toolTip, ComboBox& model, const QString& unit = {}) {
  auto& combo = Make<QComboBox>();
  Name(combo, name, QString(label).remove('&'));
  combo.setMinimumContentsLength(10);
  combo.setToolTip(toolTip);
  auto& row = Make<QHBoxLayout>();
  row.addWidget(&combo, 1);
  if (!unit.isEmpty()) row.addWidget(&Make<QLabel>(unit));
  auto& caption = Make<QLabel>(label);
  caption.setBuddy(&combo);
  layout.addRow(&caption, &row);
  Bind(combo, model);
  return combo;
}

QFormLayout& AddFormGroup(QBoxLayout& page, const QString& title) {
  auto& form = Make<QFormLayout>();
  AddGroup(page, title).addLayout(&form);
  return form;
}

QVBoxLayout& AddPage(QTabWidget& tabs, const QString& title, Control& model) {
  auto& page = Make<QWidget>();
  tabs.addTab(&page, title);
  model.onChanged = [&page, &model] { page.setEnabled(model.Enabled()); };
  return Make<QVBoxLayout>(&page);
}

void FillGeneral(QVBoxLayout& page, frmOptions& form) {
  AddOptions(AddGroup(page, "IO Selection"), "PortSelectOption", form.PortSelectOption,
             {{"&USB", "Connects by USB to the device chosen under Communication Setting"},
              {"&GPIB", "Connects by GPIB to the address chosen under Communication Setting"},
              {"&RS232", "Connects by the serial port chosen under Communication Setting"}});
  QVBoxLayout& startup = AddGroup(page, "Startup option");
  AddCheck(startup, "HardwareCheck", "Startup &Hardware Check", form.HardwareCheck,
           "Connects to the oscilloscope when the program starts");
  AddCheck(startup, "SheetStartLoadChk", "Recent &Data Sheet File Load", form.SheetStartLoadChk,
           "Opens the data sheet used last when the program starts");
  AddCheck(startup, "CtrlStartLoadChk", "Recent &Control File Load", form.CtrlStartLoadChk,
           "Opens the control file used last when the program starts");
  page.addStretch(1);
}

void FillRefresh(QVBoxLayout& page, frmOptions& form) {
  AddOptions(AddGroup(page, "Refresh"), "OptRefreshType", form.OptRefreshType,
             {{"&Single", "Refresh reads once"},
              {"&Auto", "Refresh reads repeatedly until it is pressed again"}});
  AddCombo(AddFormGroup(page, "Time Setting"), "IntervalCombo", "&Interval",
           "The pause from the end of one reading to the start of the next; 0 reads without a "
           "pause",
           form.IntervalCombo, "ms");
  page.addStretch(1);
}

// A label below a box that shows which device or library its choice means.
QLabel& AddMeaning(QFormLayout& layout, const QComboBox& combo) {
  constexpr int kCharacters = 60;
  auto& label = Make<QLabel>();
  label.setObjectName(combo.objectName() + "Meaning");
  label.setTextFormat(Qt::PlainText);
  label.setWordWrap(true);
  label.setFixedWidth(kCharacters * label.fontMetrics().averageCharWidth());
  layout.addRow(&label);
  return label;
}

// The meaning is shown in the label, where it can be selected and copied. It is also the box's
// accessible description, and follows the purpose of the box in the tool tip.
void ShowMeaning(QComboBox& combo, QLabel& label, const QString& purpose,
                 const std::string& meaning) {
  const QString text = Breakable(Shortened(QString::fromStdString(meaning)));
  label.setText(text);
  label.setTextInteractionFlags(text.isEmpty()
                                    ? Qt::NoTextInteraction
                                    : Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  combo.setAccessibleDescription(text);
  combo.setToolTip(PlainToolTip(purpose + text));
}

// Shows the meaning again whenever the choices change, and at each opening.
void AtEachChange(Control& model, const std::function<void()>& tell) {
  model.onChanged = [follow = model.onChanged, tell] {
    follow();
    tell();
  };
}

// The tool tip of each entry shows which device it means.
void ShowPortMeanings(QComboBox& combo, QLabel& label, const frmOptions& form) {
  for (int i = 0; i < combo.count(); ++i) {
    combo.setItemData(i, PlainToolTip(QString::fromStdString(form.PortMeaning(i))),
                      Qt::ToolTipRole);
  }
  const int chosen = combo.currentIndex();
  ShowMeaning(combo, label, {}, chosen < 0 ? std::string() : form.PortMeaning(chosen));
}

// The entries of a list with their descriptions. The box itself shows and takes the plain entry.
class DescribedEntries : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    option->text = index.data(Qt::AccessibleTextRole).toString();
  }
};

// The list is as wide as its longest entry, as far as the screen allows.
void ShowDescriptions(QComboBox& combo, const frmOptions& form) {
  for (int i = 0; i < combo.count(); ++i) {
    const QString text = QString::fromStdString(form.ListedMeaning(i));
    combo.setItemData(i, Shortened(text, kShownInMenu), Qt::AccessibleTextRole);
  }
  constexpr int kEdges = 8;  // pixels beside an entry
  const int screen = combo.screen()->availableSize().width();
  const int width = std::min(combo.view()->sizeHintForColumn(0), screen - 2 * kEdges);
  combo.view()->setMinimumWidth(width + kEdges);
}

// The texts of a box for the name of a device or library. The placeholder says what is used
// without a name.
struct NameTexts {
  const char* name;
  QString caption;
  QString toolTip;
  QString builtIn;
};

constexpr int kNameCharacters = 22;

// A caption with its box below. Returns the row of the box.
QHBoxLayout& AddNameBox(QVBoxLayout& group, QWidget& box, const NameTexts& texts) {
  Name(box, texts.name, QString(texts.caption).remove('&'));
  box.setToolTip(texts.toolTip);
  box.setMinimumWidth(kNameCharacters * box.fontMetrics().averageCharWidth());
  auto& caption = Make<QLabel>(texts.caption);
  caption.setBuddy(&box);
  group.addWidget(&caption);
  auto& row = Make<QHBoxLayout>();
  row.addWidget(&box, 1);
  group.addLayout(&row);
  return row;
}

void AddDevice(QVBoxLayout& group, const NameTexts& texts, int port, frmOptions& form) {
  ComboBox& model = form.DeviceOfPortCombo[static_cast<std::size_t>(port)];
  auto& combo = Make<QComboBox>();
  AddNameBox(group, combo, texts);
  combo.setItemDelegate(&Make<DescribedEntries>(&combo));
  combo.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  Bind(combo, model, TextCode::Utf8);
  AtEachChange(model, [&combo, &form, port, purpose = texts.toolTip] {
    ShowDescriptions(combo, form);
    const QString meaning = QString::fromStdString(form.PortMeaning(port));
    combo.lineEdit()->setPlaceholderText(meaning);
    combo.setToolTip(PlainToolTip(purpose + ".\n" + meaning));
  });
}

void AddLibrary(QVBoxLayout& group, const NameTexts& texts, TextBox& model, Button& button) {
  auto& line = Make<QLineEdit>();
  QHBoxLayout& row = AddNameBox(group, line, texts);
  Bind(line, model, TextCode::Utf8);
  line.setPlaceholderText(texts.builtIn);
  QPushButton& choose = AddButton(row, QString("cmd") + texts.name, "...", button);
  choose.setAccessibleName("Choose the " + line.accessibleName());
  choose.setToolTip("Chooses the library's file");
  choose.setAutoDefault(false);
  choose.setFixedWidth(2 * choose.sizeHint().height());
}

void FillDrivers(QVBoxLayout& group, frmOptions& form) {
  AddDevice(group,
            {"COM1Device",
             "COM&1 device",
             "The serial device that COM1 means: one that the system lists, or any other path",
             {}},
            0, form);
  AddDevice(group,
            {"COM2Device",
             "COM&2 device",
             "The serial device that COM2 means: one that the system lists, or any other path",
             {}},
            1, form);
  AddLibrary(group,
             {"GpibLibrary", "GPIB &library",
              "The library of the GPIB board: its path, or its name in the system's folders",
              "First usual one found"},
             form.GpibLibraryText, form.cmdGpibLibrary);
  AddLibrary(group,
             {"UsbLibrary", "USB l&ibrary",
              "A library that replaces the built-in USB driver: its path, or its name in the "
              "system's folders",
              "Built-in driver"},
             form.UsbLibraryText, form.cmdUsbLibrary);
  group.addStretch(1);
  // The labels below the links' own boxes show what the names mean.
  for (ComboBox& device : form.DeviceOfPortCombo) {
    AtEachChange(device, [&form] { form.PortCombo.onChanged(); });
  }
  AtEachChange(form.GpibLibraryText, [&form] { form.GPIB_AddrCombo.onChanged(); });
  AtEachChange(form.UsbLibraryText, [&form] { form.DeviceCombo.onChanged(); });
}

void FillLinks(QVBoxLayout& page, frmOptions& form) {
  QFormLayout& usb = AddFormGroup(page, "USB");
  QComboBox& device = AddCombo(usb, "DeviceCombo", "&Device", {}, form.DeviceCombo);
  QLabel& driver = AddMeaning(usb, device);
  AtEachChange(form.DeviceCombo, [&] {
    ShowMeaning(device, driver, "The instruments found on USB, numbered from 0.\n",
                form.DeviceMeaning());
  });
  QFormLayout& gpib = AddFormGroup(page, "GPIB Setting");
  QComboBox& address = AddCombo(gpib, "GPIB_AddrCombo", "&Address", {}, form.GPIB_AddrCombo);
  QLabel& library = AddMeaning(gpib, address);
  AtEachChange(form.GPIB_AddrCombo, [&] {
    ShowMeaning(address, library, "The GPIB address set on the instrument.\n",
                form.AddressMeaning());
  });
  QFormLayout& serial = AddFormGroup(page, "RS232 Setting");
  QComboBox& port = AddCombo(serial, "PortCombo", "RS232 &Port", {}, form.PortCombo);
  QLabel& path = AddMeaning(serial, port);
  AtEachChange(form.PortCombo, [&] { ShowPortMeanings(port, path, form); });
  AddCombo(serial, "BaudCombo", "&Baud Rate", "The baud rate set on the instrument",
           form.BaudCombo);
  page.addStretch(1);
}

// The names of devices and libraries are beside the links, because a low screen has no room below.
void FillCommunication(QVBoxLayout& page, frmOptions& form) {
  auto& columns = Make<QHBoxLayout>();
  page.addLayout(&columns);
  auto& links = Make<QVBoxLayout>();
  columns.addLayout(&links);
  FillLinks(links, form);
  auto& drivers = Make<QVBoxLayout>();
  columns.addLayout(&drivers, 1);
  FillDrivers(AddGroup(drivers, "Devices and Libraries"), form);
}

void BindTabs(QTabWidget& tabs, TabStrip& model) {
  QObject::connect(&tabs, &QTabWidget::currentChanged, &tabs,
                   [&model](int page) { model.Select(page); });
  model.onChanged = [&tabs, &model] { tabs.setCurrentIndex(model.Selected()); };
  const auto step = [&](const char* keys, int steps) {
    auto& shortcut = Make<QShortcut>(QKeySequence(keys), &tabs);
    shortcut.setContext(Qt::WindowShortcut);
    QObject::connect(&shortcut, &QShortcut::activated, &tabs,
                     [&model, steps] { model.Step(steps); });
  };
  step("Ctrl+Tab", 1);
  step("Ctrl+Shift+Tab", -1);
}

}  // namespace

OptionsWindow::OptionsWindow(frmOptions& form, QWidget* parent)
    : FormDialog(form, "frmOptions", parent) {
  auto& layout = Make<QVBoxLayout>(this);
  layout.setSizeConstraint(QLayout::SetFixedSize);
  auto& tabs = Make<QTabWidget>();
  Name(tabs, "tbsOptions", "Options");
  // All three tabs are visible at once.
  tabs.setUsesScrollButtons(false);
  layout.addWidget(&tabs);
  FillGeneral(AddPage(tabs, "General", form.picOptions[0]), form);
  FillRefresh(AddPage(tabs, "Refresh", form.picOptions[1]), form);
  FillCommunication(AddPage(tabs, "Communication Setting", form.picOptions[2]), form);
  BindTabs(tabs, form.tbsOptions);
  auto& buttons = Make<QHBoxLayout>();
  layout.addLayout(&buttons);
  buttons.addStretch(1);
  AddButton(buttons, "cmdOK", "OK", form.cmdOK).setDefault(true);
  AddButton(buttons, "cmdCancel", "Cancel", form.cmdCancel);
}

}  // namespace oriolemark
