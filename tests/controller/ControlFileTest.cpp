#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

#include "controller/records/ControlFile.h"
#include "support/ControllerBench.h"
#include "support/FileFolder.h"

namespace oriolemark {
namespace {

namespace fs = std::filesystem;

const std::string kSignature = "\"Tavik Technologies TX5000 Controller\"\r\n";
const char* const kInvalid = "File Format is Invaild !";

// The settings in the order of the file, behind the signature.
const auto kOrder = Split(
    "RunStop CH1Display CH1VoltDiv CH1Offset CH1Coupling CH1BWLimit CH1Probe CH1Invert "
    "CH2Display CH2VoltDiv CH2Offset CH2Coupling CH2BWLimit CH2Probe CH2Invert TimeDiv "
    "TimeDelay Holdoff MemorySize TimeFormat TrigMethod TrigSlope TrigSource TrigMode "
    "TrigCoupling VideoPolarity VideoSync LineNumber VideoStandard PulseMode PulseWidth "
    "TrigLevel SamplingMode Acquisition Intensity Averages AntiAliasing DisplayType Persist "
    "Grid",
    ' ');

std::string FileOf(CtrlSettings settings) {
  std::string bytes = kSignature;
  for (const auto& name : kOrder) bytes += "\"" + ValueOf(settings, name) + "\"\r\n";
  return bytes;
}

struct ControlFile : FileFolder, ::testing::Test {
  // What a numbered record holds after the reading of the file.
  CtrlSettings Read() {
    CtrlSettings settings = Named("old");
    ReadControlFile(path, settings, bench.prompts);
    return settings;
  }

