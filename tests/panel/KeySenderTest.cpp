#include "panel/KeySender.h"

#include <gtest/gtest.h>

#include "panel/frmV_Key.h"
#include "support/LinkBench.h"

namespace oriolemark {
namespace {

using Ms = Milliseconds;

TEST(KeySender, AClickSendsTheKeysCommandOnceAndSixKeysRepeatWhileHeldInAnOpenWindow) {
  const auto rows = Rows(R"(
Acquire | ACQUIRE || Auto | AUTO || CH_Off | CH_OFF || CH1 | CH1 || CH2 | CH2 || Cursor | CURSOR
Display | DISPLAY || F1 | F1 || F2 | F2 || F3 | F3 || F4 | F4 || F5 | F5 || H_Dec | H_SCALE_DEC
H_Inc | H_SCALE_INC || H_Pos_Dec | H_POS_DEC | held || H_Pos_Inc | H_POS_INC | held || Math | Math
Measure | MEASURE || P_V | PROMPT_V || P_H | PROMPT_H || Ref | REF || Run_Stop | RUN
Storage | STORAGE || TimeMenu | MNU_TIME || Trig_50 | TRIG%50 || Trig_Force | FORCE
Trig_Lvl_Dec | TRIG_LVL_DEC | held || Trig_Lvl_Inc | TRIG_LVL_INC | held || Trig_Menu | MNU_TRIG
Utility | UTILITY || V_Dec | V_SCALE_DEC || V_Inc | V_SCALE_INC || V_Pos_Dec | V_POS_DEC | held
V_Pos_Inc | V_POS_INC | held
)");
  ASSERT_EQ(kPanelKeys.size(), rows.size());
  LinkBench bench;
  bench.Connect(kLinkUsb);
  frmV_Key window(bench.clock, bench.scope);
  window.Show();
  KeySender& keys = window.Keys;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const PanelKey& key = kPanelKeys[i];
    EXPECT_EQ(key.control, "VK_" + rows[i][0]);
    // For how long it is held, whether it is let go inside, and how many commands go out.
    const std::size_t repeats = rows[i].size() == 3 ? 10 : 0;
    const std::tuple<int, KeySender::Release, std::size_t> presses[] = {
        {99, KeySender::Release::Inside, 1},
        {1000, KeySender::Release::Inside, repeats + 1},
        {1000, KeySender::Release::Outside, repeats}};
    for (const auto& [time, where, count] : presses) {
      keys.Press(key);
      bench.clock.Run(Ms(time));
      keys.LetGo(key, where);
      bench.clock.Run(Ms(300));
      EXPECT_EQ(std::exchange(bench.script.sent, {}),
                std::vector<std::string>(count, ":KEY:" + rows[i][1]));
    }
  }
  keys.Press(kPanelKeys[33]);
  bench.clock.Run(Ms(250));
  window.Unload();
  bench.clock.Run(Ms(250));
  EXPECT_EQ(bench.script.sent.size(), 2u) << "closed while held";
}

}  // namespace
}  // namespace oriolemark
