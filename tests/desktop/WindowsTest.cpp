#include <gtest/gtest.h>

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPalette>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>
#include <set>

#include "desktop/Bind.h"
#include "desktop/Icons.h"
#include "desktop/RunWindows.h"
#include "drivers/QtEventSource.h"
#include "drivers/QtPrompts.h"
#include "platform/RasterCanvas.h"

namespace oriolemark {
namespace {

TEST_F(Windows, AModalDialogBeginsAtItsFirstControlAndGoesWithTheProgram) {
  const auto open = [](MainModule& module) {
    QTimer::singleShot(0, [&module] { module.main.mnuFileNew.Click(); });
  };
  const auto look = [](MainModule&) {
    QWidget* dialog = QApplication::activeModalWidget();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->focusWidget(), Shown("NewOption0"));
  };
  Run({open, look, [](MainModule&) { QTest::mouseClick(Shown("cmdCancel"), Qt::LeftButton); }, open,
       look});
}

TEST_F(Windows, TheLinkPageShowsWhatStandsBehindEachLinkToBeReadAndCopied) {
  Run({[](MainModule& module) {
         QTimer::singleShot(0, [&module] { module.main.mnuToolsOptions.Click(); });
       },
       [](MainModule& module) { module.options.tbsOptions.Select(2); },
       [](MainModule& module) {
         const std::pair<const char*, std::string> rows[] = {
             {"DeviceCombo", module.options.DeviceMeaning()},
             {"GPIB_AddrCombo", module.options.AddressMeaning()},
             {"PortCombo", module.options.PortMeaning(0)}};
         for (const auto& [name, meaning] : rows) {
           auto* label = qobject_cast<QLabel*>(Shown(QString(name) + "Meaning"));
           ASSERT_NE(label, nullptr) << name;
           EXPECT_EQ(label->text().toStdString(), meaning);
           EXPECT_EQ(label->textFormat(), Qt::PlainText);
           EXPECT_TRUE(label->textInteractionFlags() & Qt::TextSelectableByMouse);
           EXPECT_FALSE(label->focusPolicy() & Qt::TabFocus) << "no stop on the way to the button";
           EXPECT_GE(label->height(), label->heightForWidth(label->width())) << "whole";
           EXPECT_EQ(Shown(name)->accessibleDescription().toStdString(), meaning);
           // Lines end at blanks alone, so that a path stays whole.
           EXPECT_TRUE(Shown(name)->toolTip().startsWith("<p style='white-space:pre'>"));
         }
         EXPECT_LT(Shown("frmOptions")->width(), 640);
         EXPECT_LT(Shown("frmOptions")->height(), 560);
         QTest::mouseClick(Shown("cmdCancel"), Qt::LeftButton);
       }});
}

TEST_F(Windows, AWaveViewIsWorkedByKeysAlone) {
  Run({[](MainModule&) { Shown("tool_New")->setFocus(Qt::TabFocusReason); },
       [](MainModule&) {
         auto* tool = qobject_cast<QToolButton*>(Shown("tool_AddNewWaveform"));
         tool->setFocus(Qt::TabFocusReason);
         QTest::keyClick(tool, Qt::Key_Space);
       },
       [](MainModule& module) {
         auto& view = dynamic_cast<frmWave&>(*module.sheet.WaveViews[0]);
         EXPECT_GE(Shown("frmWave")->x(), 0) << "wider than the area, and its title in reach";
         view.ChkCursorX.SetValue(true);
         QWidget* picture = Shown("WavePic");
         for (int tabs = 0; tabs < 30 && !picture->hasFocus(); ++tabs) {
           QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
         }
         ASSERT_TRUE(picture->hasFocus());
         QTest::keyClick(picture, Qt::Key_Right);
         QTest::keyClick(picture, Qt::Key_Left, Qt::ShiftModifier | Qt::ControlModifier);
         QTest::keyClick(picture, Qt::Key_Down);
         EXPECT_EQ(picture->accessibleDescription(), "No waveform.");
         EXPECT_EQ(view.Cursors.X1Base, 51);
         EXPECT_EQ(view.Cursors.X2Base, 240);
         EXPECT_EQ(view.Cursors.Y1Base, 50) << "a pair that is not shown";
         QTest::keyClick(picture, Qt::Key_F6);
         EXPECT_TRUE(Shown("tool_New")->hasFocus());
         QTest::keyClick(Shown("tool_New"), Qt::Key_F6, Qt::ShiftModifier);
         EXPECT_TRUE(Shown("frmWave")->isAncestorOf(QApplication::focusWidget()));
         QTest::keyClick(QApplication::focusWidget(), Qt::Key_W, Qt::ControlModifier);
         EXPECT_FALSE(view.Loaded());
         EXPECT_EQ(dynamic_cast<RasterCanvas&>(view.WavePic.Surface()).Capacity(), 0);
         QWidget* tree = Shown("DataSheetTree");
         tree->setFocus();
         QTest::keyClick(tree, Qt::Key_End);
         QTest::keyClick(tree, Qt::Key_Return);
       },
       [](MainModule& module) {
         const auto& view = static_cast<frmWave&>(*module.sheet.WaveViews[0]);
         EXPECT_TRUE(view.Visible()) << "Enter opens what a double click opens";
         QTimer::singleShot(0, [] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_F5); });
       },
       [](MainModule& module) {
         QWidget* box = QApplication::activeModalWidget();
         ASSERT_NE(box, nullptr) << "a refresh without a link is refused";
         EXPECT_EQ(box->windowTitle(), "Oriolemark");
         QTest::keyClick(box, Qt::Key_Escape);
         EXPECT_FALSE(module.sheet.Waves[0].HasData);
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

// The wave views that are open, the first one at the back.
QList<QMdiSubWindow*> Views() {
  return qobject_cast<QMdiArea*>(Shown("MdiArea"))->subWindowList(QMdiArea::StackingOrder);
}

// A main window with three wave views.
std::vector<std::function<void(MainModule&)>> OpenThreeViews() {
  const auto add = [](MainModule& module) { module.main.Tools[10].action(); };
  return {add, add, add, [](MainModule&) { Shown("frmMain")->resize(1200, 900); }};
}

TEST_F(Windows, WaveViewsAreArrangedInPixels) {
  auto steps = OpenThreeViews();
  steps.push_back([](MainModule& module) {
    const QSizeF room = qobject_cast<QMdiArea*>(Shown("MdiArea"))->maximumViewportSize();
    const double width = room.width(), height = room.height();
    // The place of the window at the back, and how far each stands from the one before.
    const std::tuple<MenuEntry frmMain::*, QRectF, QPointF> rows[] = {
        {&frmMain::mnuWindowCascade, {0, 0, width * 0.75, height * 0.75}, {26, 26}},
        {&frmMain::mnuWindowTileHorizontal, {0, 0, width, height / 3}, {0, height / 3}},
        {&frmMain::mnuWindowTileVertical, {0, 0, width / 3, height}, {width / 3, 0}},
        {&frmMain::mnuWindowArrangeIcons, {0, height - 32, 160, 32}, {160, 0}}};
    for (const auto& [entry, first, step] : rows) {
      if (entry == &frmMain::mnuWindowArrangeIcons) {
        for (QMdiSubWindow* view : Views()) view->showMinimized();
      }
      (module.main.*entry).Click();
      for (int i = 0; i < 3; ++i) {
        const QRectF place = first.translated(step * i);
        EXPECT_LE((place.topLeft() - Views()[i]->pos()).manhattanLength(), 2) << i << place.x();
        EXPECT_LE((place.bottomRight() - Views()[i]->geometry().bottomRight()).manhattanLength(), 3)
            << i << place.width();
      }
    }
  });
  Run(steps);
}

TEST_F(Windows, TheControlsOfALowWaveViewScroll) {
  auto steps = OpenThreeViews();
  steps.push_back([](MainModule& module) { module.main.mnuWindowTileHorizontal.Click(); });
  steps.push_back([](MainModule&) {
    const QMdiSubWindow& view = *Views()[2];
    auto* strip = view.findChild<QScrollArea*>();
    ASSERT_NE(strip, nullptr);
    EXPECT_EQ(strip->geometry().right() + 1, view.findChild<QWidget*>("WavePic")->x());
    // The first control is there and the last one can be reached, and neither is squeezed.
    for (const char* name : {"cmdRefresh", "ChkCursorY"}) {
      auto* control = view.findChild<QWidget*>(name);
      strip->ensureWidgetVisible(control);
      EXPECT_GE(control->height(), control->sizeHint().height()) << name;
      EXPECT_EQ(control->visibleRegion().boundingRect(), control->rect()) << name;
    }
    EXPECT_GT(strip->verticalScrollBar()->value(), 0);
  });
  Run(steps);
}

TEST_F(Windows, APicturesPixelsAreWholeOnTheScreenAndLieUnderTheMouse) {
  Run({[](MainModule& module) { module.main.Tools[10].action(); },
       [](MainModule& module) {
         auto& view = dynamic_cast<frmWave&>(*module.sheet.WaveViews[0]);
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
         EXPECT_GT(cursor, 50) << "where the mouse has let it go";
       }});
}

TEST_F(Windows, ARefusedRenameGivesTheRootItsNameBack) {
  const auto tree = [] { return qobject_cast<QTreeWidget*>(Shown("DataSheetTree")); };
  Run({[&](MainModule&) {
         tree()->setFocus();
         QTest::keyClick(tree(), Qt::Key_Home);
         QTest::keyClick(tree(), Qt::Key_F2);
       },
       [](MainModule&) {
         QTest::keyClicks(QApplication::focusWidget(), "XX");
         QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
       },
       [&](MainModule&) {
         EXPECT_EQ(tree()->topLevelItem(0)->text(0), "Data Sheet") << "behind the message already";
         QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
       }});
}

TEST_F(Windows, TheLampStaysOnTheToolbarOfANarrowWindow) {
  Run({[](MainModule&) { Shown("frmMain")->resize(1000, 500); },
       [](MainModule&) {
         EXPECT_NE(Shown("picLED_OFF"), nullptr);
         Shown("frmMain")->resize(300, 500);
       },
       [](MainModule& module) {
         EXPECT_LT(Shown("frmMain")->width(), 430);
         for (const char* name : {"picLED_OFF", "picLED_ON"}) {
           const QWidget* lamp = Shown(name);
           ASSERT_NE(lamp, nullptr) << name;
           EXPECT_EQ(lamp->visibleRegion().boundingRect(), lamp->rect());
           const QWidget* more = Shown("qt_toolbar_ext_button");
           EXPECT_TRUE(more && !more->geometry().intersects(lamp->geometry()));
           module.main.picLED_ON.SetVisible(true);
           module.main.picLED_OFF.SetVisible(false);
         }
         EXPECT_EQ(Shown("picLED_OFF"), nullptr);
       }});
}

TEST_F(Windows, TheMainWindowFitsASmallScreenAndItsPicturesADarkOne) {
  Run({[](MainModule&) {
    const QSize least = Shown("frmMain")->minimumSizeHint();
    EXPECT_LT(least.width(), 800);
    EXPECT_LT(least.height(), 600);
    const auto lightness = [] {
      const QImage image = PictureNamed("TreeSheet").pixmap({24, 24}, 1.0).toImage();
      return image.pixelColor(5, 12).lightness();
    };
    EXPECT_LT(lightness(), 100);
    QApplication::setPalette(QPalette(QColor(50, 50, 50), QColor(40, 40, 40)));
    EXPECT_GT(lightness(), 150);
  }});
}

TEST_F(Windows, ANameOfAMegabyteMakesNoTitleNoEntryAndNoMessageLong) {
  const std::string name = "[*]&" + std::string(1'000'000, 'w') + ".ctl";
  Run({[](MainModule& module) { module.main.Tools[10].action(); },
       [&](MainModule& module) {
         module.sheet.WaveViews[0]->SetCaption(name);
         module.main.mnuFileNew.SetCaption(name);
         module.main.StatusPanel.SetText(name);
         module.controller.dialog.Frame.SetText(name);
         EXPECT_LT(Shown("frmMain")->minimumSizeHint().width(), 800);
         EXPECT_TRUE(Shown("frmWave")->windowTitle().endsWith("www.ctl"));
         for (const QWidget* widget : QApplication::allWidgets()) {
           EXPECT_LT(widget->windowTitle().size() + widget->minimumSizeHint().width(), 5000)
               << widget->metaObject()->className() << widget->objectName().toStdString();
           for (const QAction* action : widget->actions()) EXPECT_LT(action->text().size(), 1000);
         }
         module.controlDocument.CtrlChanged = true;
         module.controlDocument.CtrlFileName = name;
         QTimer::singleShot(0, [&module] { module.main.mnuFileExit.Click(); });
       },
       [](MainModule& module) {
         QWidget* box = QApplication::activeModalWidget();
         ASSERT_NE(box, nullptr);
         EXPECT_LT(box->property("text").toString().size(), 3000);
         EXPECT_LT(box->width(), 1300);
         QTest::keyClick(box, Qt::Key_Escape);
         module.controlDocument.CtrlChanged = false;
       }});
}

TEST(Bind, TextThatAssistiveTechnologySetsCountsAtOnceAndTypedTextOfAListWhenItsEditEnds) {
  Application own;
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
  EXPECT_EQ(number.Text(), "342");
  EXPECT_EQ(rate.Text(), "342");
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

TEST(Prompts, AMessageThatMayBeMutedIsWhereItsBoxIsTicked) {
  Application own;
  QtEventSource events;
  Waiting waiting{events};
  QtPrompts prompts{waiting};
  const std::tuple<bool, bool, MessageAnswer> rows[] = {{false, false, MessageAnswer::Ok},
                                                        {true, false, MessageAnswer::Ok},
                                                        {true, true, MessageAnswer::OkAndMute}};
  for (const auto& [mayMute, ticked, answer] : rows) {
    QTimer::singleShot(200, [mayMute = mayMute, ticked = ticked] {
      QWidget* box = QApplication::activeModalWidget();
      auto* mute = box->findChild<QCheckBox*>();
      EXPECT_EQ(mute != nullptr, mayMute);
      if (mute != nullptr && ticked) QTest::keyClick(mute, Qt::Key_Space);
      QTest::keyClick(box, Qt::Key_Return);
    });
    EXPECT_EQ(prompts.Show({.text = "Input/output error", .mayMute = mayMute}), answer);
  }
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
  EXPECT_FALSE(found != 0 && element->text(QAccessible::Name).isEmpty());
  for (int i = 0; i < element->childCount(); ++i) found += ExpectNames(element->child(i));
  return found;
}

TEST_F(Windows, EveryElementThatIsWorkedHasANameAndTheRefreshButtonThatOfWhatItWillDo) {
  Run({[](MainModule& module) { module.main.Tools[10].action(); },
       [](MainModule& module) {
         int found = 0;
         for (QWidget* window : QApplication::topLevelWidgets()) {
           found += ExpectNames(QAccessible::queryAccessibleInterface(window));
         }
         EXPECT_GT(found, 60);
         auto* button = QAccessible::queryAccessibleInterface(Shown("cmdRefresh"));
         EXPECT_EQ(button->text(QAccessible::Name), "Refresh");
         dynamic_cast<frmWave&>(*module.sheet.WaveViews[0]).cmdRefresh.SetFace(kStopFace);
         EXPECT_EQ(button->text(QAccessible::Name), "Stop");
       }});
}

}  // namespace
}  // namespace oriolemark

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