  ControllerBench bench;
  std::string path = folder + "/a.cfx";
};

TEST_F(ControlFile, IsWrittenInItsOwnOrderAndReadBackUnlessTheDialogIsCancelled) {
  const std::string name = folder + "/\xC3\xA4 & b.txt";
  const CtrlSettings written = Named("v, ][\\ \xE4");
  bench.settings = written;
  bench.document.CtrlChanged = true;
  bench.controller.mnuSaveCtrl.Click();
  EXPECT_TRUE(bench.document.CtrlChanged);
  EXPECT_EQ(bench.document.CtrlFileName, "");
  bench.prompts.paths = {name, "", "", name};
  bench.module.main.mnuFileSaveCtrlFile.Click();
  EXPECT_FALSE(bench.document.CtrlChanged);
  bench.settings = Named("other");
  bench.controller.mnuSaveAsCtrl.Click();
  bench.controller.mnuOpenCtrl.Click();
  EXPECT_EQ(Bytes(name), FileOf(written));
  EXPECT_EQ(bench.document.CtrlFileName, name);
  EXPECT_EQ(Listed(bench.settings), Listed(Named("other")));
  bench.controller.mnuOpenCtrl.Click();
  bench.settings.MemOffset = written.MemOffset;  // which the file does not hold
  EXPECT_EQ(Listed(bench.settings), Listed(written));
  const std::string files = "Control Files (*.cfx)|*.cfx";
  const FileQuestion save{FileAction::Save, "Save", files}, open{FileAction::Open, "Open", files};
  const FileQuestion saveAs{FileAction::Save, "Save",
                            files + "|Text Files (*.txt)|*.txt|All Files (*.*)|*.*"};
  EXPECT_EQ(bench.prompts.questions, (std::vector{save, save, saveAs, open, open}));
}

TEST_F(ControlFile, CutAtAnyByteKeepsTheOldValuesOfTheLinesItDoesNotHold) {
  const std::string whole = FileOf(Named("v"));
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    CtrlSettings expected = Named("old");
    std::size_t end = kSignature.size();
    for (const std::string& name : kOrder) {
      end += name.size() + 5;
      if (length >= end - 2) ValueOf(expected, name) = "v" + name;
    }
    Put(path, whole.substr(0, length));
    ASSERT_EQ(Listed(Read()), Listed(expected)) << length;
    const bool invalid = length < kSignature.size() - 2;
    ASSERT_EQ(bench.Told(), std::vector<std::string>(invalid, kInvalid)) << length;
  }
}

TEST_F(ControlFile, OfBadBytesOnlyTheSignatureIsTold) {
  const CtrlSettings plain = Named("v");
  CtrlSettings strange = plain;
  strange.CH1Offset = std::string("a\0b", 3);
  strange.CH2Offset = "a\"b,\"";
  strange.CH1Coupling = "\r:RUN\r\r";
  const std::string good = FileOf(plain);
  const std::tuple<const char*, std::string, const CtrlSettings*> rows[] = {
      {"nothing", "", nullptr},
      {"other case", Filled(good, 'T', "t"), nullptr},
      {"without quotes", good.substr(1), nullptr},
      {"binary", std::string("\0\xFF\x1A\"\n", 5) + good, nullptr},
      {"LF alone", Filled(good, '\r', ""), &plain},
      {"CR alone", Filled(good, '\n', ""), nullptr},
      {"lines behind", good + "\"more\"\r\n", &plain},
      {"NUL, quotes and CR", FileOf(strange), &strange}};
  for (const auto& [name, bytes, read] : rows) {
    SCOPED_TRACE(name);
    Put(path, bytes);
    CtrlSettings expected = read == nullptr ? Named("old") : *read;
    expected.MemOffset = "oldMemOffset";
    EXPECT_EQ(Listed(Read()), Listed(expected));
    EXPECT_EQ(std::exchange(bench.prompts.shown, {}),
              std::vector<Message>(read == nullptr, Critical(kInvalid)));
  }
  bench.Connect();
  bench.settings = strange;
  bench.controller.cmdUpload.Click();
  EXPECT_EQ(bench.Sent().find(";:RUN"), std::string::npos) << "a value is no second command";
  Put(path, kSignature);
  fs::resize_file(path, 100'000'000);
  EXPECT_EQ(Listed(Read()), Listed(Named("old"))) << "of 100 MB without a line end";
  EXPECT_TRUE(bench.Told().empty());
}

TEST_F(ControlFile, ThatCannotBeReadOrWrittenIsToldAndBecomesTheCurrentOne) {
  const char *const absent = "No such file or directory", *const denied = "Permission denied";
  const std::tuple<const char*, std::function<void()>, const char*, const char*> rows[] = {
      {"folder", [this] { fs::create_directory(path); }, "Is a directory", "Is a directory"},
      {"locked", [this] { Put(path, "x"), chmod(path.c_str(), 0); }, denied, denied},
      {"read-only", [this] { Put(path, "x"), chmod(path.c_str(), 0444); }, kInvalid, denied},
      {"pipe", [this] { mkfifo(path.c_str(), 0666); }, "Invalid argument", "Invalid argument"},
      {"no folder", [this] { path = folder + "/none/a.cfx"; }, absent, absent}};
  for (const auto& [name, prepare, readError, writeError] : rows) {
    SCOPED_TRACE(name);
    fs::remove_all(path);
    prepare();
    bench.settings = Named("v");
    bench.controller.BuildCtrlTree();
    const auto expect = [&](const char* told) {
      EXPECT_EQ(bench.prompts.shown.at(0).icon, MessageIcon::Critical);
      EXPECT_EQ(bench.Told(), std::vector<std::string>{told});
      EXPECT_EQ(bench.document.CtrlFileName, path);
      EXPECT_FALSE(bench.document.CtrlChanged);
      EXPECT_EQ(bench.store.Read("Recent Ctrl", "RecentFile1"), path);
      EXPECT_EQ(Listed(bench.settings), Listed(Named("v")));
    };
    AsNobody([&] { bench.controller.OpenCtrl(path); });
    expect(readError);
    EXPECT_TRUE(bench.tree.Expanded(bench.Node("Running Control")));
    bench.document.CtrlChanged = true;
    AsNobody([&] { bench.controller.mnuSaveCtrl.Click(); });
    expect(writeError);
  }
}

TEST_F(ControlFile, AsksAboutChangesBeforeTheyWouldBeLost) {
  const std::tuple<const char*, std::function<void()>, const char*> commands[] = {
      {"New", [&] { bench.controller.mnuNewCtrl.Click(); }, "RUN"},
      {"Open", [&] { bench.controller.mnuOpenCtrl.Click(); }, "fRunStop"},
      {"OpenCtrl", [&] { bench.controller.OpenCtrl(folder + "/f"); }, "fRunStop"},
      {"close", [&] { bench.module.main.Close(); }, "vRunStop"}};
  for (const auto& [name, run, runState] : commands) {
    for (const auto answer : {MessageAnswer::Cancel, MessageAnswer::No, MessageAnswer::Yes}) {
      if (bench.waiting.Closing()) continue;
      SCOPED_TRACE(name + std::to_string(static_cast<int>(answer)));
      Put(folder + "/f", FileOf(Named("f")));
      fs::remove(path);
      bench.settings = Named("v");
      bench.document = {.CtrlFileName = path, .CtrlChanged = true, .CtrlModelReady = true};
      bench.prompts.paths = {folder + "/f"};
      bench.prompts.AnswerNext(answer, Milliseconds(10));
      if (name == std::string("close")) {
        bench.At(5, [&] { EXPECT_FALSE(bench.module.main.Close()) << "it is being asked"; });
      }
      run();
      const bool cancelled = answer == MessageAnswer::Cancel;
      EXPECT_EQ(bench.settings.RunStop, cancelled ? "vRunStop" : runState);
      EXPECT_EQ(fs::exists(path), answer == MessageAnswer::Yes);
      EXPECT_EQ(bench.document.CtrlChanged, cancelled || bench.waiting.Closing());
      const Message question{.text = "Save the changes to the Control File ",
                             .systemText = path,
                             .buttons = MessageButtons::YesNoCancel};
      EXPECT_EQ(std::exchange(bench.prompts.shown, {}), std::vector{question});
    }
  }
  EXPECT_TRUE(bench.waiting.Closing());
}

TEST_F(ControlFile, SavingFollowsLinksKeepsTheModeAndTellsAFailureThatTheOldFileOutlives) {
  const std::string target = folder + "/target";
  const std::string text = FileOf(Named("v"));
  int syncError = 0;
  std::string atSync;
  const auto sync = [&](std::FILE*) {
    atSync = Bytes(target);
    errno = syncError;
    return syncError == 0;
  };
  // With this one message, or none.
  const auto save = [&](const std::string& file, const char* told = nullptr) {
    WriteControlFile(file, Named("v"), bench.prompts, sync);
    std::vector<Message> expected;
    if (told != nullptr) expected = {{.systemText = told, .icon = MessageIcon::Critical}};
    EXPECT_EQ(std::exchange(bench.prompts.shown, {}), expected);
  };
  Put(target, "old");
  Put(folder + "/.target.saving", "left by an ended program");
  chmod(target.c_str(), 0640);
  fs::create_symlink("target", path);
  fs::create_symlink("a.cfx", folder + "/again");
  fs::create_hard_link(target, folder + "/before");
  save(folder + "/again");
  EXPECT_EQ(Bits(fs::is_symlink(path), fs::is_symlink(folder + "/again")), "11");
  EXPECT_EQ(Bytes(target), text);
  EXPECT_EQ(Bytes(folder + "/before"), "old") << "the name goes to another file in one step";
  EXPECT_EQ(atSync, "old") << "the new bytes are on the disk before the old ones go";
  EXPECT_EQ(static_cast<int>(fs::status(target).permissions()), 0640);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 4) << "nothing is left beside it";

