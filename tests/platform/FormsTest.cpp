#include <gtest/gtest.h>

#include "platform/Form.h"
#include "platform/Timer.h"
#include "support/Tables.h"
#include "support/VirtualClock.h"

namespace oriolemark {
namespace {

using Ms = Milliseconds;

TEST(Timer, NeverTicksInsideItsOwnHandler) {
  VirtualClock clock;
  std::vector<Ms> begun, ended;
  Timer timer(clock, 100, [&] {
    begun.push_back(clock.Now());
    clock.Run(Ms(350));
    ended.push_back(clock.Now());
  });
  timer.SetEnabled(true);
  clock.Run(Ms(600));
  EXPECT_EQ(begun, (std::vector<Ms>{Ms(100), Ms(500)})) << "what came due meanwhile is dropped";
  EXPECT_EQ(ended, (std::vector<Ms>{Ms(450), Ms(850)}));
}

TEST(Form, ASecondOpeningOfAModalWindowReturnsAtOnce) {
  VirtualClock clock;
  Form form;
  clock.UserAfter(Ms(100), [&] {
    form.ShowModal(clock.waiting);
    EXPECT_EQ(clock.Now(), Ms(100));
    EXPECT_EQ(Bits(form.Visible(), form.Modal()), "11");
  });
  clock.UserAfter(Ms(200), [&] { form.Unload(); });
  form.ShowModal(clock.waiting);
  EXPECT_EQ(clock.Now(), Ms(200));
  EXPECT_EQ(Bits(form.Loaded(), form.Modal()), "00");
}

}  // namespace
}  // namespace oriolemark
