// The instrument has a member of the name "signals", which the toolkit takes for itself.
#include "support/LinkBench.h"

#include <QDialog>
#include <set>

#include "desktop/KeyWindow.h"
#include "desktop/RunWindows.h"
#include "desktop/ScreenWidget.h"
#include "drivers/QtEventSource.h"
#include "platform/RasterCanvas.h"

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

TEST_F(KeyWindowTest, AKeyHeldByTheKeyboardRepeatsAtItsOwnPaceUntilItIsReleased) {
  for (const char* name : {"VK_V_Pos_Inc", "VK_Run_Stop"}) {
    window.findChild<QWidget*>(name)->setFocus();
    QTest::keyPress(Screen(), Qt::Key_Space);
    for (const auto type : {QEvent::KeyRelease, QEvent::KeyPress}) {
      QKeyEvent desktop(type, Qt::Key_Space, {}, " ", true);
      QApplication::sendEvent(window.focusWidget(), &desktop);
    }
    const bool repeats = form.Keys.ButtonPressTimer.Enabled();
    EXPECT_EQ(repeats, name == std::string("VK_V_Pos_Inc"));
    QTest::qWait(210);
    QTest::keyRelease(Screen(), Qt::Key_Space);
    const std::size_t sent = Sent().size();
    // Ten repeats and the click, on a machine that has the time.
    EXPECT_TRUE(repeats ? sent > 4 && sent < 13 : sent == 1) << sent;
  }
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

// The name makes it run at every scale of the desktop.
TEST_F(Windows, AScreensPictureIsEnlargedByTheLargestWholeNumberOfPixels) {
  Application own;
  Picture picture(std::make_unique<RasterCanvas>());
  picture.SetSize(320, 240);
  picture.Surface().SetSize(320, 240);
  std::vector<std::uint32_t> colours(320 * 240);
  for (std::uint32_t i = 0; i < colours.size(); ++i) colours[i] = 0xFF102030 + i * 97;
  picture.Surface().SetPixels(colours);
  QWidget window;
  ScreenWidget screen(picture, &window);
  window.resize(1500, 1100);
  for (const QRect place : {QRect(9, 9, 646, 486), {10, 11, 401, 555}, {3, 6, 1403, 1002}}) {
    screen.setGeometry(place);
    const QImage shown = window.grab().toImage();
    const double ratio = screen.devicePixelRatioF();
    const QRect room((QPointF(place.topLeft()) * ratio).toPoint(),
                     (QSizeF(place.size()) * ratio).toSize());
    const int times = std::min(room.width() / 320, room.height() / 240);
    // The first pixel of the picture is the only one of its colour.
    QPoint from = room.topLeft();
    while (from.y() < room.bottom() && shown.pixel(from) != colours[0]) {
      from = from.x() < room.right() ? from + QPoint(1, 0) : QPoint(room.left(), from.y() + 1);
    }
    int wrong = 0;
    for (int i = 0; i < 320 * 240 * times * times; ++i) {
      const int x = i % (320 * times), y = i / (320 * times);
      wrong += shown.pixel(from + QPoint(x, y)) != colours[y / times * 320 + x / times];
    }
    EXPECT_EQ(wrong, 0) << room.width() << " " << times;
    EXPECT_LE((from + QPoint(160, 120) * times - room.center()).manhattanLength(), 3);
  }
}

}  // namespace
}  // namespace oriolemark
