// The instrument has a member of the name "signals", which the toolkit takes for itself.
#include "support/LinkBench.h"

#include <QAbstractButton>
#include <QDialog>
#include <set>

#include "desktop/KeyWindow.h"
#include "desktop/RunWindows.h"
#include "drivers/QtEventSource.h"

namespace oriolemark {
namespace {

// The window of the keys in real time, in front of a scripted instrument.
struct KeyWindowTest : testing::Test, Application {
  KeyWindowTest() {
    bench.Connect(kLinkUsb);
    form.Keys.ButtonPressTimer.SetInterval(20);
    form.Show();
    Activate();
  }
  void Activate() {
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
  }
  QWindow* Screen() { return window.windowHandle(); }
  QPoint PlaceOf(const char* name) {
    const auto* key = window.findChild<QWidget*>(name);
    return key->mapTo(&window, key->rect().center());
  }
  std::vector<std::string> Sent() { return std::exchange(bench.script.sent, {}); }
  // Commands that were sent while nothing should be.
  std::size_t SentInPeace() {
    Sent();
    QTest::qWait(100);
    return Sent().size();
  }

  LinkBench bench;
  QtEventSource events;
  frmV_Key form{events, bench.scope};
  KeyWindow window{form, nullptr};
};

TEST_F(KeyWindowTest, EachKeyIsReachedByTabAndClickedByMouseSpaceAndEnter) {
  std::set<std::string> reached;
  for (std::size_t i = 0; i < kPanelKeys.size(); ++i) {
    QWidget* focus = window.focusWidget();
    ASSERT_NE(focus, nullptr);
    const std::string name = focus->objectName().toStdString();
    const auto key = std::ranges::find(kPanelKeys, name, &PanelKey::control);
    ASSERT_NE(key, kPanelKeys.end()) << name;
    EXPECT_EQ(focus->accessibleName(), key->meaning);
    EXPECT_TRUE(focus->toolTip().startsWith(key->meaning));
    QTest::mouseClick(Screen(), Qt::LeftButton, {}, PlaceOf(key->control));
    QTest::mouseClick(Screen(), Qt::RightButton, {}, PlaceOf(key->control));
    QTest::keyClick(Screen(), Qt::Key_Space);
    QTest::keyClick(Screen(), Qt::Key_Return);
    EXPECT_EQ(Sent(), std::vector<std::string>(3, CommandOf(*key))) << name;
    reached.insert(name);
    QTest::keyClick(Screen(), Qt::Key_Tab);
  }
  EXPECT_EQ(reached.size(), kPanelKeys.size());
  for (int number = 0; number < 5; ++number) {
    QTest::keyClick(Screen(), static_cast<Qt::Key>(Qt::Key_1 + number), Qt::ControlModifier);
    EXPECT_EQ(Sent(), std::vector<std::string>{":KEY:F" + std::to_string(number + 1)});
  }
}

TEST_F(KeyWindowTest, AHeldKeyRepeatsAtItsOwnPaceUntilItIsReleased) {
  int repeating = 0;
  for (const PanelKey& key : kPanelKeys) {
    for (const bool mouse : {true, false}) {
      window.findChild<QWidget*>(key.control)->setFocus();
      if (mouse) {
        QTest::mousePress(Screen(), Qt::LeftButton, {}, PlaceOf(key.control));
      } else {
        QTest::keyPress(Screen(), Qt::Key_Space);
        for (const auto type : {QEvent::KeyRelease, QEvent::KeyPress}) {
          QKeyEvent desktop(type, Qt::Key_Space, {}, " ", true);
          QApplication::sendEvent(window.focusWidget(), &desktop);
        }
      }
      const bool repeats = form.Keys.ButtonPressTimer.Enabled();
      EXPECT_EQ(repeats, key.repeat == KeyRepeat::WhileHeld) << key.control;
      if (repeats) QTest::qWait(210);
      if (mouse) {
        QTest::mouseRelease(Screen(), Qt::LeftButton, {}, PlaceOf(key.control));
      } else {
        QTest::keyRelease(Screen(), Qt::Key_Space);
      }
      const std::vector<std::string> sent = Sent();
      EXPECT_EQ(sent, std::vector<std::string>(sent.size(), CommandOf(key)));
      // Ten repeats and the click, on a machine that has the time.
      EXPECT_TRUE(repeats ? sent.size() > 4 && sent.size() < 13 : sent.size() == 1) << sent.size();
      repeating += repeats ? 1 : 0;
    }
  }
  EXPECT_EQ(repeating, 12);
  EXPECT_EQ(SentInPeace(), 0u);
}

TEST_F(KeyWindowTest, NothingIsSentForAKeyThatIsLeftBehind) {
  const QPoint place = PlaceOf("VK_V_Pos_Inc");
  const auto hold = [&] { QTest::mousePress(Screen(), Qt::LeftButton, {}, place); };
  const auto letGo = [&](QPoint at) { QTest::mouseRelease(Screen(), Qt::LeftButton, {}, at); };
  hold();
  QTest::mouseMove(Screen(), {2, 2});
  QTest::qWait(100);
  EXPECT_GT(Sent().size(), 0u) << "it repeats until it is let go";
  letGo({2, 2});
  EXPECT_EQ(SentInPeace(), 0u) << "outside";
  hold();
  QDialog message;
  message.setModal(true);
  message.show();
  EXPECT_EQ(SentInPeace(), 0u) << "behind a message, which takes the release";
  message.hide();
  Activate();
  letGo(place);
  EXPECT_EQ(SentInPeace(), 0u);
  window.findChild<QWidget*>("VK_V_Pos_Dec")->setFocus();
  QTest::keyPress(Screen(), Qt::Key_Space);
  QTest::keyClick(Screen(), Qt::Key_Tab);
  QTest::keyRelease(Screen(), Qt::Key_Space);
  EXPECT_EQ(SentInPeace(), 0u) << "the focus has gone on";
  QTest::keyPress(Screen(), Qt::Key_Space);
  QTest::keyClick(Screen(), Qt::Key_Escape);
  EXPECT_FALSE(form.Loaded());
  EXPECT_EQ(SentInPeace(), 0u);
}

TEST_F(Windows, AScreensPictureIsEnlargedByTheLargestWholeNumberOfPixels) {
  const auto look = [](MainModule& module) {
    const Canvas& canvas = module.panel.WavePic.Surface();
    const QWidget& screen = *Shown("WavePic");
    const QImage shown = screen.window()->grab().toImage();
    const double ratio = screen.devicePixelRatioF();
    const QPointF corner = screen.mapTo(screen.window(), QPointF(0, 0)) * ratio;
    const QRect room(corner.toPoint(), (QSizeF(screen.size()) * ratio).toSize());
    const int times = std::min(room.width() / 320, room.height() / 240);
    EXPECT_GE(times, 1);
    // The first pixel of the picture is the only one of its colour.
    QPoint from = room.topLeft();
    while (from.y() < room.bottom() && shown.pixel(from) != canvas.Pixels()[0]) {
      from = from.x() < room.right() ? from + QPoint(1, 0) : QPoint(room.left(), from.y() + 1);
    }
    int wrong = 0;
    for (int y = 0; y < 240 * times; ++y) {
      for (int x = 0; x < 320 * times; ++x) {
        const QPoint at = from + QPoint(x, y);
        wrong += !shown.rect().contains(at) ||
                 shown.pixel(at) != canvas.Pixels()[y / times * 320 + x / times];
      }
    }
    EXPECT_EQ(wrong, 0) << room.width() << " " << times;
    const QPoint middle = from + QPoint(160, 120) * times - room.center();
    EXPECT_LE(middle.manhattanLength(), 3);
  };
  const auto resize = [](int width, int height) {
    return [=](MainModule&) { Shown("frmV_Panel")->resize(width, height); };
  };
  Run({[](MainModule& module) {
         module.panel.Show();
         module.panel.cmdStop.Click();
         std::vector<std::uint32_t> colours(320 * 240);
         for (std::uint32_t i = 0; i < colours.size(); ++i) colours[i] = 0x102030 + i * 97;
         module.panel.WavePic.Surface().SetPixels(colours);
         module.panel.WavePic.NoteDrawn();
         EXPECT_FALSE(Shown("frmV_Panel")->isModal());
         EXPECT_NE(Shown("VK_Run"), nullptr);
         EXPECT_LE(Shown("frmV_Panel")->minimumSizeHint().height(), 700);
         EXPECT_LE(Shown("frmV_Panel")->minimumSizeHint().width(), 1000);
       },
       look, resize(701, 555), look, resize(1403, 1002), look,
       [](MainModule&) { QTest::keyClick(Shown("VK_F1"), Qt::Key_Escape); },
       [](MainModule& module) { EXPECT_FALSE(module.panel.Loaded()); }});
}

}  // namespace
}  // namespace oriolemark