  rlimit limit{};
  getrlimit(RLIMIT_FSIZE, &limit);
  const rlimit full{100, limit.rlim_max};
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  Put(target, "old");
  setrlimit(RLIMIT_FSIZE, &full);
  save(target, "File too large");
  setrlimit(RLIMIT_FSIZE, &limit);
  std::signal(SIGXFSZ, handler);
  syncError = EIO;
  save(target, "Input/output error");
  EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 4);
  fs::create_directories(folder + "/.target.saving/taken");
  save(target, "File exists");
  EXPECT_EQ(Bytes(target), "old") << "only a folder that takes no files leads to a write in place";
  fs::remove_all(folder + "/.target.saving");

  chmod(target.c_str(), 0666);
  chmod(folder.c_str(), 0555);
  AsNobody([&] { save(target, "Input/output error"); });
  EXPECT_EQ(Bytes(target), text) << "in place";
  chmod(folder.c_str(), 0777);
}

TEST_F(ControlFile, RecentOnesComeInOrderWithoutRepeatAndTheFifthDrops) {
  const MenuEntry& root = bench.module.main.mnuRecentCtrlRoot;
  EXPECT_FALSE(root.Enabled());
  const auto stored = [&] {
    std::string values;
    for (const auto& [key, value] : bench.store.values)
      values += key.first.starts_with("Recent") ? value + ";" : "";
    return values;
  };
  for (const auto& row : Rows(R"(
a b | a b; || a b | a b; || ä & c | ä & c;a b; || d | d;ä & c;a b;
ä & c | ä & c;d;a b; || e | e;ä & c;d;a b; || d | d;e;ä & c;a b; || a b | a b;d;e;ä & c;
ä & c | ä & c;a b;d;e;
)")) {
    bench.controller.OpenCtrl(row[0]);
    EXPECT_EQ(stored(), row[1]);
  }
  bench.prompts.shown.clear();
  EXPECT_EQ(root.submenu[0]->Caption(), "ä && c");
  root.submenu[1]->Click();
  EXPECT_EQ(bench.Told(), std::vector<std::string>{"No such file or directory"});
  EXPECT_EQ(stored(), "a b;ä & c;d;e;") << "a file that has gone stays";
}

TEST_F(ControlFile, TheLatestIsLoadedAtTheStartWhereTheUserWantsIt) {
  Put(path, FileOf(Named("f")));
  for (const char* const wanted : {"True", "-1", "False", "0"}) {
    for (const std::string& file : {path, folder + "/gone"}) {
      ProgramBench start;
      start.Store("General", "StartupLoadCtrl", wanted);
      start.Store("Recent Ctrl", "RecentFile1", file);
      start.Store("Recent Ctrl", "RecentFile2", "b");
      start.RunUntil(500);
      const bool loads = *wanted == 'T' || *wanted == '-';
      const bool found = loads && file == path;
      EXPECT_EQ(start.module.settings.RunStop, found ? "fRunStop" : "RUN");
      EXPECT_EQ(start.module.controlDocument.CtrlFileName, loads ? file : "");
      EXPECT_EQ(start.prompts.shown.size(), loads == found ? 0u : 1u);
      const auto& recent = start.module.main.mnuRecentCtrlRoot.submenu;
      EXPECT_EQ(recent[0]->Caption() + recent[1]->Caption(), file + "b");
    }
  }
}

}  // namespace
}  // namespace oriolemark
