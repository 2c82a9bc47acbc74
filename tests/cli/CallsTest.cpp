#include <gtest/gtest.h>

#include "cli/Names.h"
#include "cli/Rendering.h"
#include "controller/records/ControlFile.h"
#include "datasheet/records/DataSheetFile.h"
#include "support/CallBench.h"
#include "support/ControllerBench.h"
#include "support/FileFolder.h"

namespace oriolemark {
namespace {

using Ms = Milliseconds;

int Number(ExitCode code) {
  return static_cast<int>(code);
}

TEST(Calls, AWrongCallIsAnsweredBeforeTheLinkIsOpened) {
  CallBench bench;
  for (const auto& row : Rows(R"(
2 | - | A verb is missing
2 | wvae ch1 | Did you mean "wave"?
2 | wave | CHANNEL
2 | wave ch3 | ch3
2 | samples both | both
2 | wave ch1 x.txt | .csv .json .orm .bmp .png
2 | wave ch1 --zoom 200 | for a .bmp or .png file
2 | wave ch1 a.png --zoom 501 | 50% to 500%
2 | wave ch1 --csv --json | Choose
2 | wave ch1 x.csv --json | extension
2 | wave --colour ch1 | no option "--colour"
2 | measure ch1 --limit x | Did you mean "--limits"
2 | identify --every 1s | belongs to a watch
2 | identify --sim --link serial:/dev/x | a serial line of its own
2 | download x.png | .cfx .txt
2 | download - | Give its name
2 | help wvae | Did you mean "wave"
2 | identify --limits x | belongs to another verb
2 | get voltdvi | Did you mean "CH1 Volt/Div" or "CH2 Volt/Div"?
2 | get Volt/Div | Several settings
2 | set CH1_Probe | is no assignment
2 | set Memory_Size=4000 | can only be read
2 | set Delay=5h | is no time
2 | set Delay=1ms Delay=2ms | is set twice
2 | set CH1_Probe=1X CH1_Coupling=XX | Choose DC, AC
2 | key f1 menu | Did you mean "Acquire menu"
2 | screen x.png | only be read over USB
2 | identify --link com1 | Choose serial, gpib or usb
2 | identify --link gpib:31 | 0 to 30
2 | identify --link serial:/dev/x@fast | no baud rate
2 | watch set CH1_Probe=1X --every 1s | No verb that can be watched is "set"
2 | watch get --every 99ms | 100ms to 240h
2 | watch get --every 1d | is no time
2 | watch wave ch1 --every 1s | --json
2 | watch measure ch1 x.csv --every 1s | writes no file
5 | upload /nowhere/x.cfx | does not exist
5 | measure ch1 --limits /nowhere/x.orm | could not be read
5 | convert /nowhere/x.orm | could not be read
)")) {
    EXPECT_EQ(std::to_string(Number(bench.Run(row[1]))), row[0]) << row[1];
    EXPECT_NE(bench.err.find(row[2]), std::string::npos) << row[1] << ": " << bench.err;
    EXPECT_EQ(bench.wire + bench.out, "") << row[1];
  }
  EXPECT_EQ(bench.Run("wave --help"), ExitCode::Success);
  EXPECT_NE(bench.out.find("--monochrome"), std::string::npos);
}

// The window's story of a verb, from the connection to the end of the program.
std::string WireOfWindow(const std::function<void(LinkedBench&)>& story) {
  LinkedBench bench;
  story(bench);
  bench.prompts.toSave = MessageAnswer::No;
  EXPECT_TRUE(bench.module.main.Close());
  bench.module.main.Unload();
  return bench.port.written;
}

TEST(Calls, EachVerbSendsTheSameBytesAsTheWindow) {
  const FileFolder files;
  const std::string cfx = files.folder + "/a.cfx";
  CtrlSettings settings = Named("");
  FileFolder::Put(cfx, ControlFileText(settings));
  const auto reading = [](ItemKind kind, int channel) {
    return [kind, channel](LinkedBench& bench) {
      bench.Add(kind, 1);
      auto& view = dynamic_cast<ReadingView&>(*bench.module.browser.files.View(kind, 0));
      view.OptionCH.Select(channel);
      view.cmdRefresh.Click();
    };
  };
  const auto command = [](const char* path) {
    return [path](LinkedBench& bench) { bench.module.controller.PraseCtrlList(path); };
  };
  const std::tuple<std::string, std::function<void(LinkedBench&)>> rows[] = {
      {"wave ch1", reading(ItemKind::Wave, 0)},
      {"wave both", reading(ItemKind::Wave, 2)},
      {"samples ch2", reading(ItemKind::Data, 1)},
      {"measure ch2", reading(ItemKind::Measure, 1)},
      {"download " + files.folder + "/b.cfx",
       [](LinkedBench& bench) { bench.module.controller.cmdDownload.Click(); }},
      {"upload " + cfx,
       [&cfx](LinkedBench& bench) {
         bench.module.controller.OpenCtrl(cfx);
         bench.module.controller.cmdUpload.Click();
       }},
      {"autoset", command("TX5000\\Running Control\\Auto Set")},
      {"trigger50", command("TX5000\\Running Control\\Set Trig to 50%")},
      {"force", command("TX5000\\Running Control\\Force Trigger")},
      {"key f1 trigger_menu",
       [](LinkedBench& bench) {
         for (const int key : {7, 28}) bench.module.keys.Keys.Click(kPanelKeys[key]);
       }},
  };
  for (const auto& [call, window] : rows) {
    CallBench bench;
    bench.instrument.Turn(":STOP", "");
    EXPECT_EQ(bench.Run(call), ExitCode::Success) << call << ": " << bench.err;
    EXPECT_EQ(bench.wire, WireOfWindow(window)) << call;
  }
  EXPECT_NE(FileFolder::Bytes(files.folder + "/b.cfx").find("\"2.00div\""), std::string::npos);
}

TEST(Calls, ASettingIsChosenFromTheOfferedValuesAndReadBack) {
  CallBench bench;
  for (const auto& row : Rows(R"(
0 | CH1_Probe=10x | CH1 Probe  10X | :CHANNEL1:PROBE:10X
0 | ch1volt/div=2V | CH1 Volt/Div  2.00V | :CHANNEL1:RANGE:2.00V
0 | :CHANNEL1:OFFSET=-1 | CH1 Offset  -1.00div | :CHANNEL1:OFFSET:-1.00div
0 | CH1_Volt/Div=500mV | CH1 Volt/Div  500mV | :CHANNEL1:RANGE:500mV
0 | CH1_Volt/Div=1 | CH1 Volt/Div  1.00V | :CHANNEL1:RANGE:1.00V
0 | Time/Div=0.001 | Time Base Time/Div  1.000ms | :TimeBase:RANGE:1.000ms
0 | Level=-11.0div | Trigger Level  -11.00div | :TRIGGER:LEVEL:-11.00div
0 | Averages=16.0 | Acquire Averages  16 | :ACQUIRE:AVERAGES:16
2 | Averages=1.6 | has no value "1.6" | -
2 | CH1_Offset=200div | has no value "200div" | -
2 | CH2_Probe=10X CH2_Volt/Div=2mV | Before it were set: CH2 Probe=10X | :CHANNEL2:PROBE:10X
0 | Intensity=7 | Acquire Intensity  7% | :ACQUIRE:INTENSITY:7%
0 | Delay=500us | Time Base Delay  0.5ms | :TimeBase:TRIGGER DELAY:0.5ms
0 | TX5000\Trigger\Level=1.2div | Trigger Level  1.20div | :TRIGGER:LEVEL:1.20div
0 | RunStop=stop | Running Control Run|Stop  STOP | :STOP
2 | CH1_Probe=1.0X | Choose 1X, 10X | -
2 | CH1_Volt/Div=2mV | Choose 20.0mV | -
2 | CH1_Offset=12.01 | Choose 12.00div, 11.96div, 11.92div, ..., -11.92div, -11.96div, -12.00div | -
4 | Pulse_width=900s | refused Trigger Pulse width=900s | :TRIGGER:PULSE WIDTH:900.0s
)")) {
    EXPECT_EQ(std::to_string(Number(bench.Run("set " + row[1]))), row[0]) << row[1] << bench.err;
    EXPECT_NE((bench.out + bench.err).find(row[2]), std::string::npos)
        << row[1] << ": " << bench.out << bench.err;
    EXPECT_TRUE(row[3].empty() || bench.wire.find(row[3] + "\r") != std::string::npos)
        << row[1] << ": " << bench.wire;
  }
}

TEST(Calls, ASampleIsInVoltsAndSecondsOnTheScaleOfTheScreen) {
  WaveRecord record;
  EXPECT_EQ(WaveColumns(record).size(), 0u) << "no data";
  record.HasData = record.IsYT = true;
  record.Channels = 3;
  record.Count = 600;
  record.CH1Range = "500 mV";
  record.CH1Offset = "2.00div";
  record.CH2Range = "1.00V";
  record.CH2Offset = "0.00div";
  record.TimeRange = "100.0us";
  record.TriggerDelay = "50.00us";
  record.CH1Data.Store(300, 49);   // two divisions above the offset's row
  record.CH2Data.Store(600, 124);  // one below it
  const auto described = [&record] {
    std::string text;
    for (const SampleColumn& column : WaveColumns(record)) {
      text += column.name + " " + NumberText(column.values[299]) + " " +
              NumberText(column.values.back()) + " " + std::to_string(column.values.size()) + "; ";
    }
    return text;
  };
  EXPECT_EQ(described(), "Time 0.00005 0.00065 600; CH1 0 0.98 600; CH2 3.96 -1 600; ");
  record.Envelope = true;
  record.Channels = 1;
  EXPECT_EQ(described(), "Time 0.00005 0.00065 600; CH1 max 0 0.98 600; CH1 min 0.98 0.98 600; ");
  record.IsYT = false;
  EXPECT_EQ(described(), "CH1 0 0.98 600; CH2 3.96 -1 600; ");
  for (std::string WaveRecord::*text : {&WaveRecord::CH1Range, &WaveRecord::CH1Offset}) {
    WaveRecord odd = record;
    odd.*text = "}qt5";
    EXPECT_TRUE(std::isnan(WaveColumns(odd)[0].values[0])) << "no scale";
  }
  record.Count = 100000;
  EXPECT_EQ(WaveColumns(record)[0].values.size(), 17000u) << "a count of a bad file";
}

TEST(Calls, ResultsAreWrittenInTheFormOfTheFile) {
  const FileFolder files;
  CallBench bench;
  const std::string name = files.folder + "/wave";
  for (const auto& row : Rows(R"(
wave CH1 | .ORM | TX5000 Data Sheet || wave both | .CSV | Time_s,CH1_V,CH2_V || wave ch2 | .png | 196875/525
wave ch1 --zoom 100% | .bmp | BM || wave ch1 | .json | "Time_s":[- || samples ch1 | .txt | NO.
samples ch1 | .csv | NO.,Voltage_V,Time_s || measure ch1 | .xls | Duty+ || measure ch1 | .json | "Vpp_V":3
)")) {
    const std::string file = files.folder + "/new" + row[1];
    EXPECT_EQ(bench.Run(row[0] + " " + file), ExitCode::Success) << row[0] << bench.err;
    EXPECT_NE(FileFolder::Bytes(file).find(row[2]), std::string::npos) << file;
    EXPECT_EQ(bench.out, "");
    FileFolder::Put(file, "old");
    EXPECT_EQ(bench.Run(row[0] + " " + file), ExitCode::File);
    EXPECT_EQ(FileFolder::Bytes(file) + bench.wire, "old");
    EXPECT_EQ(bench.Run(row[0] + " " + file + " --overwrite"), ExitCode::Success);
    EXPECT_NE(FileFolder::Bytes(file), "old");
    std::filesystem::rename(file, files.folder + "/last" + row[1]);
  }
  EXPECT_EQ(bench.Run("wave ch1 " + files.folder + "/no/x.csv"), ExitCode::File);
  EXPECT_NE(bench.err.find("No such file"), std::string::npos);
  // A sheet that was read is converted to the same numbers.
  EXPECT_EQ(bench.Run("convert " + files.folder + "/last.ORM --csv"), ExitCode::Success);
  EXPECT_EQ(Split(bench.out, '\n').size(), 602u);
  bench.printable = false;
  EXPECT_EQ(bench.Run("identify"), ExitCode::File);
}

TEST(Calls, ASheetsItemsAreFoundByNameAndJudgeByTheirLimits) {
  const FileFolder files;
  const std::string orm = files.folder + "/a:b.orm";
  auto sheet = std::make_unique<DataSheet>();
  sheet->WaveCount = 1;
  sheet->Waves[0].Name = "Wave \xB5";
  sheet->MeasureCount = 3;
  for (const int i : {0, 1, 2}) {
    MeasureRecord& item = sheet->Measures[static_cast<std::size_t>(i)];
    item.Name = Split("Wide,Narrow,Off", ',')[static_cast<std::size_t>(i)];
    item.HasData = true;
    item.Values[0].Enabled = i < 2;
    item.Values[0].Over = i == 0 ? 9.0 : 0.5;
    item.Values[0].Under = 0.1;
  }
  FileFolder::Put(orm, DataSheetText(*sheet));
  CallBench bench;
  for (const auto& row : Rows(R"(
2 | measure ch1 --limits FILE | Name one of Wide, Narrow, Off
2 | measure ch1 --limits FILE:None | no item "None". It has Wide, Narrow, Off
2 | measure ch1 --limits FILE:Off | nothing to judge
0 | measure ch1 --limits FILE:Wide | 3.200V  Pass
1 | measure ch1 --limits FILE:Narrow | 3.200V  Fail [Over Limit]
1 | measure ch1 --limits FILE:Narrow --csv | Vpp verdict
0 | convert FILE | [Narrow]
2 | convert FILE --csv | Name one of
2 | convert FILE NEW.csv | Name one of
0 | convert FILE --json --item Narrow | "Vpp_V":null
0 | convert FILE --json | [{"name":"Wave µ"},
)")) {
    const std::string call = std::regex_replace(std::regex_replace(row[1], std::regex("FILE"), orm),
                                                std::regex("NEW"), files.folder + "/new");
    EXPECT_EQ(std::to_string(Number(bench.Run(call))), row[0]) << call << bench.err;
    EXPECT_NE((bench.out + bench.err).find(row[2]), std::string::npos)
        << call << ": " << bench.out << bench.err;
  }
  bench.lies[":MEASURE:Vpp"] = "";
  EXPECT_EQ(bench.Run("measure ch1 --limits " + orm + ":Wide"), ExitCode::NoLink) << "no Fail";
}

TEST(Calls, AFileThatEndsTooEarlyIsRefused) {
  const FileFolder files;
  const std::string cfx = files.folder + "/a.cfx";
  const std::string orm = files.folder + "/a.orm";
  CallBench bench;
  EXPECT_EQ(bench.Run("wave ch1 " + orm), ExitCode::Success);
  const std::string settings = ControlFileText({});
  const std::string sheet = FileFolder::Bytes(orm);
  for (const bool whole : {false, true}) {
    FileFolder::Put(cfx, whole ? settings : settings.substr(0, settings.size() - 9));
    FileFolder::Put(orm, whole ? sheet : sheet.substr(0, sheet.size() * 9 / 10));
    const ExitCode expected = whole ? ExitCode::Success : ExitCode::File;
    EXPECT_EQ(bench.Run("upload " + cfx), expected) << bench.err;
    EXPECT_EQ(bench.wire.empty(), !whole);
    EXPECT_EQ(bench.Run("convert " + orm + " --csv"), expected) << bench.err;
    EXPECT_EQ(bench.out.empty(), !whole);
  }
}

TEST(Calls, AFailingLinkEndsTheCallAndNothingIsWritten) {
  const FileFolder files;
  const std::string file = files.folder + "/x.csv";
  for (const auto& row : Rows(R"(
wave ch1 FILE | :DATA:CHANNEL1 | - || wave ch1 FILE | :DATA:CHANNEL1 | 0x7D 0x7D 
wave ch1 FILE | :TimeBase:RANGE:? | - || wave ch1 FILE | :CHANNEL1:OFFSET:? | }qt5
samples ch1 FILE | :DATA:CHANNEL1 | GARBAGE
 measure ch1 FILE | :MEASURE:Vpp | -
get | :DISPLAY:GRID:? | - || identify | *IDN? | NOBODY,TX-5,1,03.01.15 || download FILE.cfx | :TRIGGER:STATUS:? | -
)")) {
    CallBench bench;
    bench.lies[row[1]] = row[2].empty() ? "" : row[2] + "\n";
    const auto before = bench.clock.Now();
    const std::string call = std::regex_replace(row[0], std::regex("FILE"), file);
    EXPECT_EQ(bench.Run(call), ExitCode::NoLink) << call << bench.err;
    EXPECT_EQ(Split(bench.err, '\n').size(), 2u) << "one message: " << bench.err;
    EXPECT_EQ(bench.out, "");
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_LT(bench.clock.Now() - before, Ms(6000)) << "no further time-out";
    EXPECT_TRUE(row[1] == "*IDN?" || bench.wire.ends_with(":KEY:LOCK:ENABLE\r")) << bench.wire;
  }
  CallBench bench;
  bench.SetPlugged(false);
  EXPECT_EQ(bench.Run("run"), ExitCode::NoLink);
  EXPECT_EQ(bench.err, "oriolemark-cli: RS232 Init: No such device\n");
}

TEST(Calls, AnInterruptEndsAReadingInOrder) {
  const FileFolder files;
  const std::string file = files.folder + "/x.csv";
  for (const int time : {200, 450, 1500}) {
    CallBench bench;
    bench.clock.After(Ms(time), [&bench] { bench.runner.Interrupt(); });
    EXPECT_EQ(bench.RunInterruptibly("measure ch1 " + file), ExitCode::Interrupted);
    EXPECT_TRUE(bench.wire.ends_with(":KEY:LOCK:ENABLE\r")) << bench.wire;
    EXPECT_FALSE(std::filesystem::exists(file));
    const auto sent = [&bench](const char* command) {
      return bench.wire.find(command) != std::string::npos;
    };
    EXPECT_EQ(sent(":STOP\r"), sent(":RUN\r")) << "runs again: " << bench.wire;
  }
}

TEST(Watch, AnHourWithTwentyUnplugsLosesNoLine) {
  CallBench bench;
  bench.clock.SetDeadline(Ms(7200000));
  for (int i = 0; i < 20; ++i) bench.UnplugAt(Ms(5300 + i * 180700), Ms(400 + i * 2500));
  EXPECT_EQ(bench.RunInterruptibly("watch measure ch1 --every 60s --count 61"), ExitCode::Success);
  const std::vector<std::string> lines = Split(bench.out, '\n');
  ASSERT_EQ(lines.size(), 63u) << bench.out;
  EXPECT_TRUE(lines[0].starts_with("time,Vpp_V,"));
  double last = -60;
  for (int i = 1; i <= 61; ++i) {
    const std::vector<std::string> cells = Split(lines[static_cast<std::size_t>(i)], ',');
    ASSERT_EQ(cells.size(), 19u);
    const double time = LeadingNumber(cells[0]);
    // On its minute, or as soon as the line was back.
    EXPECT_GE(time, 60 * (i - 1)) << i;
    EXPECT_LT(time, 60 * (i - 1) + 110) << i;
    EXPECT_GT(time, last);
    last = time;
    EXPECT_NEAR(LeadingNumber(cells[1]), 3.2, 0.1) << i;
  }
  EXPECT_NE(bench.err.find("The link is lost"), std::string::npos);
  EXPECT_NE(bench.err.find("The link is back"), std::string::npos);
  EXPECT_EQ(bench.RunInterruptibly("watch get CH1Offset Grid Delay --every 1s --count 1 --json"),
            ExitCode::Success);
  EXPECT_NE(
      bench.out.find(R"("CH1 Offset_div":2.0,"Display Grid":"FULL","Time Base Delay_s":0.0})"),
      std::string::npos)
      << bench.out;
}

TEST(Watch, AConnectionAndAnItemServeAllLines) {
  CallBench bench;
  EXPECT_EQ(bench.RunInterruptibly("watch samples ch1 --every 2s --count 18 --json"),
            ExitCode::Success);
  EXPECT_EQ(Split(bench.out, '\n').size(), 19u) << "more lines than a sheet has items";
  EXPECT_EQ(Split(bench.wire, '*').size(), 2u) << "one handshake";
}

TEST(Watch, TriesAreFurtherAndFurtherApartAndAnInterruptEndsThem) {
  CallBench bench;
  bench.clock.After(Ms(1500), [&bench] { bench.SetPlugged(false); });
  bench.clock.After(Ms(200000), [&bench] { bench.runner.Interrupt(); });
  EXPECT_EQ(bench.RunInterruptibly("watch get Grid --every 1s --json"), ExitCode::Interrupted);
  EXPECT_EQ(Split(bench.out, '\n').size(), 3u) << bench.out;
  EXPECT_EQ(bench.clock.Now(), Ms(200000));
  std::string pauses;
  const std::regex pause("in (\\d+) s");
  for (std::sregex_iterator at(bench.err.begin(), bench.err.end(), pause), end; at != end; ++at) {
    pauses += (*at)[1].str() + " ";
  }
  EXPECT_EQ(pauses, "1 2 4 8 16 32 60 60 60 ");
}

TEST(Rendering, TextsOfAnyKindBecomeOneCellAndOneLine) {
  const Result result{.values = {{"a", "x,\"y\"\r\n\xE9\x1B[2J"},
                                 {"b", "*****", "V"},
                                 {"c", "", "s", 1e-9 / 3},
                                 {"d", std::string("\0", 1)}}};
  EXPECT_EQ(CsvHead(result), "a,b_V,c_s,d\n");
  EXPECT_EQ(CsvRows(result), "\"x,\"\"y\"\"?\né?[2J\",,0.000000000333333333333333,?\n");
  EXPECT_EQ(JsonOf(result, "t"),
            "{\"time\":\"t\",\"a\":\"x,\\\"y\\\"\\r\\né\\u001b[2J\",\"b_V\":null,"
            "\"c_s\":3.33333333333333e-10,\"d\":\"\\u0000\"}\n");
  EXPECT_EQ(TextOf(result), "a  x,\"y\"?\né?[2J\nb  *****\nc  \nd  ?\n");
  EXPECT_EQ(DidYouMean(std::string(1 << 20, 'x'), {"wave"}), "");
}

}  // namespace
}  // namespace oriolemark
