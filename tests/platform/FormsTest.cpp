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
  std::vector<Ms> begun;
  Timer timer(clock, 100, [&] {
    begun.push_back(clock.Now());
    clock.Run(Ms(350));
  });
  timer.SetEnabled(true);
  clock.Run(Ms(600));
  EXPECT_EQ(begun, (std::vector<Ms>{Ms(100), Ms(500)})) << "what came due meanwhile is dropped";
}

TEST(Form, ASecondOpeningOfAModalWindowReturnsAtOnce) {
  VirtualClock clock;
  Form form;
  clock.UserAfter(Ms(100), [&] {
    form.ShowModal(clock.waiting);
    EXPECT_EQ(clock.Now(), Ms(100));
  });
  clock.UserAfter(Ms(200), [&] { form.Unload(); });
  form.ShowModal(clock.waiting);
  EXPECT_EQ(clock.Now(), Ms(200));
  EXPECT_EQ(Bits(form.Loaded(), form.Modal()), "00");
}

}  // namespace
}  // namespace oriolemark
