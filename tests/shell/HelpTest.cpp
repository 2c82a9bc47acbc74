#include <gtest/gtest.h>

#include "support/ProgramBench.h"

namespace oriolemark {
namespace {

TEST(Help, OpensTheFileBesideTheProgramAndTellsWhenItCannot) {
  ProgramBench bench;
  frmMain& main = bench.module.main;
  main.mnuHelpContents.Click();
  EXPECT_TRUE(bench.prompts.shown.empty());
  bench.help.error = "no such file";
  main.mnuHelpSearchForHelpOn.Click();
  const std::string file = "/program/Oriolemark.hlp";
  EXPECT_EQ(bench.help.opened,
            (std::vector<std::pair<std::string, HelpCommand>>{{file, HelpCommand::Contents},
                                                              {file, HelpCommand::PartialKey}}));
  EXPECT_EQ(bench.prompts.shown, std::vector<Message>{{.text = "no such file"}});
}

}  // namespace
}  // namespace oriolemark
