// The simulated instrument has names that the toolkit would take for its keywords.
#define QT_NO_KEYWORDS

#include <QAccessible>
#include <QComboBox>
#include <QDir>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMimeData>
#include <QScrollArea>
#include <QScrollBar>
#include <QTreeWidget>
#include <QUrl>
#include <set>

#include "desktop/Bind.h"
#include "desktop/Menus.h"
#include "desktop/OptionsWindow.h"
#include "desktop/RunWindows.h"
#include "platform/RasterCanvas.h"
#include "support/ProgramBench.h"

namespace oriolemark {
namespace {

TEST_F(Windows, TheLinkPageShowsWhatStandsBehindEachLinkToBeReadAndCopied) {
  Run({Later([](MainModule& module) { module.main.mnuToolsOptions.Click(); }),
       [](MainModule& module) { module.options.tbsOptions.Select(2); },
       [](MainModule& module) {
         const std::pair<const char*, std::string> rows[] = {
             {"DeviceCombo", module.options.DeviceMeaning()},
             {"GPIB_AddrCombo", module.options.AddressMeaning()},
             {"PortCombo", module.options.PortMeaning(0)}};
         for (const auto& [name, meaning] : rows) {
           const auto& label = The<QLabel>(QString(name) + "Meaning");
           EXPECT_EQ(label.text().toStdString(), meaning);
           EXPECT_TRUE(label.textInteractionFlags() & Qt::TextSelectableByMouse);
           EXPECT_GE(label.height(), label.heightForWidth(label.width())) << "whole";
           EXPECT_EQ(Shown(name)->accessibleDescription().toStdString(), meaning);
         }
         const QSize size = Shown("frmOptions")->size();
         // 1024x768 with letters half as large again.
         EXPECT_TRUE(size.width() <= 680 && size.height() <= 500);
       }});
}

TEST(LinkPage, APortIsChosenByItsDescriptionAndANameOfAnyLettersIsTyped) {
  Application own;
  ProgramBench bench;
  frmOptions& form = bench.module.options;
  OptionsWindow window(form, nullptr);
  bench.port.ports = {{"/dev/ttyS0", std::string(100'000, 'w')}, {"/dev/ttyUSB0", "<b>&\xC3\xA9"}};
  form.Load();
  form.tbsOptions.Select(2);
  form.Show();
  auto& device = The<QComboBox>("COM1Device");
  device.showPopup();
  EXPECT_LE(device.view()->window()->width(), device.screen()->size().width());
  EXPECT_EQ(device.itemData(1, Qt::AccessibleTextRole), u"/dev/ttyUSB0  <b>&\u00E9"_qs);
  EXPECT_GT(device.view()->sizeHintForColumn(0), device.width()) << "drawn with its description";
  for (const auto key : {Qt::Key_End, Qt::Key_Return}) QTest::keyClick(device.view(), key);
  EXPECT_EQ(device.currentText(), "/dev/ttyUSB0");
  EXPECT_EQ(The<QLabel>("PortComboMeaning").text(), u"COM1 is /dev/ttyUSB0 (<b>&\u00E9)");
  form.DeviceOfPortCombo[0].SetListIndex(0);
  EXPECT_LT(window.sizeHint().height(), 600);
  for (QLineEdit* line : {&The<QLineEdit>("UsbLibrary"), device.lineEdit()}) {
    line->selectAll();
    line->insert(u"/\u0431/\u00E9"_qs);
  }
  QTest::keyClick(device.lineEdit(), Qt::Key_Return);
  for (const char* key : {"COM1", "UsbLibrary"}) {
    EXPECT_EQ(bench.store.values[std::pair("Drivers", key)], "/\xD0\xB1/\xC3\xA9") << key;
  }
}

TEST_F(Windows, FirstStepsLieInTheMiddleAndNeitherTakeTheMouseNorOutliveTheFirstView) {
  Run({[](MainModule&) {
         const auto& steps = The<QLabel>("FirstSteps");
         const QPoint middle = steps.mapToGlobal(steps.rect().center());
         QWidget* area = Shown("MdiArea");
         EXPECT_LE((area->mapToGlobal(area->rect().center()) - middle).manhattanLength(), 2);
         EXPECT_GE(steps.height(), steps.heightForWidth(steps.width())) << "whole";
         EXPECT_NE(QApplication::widgetAt(middle), &steps);
       },
       AddView, [](MainModule&) { EXPECT_EQ(Shown("FirstSteps"), nullptr); }});
}

TEST_F(Windows, DialogsBeginAtTheirFirstControlAndAreWorkedByKeysAlone) {
  Run({Later(Keys({Qt::CTRL | Qt::Key_N})),
       [](MainModule&) {
         EXPECT_EQ(Focus(), Shown("NewOption0"));
         Press({Qt::Key_Escape});
       },
       AddView, Later([](MainModule& module) {
         module.sheet.Waves[0].HasData = true;
         module.sheet.Waves[0].Channels = 2;
         module.main.tbToolBar_ButtonClick("FFT");
       }),
       [](MainModule& module) {
         EXPECT_EQ(The<QComboBox>("SourceCombo").currentText(), "CH2");
         EXPECT_EQ(Focus(), Shown("TargetCombo"));
         Press({Qt::ALT | Qt::Key_W, Qt::Key_Down, Qt::Key_Tab, Qt::Key_Right, Qt::Key_Return});
         const WaveRecord& made = module.sheet.Waves[0];
         EXPECT_TRUE(made.FFTOn && !made.FFTFull && made.FFTWindow == "Hanning");
       }});
}

TEST_F(Windows, AWaveViewIsWorkedByKeysAlone) {
  Run({[](MainModule&) {
         Shown("tool_AddNewWaveform")->setFocus(Qt::TabFocusReason);
         Press({Qt::Key_Space});
       },
       [](MainModule& module) {
         frmWave& view = View(module);
         EXPECT_GE(Shown("frmWave")->x(), 0) << "wider than the area, and its title in reach";
         view.ChkCursorX.SetValue(true);
         QWidget* picture = Shown("WavePic");
         for (int tabs = 0; tabs < 30 && !picture->hasFocus(); ++tabs) Press({Qt::Key_Tab});
         ASSERT_TRUE(picture->hasFocus());
         Press({Qt::Key_Right, Qt::SHIFT | Qt::CTRL | Qt::Key_Left, Qt::Key_Down});
         EXPECT_EQ(picture->accessibleDescription(), "No waveform.");
         EXPECT_EQ(std::pair(view.Cursors.X1Base, view.Cursors.X2Base), std::pair(51.0, 240.0));
         EXPECT_EQ(view.Cursors.Y1Base, 50) << "a pair that is not shown";
         view.ChkCursorY.SetValue(true);
         Press({Qt::Key_Up});
         EXPECT_EQ(view.Cursors.Y1Base, 49);
         Press({Qt::Key_F6});
         EXPECT_TRUE(Shown("tool_New")->hasFocus());
         Press({Qt::SHIFT | Qt::Key_F6});
         EXPECT_TRUE(Shown("frmWave")->isAncestorOf(Focus()));
         Press({Qt::CTRL | Qt::Key_W});
         EXPECT_FALSE(view.Loaded());
         EXPECT_EQ(dynamic_cast<RasterCanvas&>(view.WavePic.Surface()).Capacity(), 0);
         Shown("DataSheetTree")->setFocus();
         Press({Qt::Key_End, Qt::Key_Return});
       },
       Later(Keys({Qt::Key_F5})),
       [](MainModule& module) {
         EXPECT_TRUE(View(module).Visible()) << "Enter opens what a double click opens";
         EXPECT_NE(QApplication::activeModalWidget(), nullptr) << "no refresh without a link";
       }});
}

TEST_F(Windows, AWindowWithAFrameStaysWhereItWasPut) {
  const auto show = [](MainModule& module) {
    module.progress.Load();
    module.progress.Timer1.SetEnabled(false);
    module.progress.Move({.left = 1500, .top = 1500});
    for (const QWidget* window : QApplication::topLevelWidgets()) {
      if (window->objectName() != "frmPrgress") continue;
      EXPECT_EQ(window->size(), window->sizeHint()) << "sized before it is put anywhere";
    }
    module.progress.Show();
  };
  const auto look = [](MainModule& module) {
    const QWidget& window = *Shown("frmPrgress");
    EXPECT_EQ(window.pos(), QPoint(100, 100));
    EXPECT_NE(window.geometry().topLeft(), window.pos()) << "inside a frame";
    EXPECT_EQ(module.progress.Place().left, 1500);
    EXPECT_EQ(module.progress.Place().top, 1500);
    module.progress.Unload();
  };
  Run({show, look, show, look});
}

TEST_F(Windows, WaveViewsAreArrangedInPixelsAndTheControlsOfALowOneScroll) {
  // The wave views that are open, the first one at the back.
  const auto views = [] { return The<QMdiArea>("MdiArea").subWindowList(QMdiArea::StackingOrder); };
  Run({AddView, AddView, AddView, [](MainModule&) { Shown("frmMain")->resize(1200, 900); },
       [](MainModule& module) { module.main.mnuWindowTileHorizontal.Click(); },
       [&](MainModule&) {
         // The first control is there and the last one can be reached, and neither is squeezed.
         for (const char* name : {"cmdRefresh", "ChkCursorY"}) {
           auto* control = views()[2]->findChild<QWidget*>(name);
           views()[2]->findChild<QScrollArea*>()->ensureWidgetVisible(control);
           EXPECT_GE(control->height(), control->sizeHint().height()) << name;
           EXPECT_EQ(control->visibleRegion().boundingRect(), control->rect()) << name;
         }
       },
       [&](MainModule& module) {
         const QSizeF room = The<QMdiArea>("MdiArea").maximumViewportSize();
         const double width = room.width(), height = room.height();
         // The place of the window at the back, and how far each stands from the one before.
         const std::tuple<MenuEntry frmMain::*, QRectF, QPointF> rows[] = {
             {&frmMain::mnuWindowCascade, {0, 0, width * 0.75, height * 0.75}, {26, 26}},
             {&frmMain::mnuWindowTileHorizontal, {0, 0, width, height / 3}, {0, height / 3}},
             {&frmMain::mnuWindowTileVertical, {0, 0, width / 3, height}, {width / 3, 0}},
             {&frmMain::mnuWindowArrangeIcons, {0, height - 32, 160, 32}, {160, 0}}};
         for (const auto& [entry, first, step] : rows) {
           if (entry == &frmMain::mnuWindowArrangeIcons) {
             for (QMdiSubWindow* view : views()) view->showMinimized();
           }
           (module.main.*entry).Click();
           for (int i = 0; i < 3; ++i) {
             const QRect is = views()[i]->geometry();
             const QRectF place = first.translated(step * i);
             EXPECT_LE((place.topLeft() - is.topLeft()).manhattanLength(), 2) << i;
             EXPECT_LE((place.bottomRight() - is.bottomRight()).manhattanLength(), 3) << i;
           }
         }
         View(module).BringToFront();
         EXPECT_FALSE(views()[2]->isMinimized());
       }});
}

TEST_F(Windows, APicturesPixelsAreWholeOnTheScreenAndLieUnderTheMouse) {
  Run({AddView, [](MainModule& module) {
         frmWave& view = View(module);
         view.OptionColor.Select(0);
         view.ChkCursorX.SetValue(true);
         QWidget& picture = *Shown("WavePic");
         const double ratio = picture.devicePixelRatioF();
         const int whole = static_cast<int>(ratio + 0.5);  // pixels of the screen for each
         const QPoint from(static_cast<int>(view.Cursors.X1Pos * whole / ratio), 60);
         const QPoint to = from + QPoint(40, 0);
         QTest::mousePress(&picture, Qt::LeftButton, {}, from);
         QTest::mouseMove(&picture, to);
         QTest::mouseRelease(&picture, Qt::LeftButton, {}, to);
         const auto& canvas = dynamic_cast<RasterCanvas&>(view.WavePic.Surface());
         const QImage screen = picture.grab().toImage();
         const int width = std::min(canvas.Width() * whole, screen.width());
         int wrong = 0, cursor = 0;
         for (int y = 0; y < std::min(canvas.Height() * whole, screen.height()); ++y) {
           for (int x = 0; x < width; ++x) {
             const QRgb pixel = screen.pixel(x, y);
             wrong += pixel != canvas.Pixels()[y / whole * canvas.Width() + x / whole];
             cursor += pixel == qRgb(0, 128, 200) && std::abs(x - to.x() * ratio) <= whole;
           }
         }
         EXPECT_EQ(wrong, 0);
         EXPECT_GT(cursor, 20) << "where the mouse has let it go";
       }});
}

TEST_F(Windows, TabVisitsTheControllersButtonsAndARefusedRenameGivesTheRootItsNameBack) {
  Run({[](MainModule& module) {
         Shown("CtrlTreeView")->setFocus();
         for (const char* next : {"cmdDownload", "cmdUpload"}) {
           Press({Qt::SHIFT | Qt::Key_Tab});
           EXPECT_EQ(Focus(), Shown(next));
         }
         Shown("dock_Controller")->close();
         EXPECT_FALSE(module.controller.Visible());
         Shown("DataSheetTree")->setFocus();
         Press({Qt::Key_Home, Qt::Key_F2});
       },
       Keys({Qt::Key_X, Qt::Key_X, Qt::Key_Return}),
       [](MainModule&) {
         const auto& root = *The<QTreeWidget>("DataSheetTree").topLevelItem(0);
         EXPECT_EQ(root.text(0), "Data Sheet") << "behind the message already";
       }});
}

TEST_F(Windows, TheMainWindowFitsASmallScreenWithItsLamp) {
  Run({[](MainModule&) { Shown("frmMain")->resize(1000, 500); },
       [](MainModule&) {
         EXPECT_NE(Shown("picLED_OFF"), nullptr);
         EXPECT_LT(Shown("frmMain")->minimumSizeHint().height(), 600);
         Shown("frmMain")->resize(300, 500);
       },
       [](MainModule& module) {
         module.panel.Show();
         const QSize panel = Shown("frmV_Panel")->minimumSizeHint();
         EXPECT_TRUE(panel.width() <= 1000 && panel.height() <= 700);
         EXPECT_FALSE(Shown("frmV_Panel")->isModal());
         module.panel.Unload();
         EXPECT_LT(Shown("frmMain")->width(), 430);
         for (const char* name : {"picLED_OFF", "picLED_ON"}) {
           const QWidget* lamp = Shown(name);
           EXPECT_EQ(lamp->visibleRegion().boundingRect(), lamp->rect());
           EXPECT_FALSE(Shown("qt_toolbar_ext_button")->geometry().intersects(lamp->geometry()));
           module.main.picLED_ON.SetVisible(true);
           module.main.picLED_OFF.SetVisible(false);
         }
         EXPECT_EQ(Shown("picLED_OFF"), nullptr);
       }});
}

TEST_F(Windows, ANameOfAMegabyteMakesNoTitleAndNoEntryLong) {
  const std::string name = "[*]&" + std::string(1'000'000, 'w') + ".ctl";
  Run({AddView, [&](MainModule& module) {
         module.sheet.WaveViews[0]->SetCaption(name);
         module.main.mnuFileNew.SetCaption(name);
         module.main.StatusPanel.SetText(name);
         module.controller.dialog.Frame.SetText(name);
         LoadDialogs(module);
         EXPECT_LT(Shown("frmMain")->minimumSizeHint().width(), 800);
         EXPECT_TRUE(Shown("frmWave")->windowTitle().endsWith("www.ctl"));
         for (const QWidget* widget : QApplication::allWidgets()) {
           EXPECT_LT(widget->windowTitle().size() + widget->minimumSizeHint().width(), 5000)
               << widget->metaObject()->className() << widget->objectName().toStdString();
           if (widget->objectName() != "Frame") continue;
           EXPECT_FALSE(widget->property("title").toString().isEmpty()) << "set before the load";
         }
       }});
}

TEST_F(Windows, AFileIsDroppedAnywhereOnTheMainWindowButNotBehindADialog) {
  const auto drop = [](const QString& on, const QByteArray& url) {
    QMimeData data;
    data.setUrls({QUrl::fromEncoded(url)});
    data.setText(url);
    QWidget* target = Shown(on);
    if (auto* list = qobject_cast<QComboBox*>(target)) target = list->lineEdit();
    QDragEnterEvent enter({5, 5}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    enter.ignore();
    QApplication::sendEvent(target, &enter);
    QDropEvent done({5, 5}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                    Qt::ShiftModifier);
    done.setAccepted(false);
    if (enter.isAccepted()) QApplication::sendEvent(target, &done);
    EXPECT_EQ(enter.isAccepted(), done.isAccepted());
    EXPECT_TRUE(!done.isAccepted() || done.dropAction() == Qt::CopyAction);
    return done.isAccepted();
  };
  // A folder, so that only its whole name leads to this message.
  const QString name = home_.filePath(QString::fromUtf8("a \u00e4.cfx"));
  ASSERT_TRUE(QDir().mkdir(name));
  const QByteArray gone = QUrl::fromLocalFile(name).toEncoded();
  const auto told = [&](MainModule&) {
    ASSERT_NE(QApplication::activeModalWidget(), nullptr);
    const QString text = QApplication::activeModalWidget()->property("text").toString();
    EXPECT_TRUE(text.contains("Is a directory")) << text.toStdString();
    EXPECT_FALSE(drop("frmMain", gone));
    Press({Qt::Key_Escape});
  };
  std::vector<Step> steps{AddView, [&](MainModule& module) {
                            View(module).BestFitChk.SetValue(false);
                            EXPECT_FALSE(drop("ZoomCombo", "file:///gone/a.txt"));
                            EXPECT_FALSE(drop("MdiArea", "http://gone/a.cfx"));
                          }};
  for (const char* on : {"frmMain", "DataSheetTree", "frmWave", "ZoomCombo", "MdiArea"}) {
    steps.push_back([=](MainModule&) {
      EXPECT_TRUE(drop(on, gone)) << on;
      EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "opened inside the drop";
    });
    steps.push_back(told);
  }
  Run(steps);
}

TEST(Menus, APopupOpensAtItsPlaceWithBarsThatCanBeHiddenAndCaptionsThatFitTheScreen) {
  Application own;
  MenuEntry first("&First"), bar("-"), last("Re&name");
  PopupMenu model{.entries = {&first, nullptr, &last, &bar}, .onPopup = {}};
  last.submenu = {&first};
  QWidget pane;
  pane.show();
  AddPopup(pane, "menu", model, [] { return QPoint(30, 40); });
  model.Popup();
  const auto& menu = The<QMenu>("menu");
  EXPECT_EQ(menu.pos(), QPoint(30, 40));
  EXPECT_TRUE(menu.actions()[1]->isSeparator() && menu.actions()[3]->isSeparator());
  EXPECT_EQ(menu.actions()[3]->text(), "") << "no heading";
  bar.SetVisible(false);
  last.SetCaption("Re&name(" + std::string(1'000'000, 'w') + ")");
  EXPECT_FALSE(menu.actions()[3]->isVisible());
  EXPECT_LT(menu.sizeHint().width() / menu.fontMetrics().horizontalAdvance('w'), 130);
  first.SetChecked(true);
  EXPECT_TRUE(menu.actions()[2]->menu()->actions()[0]->isChecked());
}

TEST(Bind, TextThatAssistiveTechnologySetsCountsAtOnceAndTypedTextOfAListWhenItsEditEnds) {
  Application own;
  QScrollBar bar;
  ScrollBar place;
  Bind(bar, place);
  bar.setValue(bar.maximum() / 2);
  EXPECT_EQ(place.Value(), 50);
  QLineEdit line;
  QComboBox list;
  TextBox number;
  int changes = 0;
  ComboBox rate([&changes] { ++changes; });
  rate.SetItems({"300", "9600"});
  Bind(line, number);
  Bind(list, rate);
  for (QLineEdit* edit : {&line, list.lineEdit()}) {
    QAccessibleInterface* element = QAccessible::queryAccessibleInterface(edit);
    element->setText(QAccessible::Value, "12");
    element->editableTextInterface()->replaceText(0, 1, "34");
  }
  EXPECT_EQ(number.Text() + " " + rate.Text(), "342 342");
  EXPECT_EQ(changes, 2);
  QTest::keyClick(&list, Qt::Key_Down);
  EXPECT_EQ(rate.Text(), "300");
  QTest::keyClicks(&list, "7");
  EXPECT_EQ(rate.Text(), "300");
  QTest::keyClick(&list, Qt::Key_Return);
  EXPECT_EQ(rate.Text(), "3007");
  EXPECT_EQ(changes, 4);
  // A text longer than the widget takes is not cut in the model by being shown.
  number.SetText(std::string(40'000, '1'));
  EXPECT_EQ(number.Text().size(), 40'000u);
}

bool Worked(QAccessibleInterface& element) {
  // Lines, rooms and the inner window of a scrolled one take clicks without meaning anything.
  static const std::set kSilent = {QAccessible::Client, QAccessible::Window, QAccessible::Dialog};
  if (kSilent.contains(element.role())) return false;
  const auto* actions = element.actionInterface();
  return element.state().focusable ||
         (actions != nullptr &&
          actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
}

// The elements under this one that the user works, hidden ones too; counts them.
int ExpectNames(QAccessibleInterface* element) {
  if (element == nullptr || element->role() == QAccessible::Separator) return 0;
  const QObject* object = element->object();
  const char* kind = object != nullptr ? object->metaObject()->className() : "part";
  SCOPED_TRACE(kind + (object != nullptr ? " " + object->objectName().toStdString() : ""));
  int found = Worked(*element) ? 1 : 0;
  EXPECT_GE(element->text(QAccessible::Name).size(), found);
  for (int i = 0; i < element->childCount(); ++i) found += ExpectNames(element->child(i));
  return found;
}

TEST_F(Windows, EveryElementHasANameAndTheRefreshButtonThatOfWhatItWillDoAndItsFocusBack) {
  Run({AddView, [](MainModule& module) {
         LoadDialogs(module);
         int found = 0;
         for (QWidget* window : QApplication::topLevelWidgets()) {
           found += ExpectNames(QAccessible::queryAccessibleInterface(window));
         }
         EXPECT_GT(found, 200);
         frmWave& view = View(module);
         QWidget* refresh = Shown("cmdRefresh");
         const auto disable = [&] {
           refresh->setFocus();
           view.cmdRefresh.SetEnabled(false);
           EXPECT_FALSE(refresh->hasFocus());
         };
         disable();
         EXPECT_EQ(refresh->accessibleName(), "Refresh");
         view.cmdRefresh.SetFace(kStopFace);
         EXPECT_EQ(refresh->accessibleName(), "Stop");
         view.OptionCH.SetOptionEnabled(0, false);  // the neighbour, too
         EXPECT_FALSE(Shown("OptionCH0")->isEnabled());
         view.cmdRefresh.SetEnabled(true);
         EXPECT_TRUE(refresh->hasFocus());
         disable();
         QWidget* picture = Shown("WavePic");
         picture->setFocus();
         view.cmdRefresh.SetEnabled(true);
         EXPECT_TRUE(picture->hasFocus()) << "where the user has gone meanwhile";
       }});
}

}  // namespace
}  // namespace oriolemark

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
