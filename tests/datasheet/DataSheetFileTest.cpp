#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <csignal>
#include <random>
#include <span>

#include "datasheet/records/DataSheetFile.h"
#include "support/FileFolder.h"
#include "support/RecordingPrompts.h"

namespace oriolemark {
namespace {

const char* const kInvalid = "Data Sheet File Format is Invaild !";
const std::string kSignature = "\"Tavik Technologies TX5000 Data Sheet\"\r\n";
const std::string kEmptySheet = kSignature + "\"\"\r\n0\r\n0\r\n0\r\n";

bool NoSync(std::FILE*) {
  return true;
}

std::vector<std::string> Lines(const std::string& bytes) {
  return Split(bytes, '\n');
}
std::string Joined(const std::vector<std::string>& lines) {
  std::string bytes;
  for (const std::string& line : lines) bytes += (&line == &lines[0] ? "" : "\n") + line;
  return bytes;
}

// Random values in every saved field. A text has no quotes and no line ends.
struct Dice {
  int Below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }
  void operator()(std::string& text) {
    text.resize(static_cast<std::size_t>(Below(12)));
    for (char& c : text) c = static_cast<char>(Below(256));
    std::erase_if(text, [](char c) { return c == '"' || c == '\r' || c == '\n'; });
  }
  void operator()(bool& flag) { flag = Below(2) == 1; }
  void operator()(std::int16_t& number) { number = static_cast<std::int16_t>(random()); }
  void operator()(std::int32_t& number) {
    number = static_cast<std::int32_t>(random()) >> Below(32);
  }
  void operator()(double& number) {
    number = std::ldexp(static_cast<double>(static_cast<std::int32_t>(random())), Below(300) - 150);
  }
  void operator()(SampleArray& samples) {
    for (int i = 0, row = 0; i <= 40; ++i) (*this)(row), samples.Store(i, row);
  }
  void All(auto&... values) { ((*this)(values), ...); }
  void operator()(WaveRecord& w) {
    All(w.Name, w.HasData, w.BestFitOn, w.GridOn, w.ColorOn, w.IsYT, w.IsScan, w.RollingStartPos,
        w.RollingEraseWidth, w.Envelope, w.CH1Range, w.CH1Offset, w.CH2Range, w.CH2Offset,
        w.TimeRange, w.TriggerDelay, w.CH1Data, w.CH1Min, w.CH2Data, w.CH2Min);
    w.Count = Below(42) - 1;
    w.Channels = Below(5);
  }
  void operator()(MeasureRecord& m) {
    All(m.Name, m.HasData, m.Title);
    for (MeasureValue& v : m.Values) All(v.Text, v.Enabled, v.Over, v.Under);
  }
  void operator()(DataRecord& d) {
    All(d.Name, d.HasData, d.Title, d.VoltRange, d.VoltOffset, d.TimeRange, d.TriggerDelay);
    d.Count = Below(42) - 1;
    d.Samples.resize(static_cast<std::size_t>(Below(2) * 100));
    for (std::string& token : d.Samples) (*this)(token);
  }
  void operator()(DataSheet& sheet) {
    (*this)(sheet.Title);
    for (int* count : {&sheet.WaveCount, &sheet.MeasureCount, &sheet.DataCount}) *count = Below(19);
    for (int i = 0; i < kSheetSlots; ++i) All(sheet.Waves[i], sheet.Measures[i], sheet.Datas[i]);
  }

  std::mt19937 random{1};
};

struct DataSheetFile : FileFolder, ::testing::Test {
  // Reads these bytes over the sheet and returns what it would save.
  std::string Read(const std::string& bytes) {
    Put(path, bytes);
    ReadDataSheet(path, sheet, scratch, prompts);
    return DataSheetText(sheet);
  }

  VirtualClock clock;
  RecordingPrompts prompts{clock};
  TransferScratch scratch;
  DataSheet sheet;
  std::string path = folder + "/a.orm";
  const std::string example = Bytes(ORIOLEMARK_SOURCE_DIR "/docs/formats/example.orm");
  Dice dice;
};

TEST_F(DataSheetFile, OfTheManualHoldsEveryFieldInItsPlaceAndIsWrittenAgainByteForByte) {
  for (const auto trace : {&WaveRecord::CH1Data, &WaveRecord::CH2Data}) {
    (sheet.Waves[0].*trace).Store(600, 7);
  }
  sheet.Waves[0].Date = sheet.Measures[0].Values[0].Verdict = "of another item";
  EXPECT_EQ(Read(example), example);
  EXPECT_EQ(sheet.Waves[0].Date + sheet.Measures[0].Values[0].Verdict, "");
  EXPECT_EQ(sheet.Waves[0].CH1Data[600], 0);
  EXPECT_EQ(sheet.Waves[0].CH2Data[600], 7) << "a channel that the file does not hold";
  std::string held;
  for (const WaveRecord& w : std::span(sheet.Waves).first(9)) {
    held += Bits(w.HasData, w.BestFitOn, w.GridOn, w.ColorOn, w.IsYT, w.IsScan, w.Envelope);
    for (const int number : {w.Count, w.Channels, w.CH1Data[1], w.CH1Min[1], w.CH2Data[1],
                             w.CH2Min[1], w.RollingStartPos + w.RollingEraseWidth}) {
      held += " " + std::to_string(number);
    }
    held += "\n";
  }
  EXPECT_EQ(held,
            "1100100 2 1 101 0 0 0 0\n1010100 1 2 0 0 51 0 0\n1001100 1 3 101 0 51 0 0\n"
            "1110101 1 1 101 91 0 0 0\n1011101 1 2 0 0 51 41 0\n1101101 1 3 101 91 51 41 0\n"
            "1111111 1 1 101 0 0 0 -225\n1111001 1 1 101 0 51 0 0\n0111100 600 3 0 0 0 0 0\n");
  const WaveRecord& w = sheet.Waves[6];
  const MeasureRecord& m = sheet.Measures[0];
  const DataRecord& d = sheet.Datas[0];
  std::string texts;
  for (const auto& text : {sheet.Title, w.Name, w.CH1Range, w.CH1Offset, w.CH2Range, w.CH2Offset,
                           w.TimeRange, w.TriggerDelay, m.Title, m.Values[17].Text, d.Samples[2]}) {
    texts += text + ";";
  }
  EXPECT_EQ(texts,
            "Amplifier, first board;Rolling;1.00V;0.40div;500mV;-1.20div;500.0us;0.0000s;"
            "CH1 1.00V  500.0us [Date:11/21/26];50.0%;0x7E;");
  EXPECT_EQ((std::vector{m.Values[0].Over, m.Values[17].Over, m.Values[17].Under, d.VoltRange,
                         d.VoltOffset, d.TimeRange, d.TriggerDelay}),
            (std::vector<double>{2.5, 1e16, -5e-8, 1, 0.4, 0.0005, 0}));
  EXPECT_EQ(Bits(m.HasData, m.Values[0].Enabled, m.Values[1].Enabled, d.HasData), "1101");
}

TEST_F(DataSheetFile, HoldsAnySheet) {
  constexpr int kSheets = 50;
  for (int i = 0; i < kSheets; ++i) {
    auto saved = std::make_unique<DataSheet>();
    dice(*saved);
    EXPECT_TRUE(WriteDataSheet(path, *saved, prompts, NoSync));
    ASSERT_TRUE(Read(Bytes(path)) == DataSheetText(*saved)) << "sheet " << i;
  }
  EXPECT_TRUE(prompts.shown.empty());
}

TEST_F(DataSheetFile, CutAtAnyByteKeepsOldFieldsAndZeroesSamples) {
  const auto make = [&] {
    dice(sheet);
    sheet.WaveCount = sheet.MeasureCount = sheet.DataCount = 1;
    const auto [wave, measure, data] = std::tie(sheet.Waves[0], sheet.Measures[0], sheet.Datas[0]);
    wave.HasData = measure.HasData = data.HasData = wave.IsYT = wave.Envelope = true;
    wave.IsScan = false;
    wave.Count = data.Count = 2;
    wave.Channels = 3;
    data.Samples.assign(3, sheet.Title + "token");
    return DataSheetText(sheet);
  };
  const std::string old = make(), whole = make();
  constexpr std::size_t kStep = 3;
  const auto oldLines = Lines(old), lines = Lines(whole);
  for (std::size_t length = 38; length <= whole.size(); length += kStep) {
    Read(old);
    const std::string part = whole.substr(0, length);
    const auto now = Lines(Read(part));
    ASSERT_EQ(now.size(), lines.size()) << length;
    const std::size_t held = Lines(part).size() - 1;
    for (std::size_t i = 0; i < lines.size(); ++i) {
      const bool isSample = i >= 23 && i < 35;
      if (i == held && !part.ends_with('\n')) continue;  // the line that is cut
      ASSERT_EQ(now[i], i < held ? lines[i] : isSample ? "0\r" : oldLines[i]) << length;
    }
    ASSERT_TRUE(prompts.shown.empty()) << length;
  }
}

TEST_F(DataSheetFile, OfBadBytesLosesOnlyTheFieldThatHoldsThem) {
  // A line of the example, what it holds now, and how that is saved: "same" as it is read, "old" as
  // before. "~" is a CR, "^" a NUL.
  const auto rows = Rows(R"(
1 | a b | "a b" || 1 | "a"b" | "a" || 1 | "ab | "ab" || 1 | "a~b" | same || 1 | a"b | "a"b"
1 | - | "" || 1 | "a^" | same || 182 | #false# | #FALSE# || 182 | 0.0 | #FALSE#
182 | FALSE | old || 182 | 0.5 | #TRUE# || 182 | - | old || 185 | 1e3 | 1000 || 185 | 2.5 | 2
185 |  +3.5  | 4 || 185 | abc | old || 185 | 2147483648 | old || 185 | 2147483647 | same
185 | -5 | same || 185 | &H10 | old || 185 | 1e999 | old || 185 | 12 3 | old || 185 | 12~ | old
185 | "17"x | 17 || 188 | 32767.5 | old || 188 | -32768 | same || 291 | 1E3 | 1000
291 | 1e-7 | 0.0000001 || 291 | -.5 | -0.5 || 291 | 9e15 | 9000000000000000
291 | 1e-8 | 1E-08 || 291 | nan | old
)");
  const auto lines = Lines(example);
  for (const auto& row : rows) {
    const auto place = static_cast<std::size_t>(std::stoi(row[0]));
    const std::string held = Filled(Filled(row[1], '~', "\r"), '^', std::string(1, '\0'));
    const std::string saved = row[2] == "same" ? held : row[2];
    Read(example);
    auto changed = lines;
    changed[place] = held + "\r";
    EXPECT_EQ(Lines(Read(Joined(changed)))[place], saved == "old" ? lines[place] : saved + "\r")
        << held;
  }
}

TEST_F(DataSheetFile, IsKnownByItsSignatureAlone) {
  const std::string quoted = example.substr(0, 38), rest = example.substr(38);
  const std::string lines = Filled(example, '\r', "");
  for (const auto& [bytes, valid] : {std::pair(lines, true),
                                     {Filled(lines, '\n', ","), true},
                                     {example + "more", true},
                                     {Filled(quoted, '"', "") + rest, true},
                                     {quoted + "x" + rest, true},
                                     {Filled(quoted, 'T', "t") + rest, false},
                                     {example.substr(1), false},
                                     {"", false},
                                     {" " + example, false},
                                     {Filled(Filled(example, '"', ""), '\n', ""), false}}) {
    Read(kEmptySheet);
    EXPECT_EQ(Read(bytes), valid ? example : kEmptySheet) << bytes.substr(0, 60);
    EXPECT_EQ(std::exchange(prompts.shown, {}), std::vector<Message>(!valid, Critical(kInvalid)));
  }
}

TEST_F(DataSheetFile, OfAnyCountsIsReadInStepAndFillsItsSlotsOnly) {
  const auto many = [](int times, const std::string& piece) {
    std::string pieces;
    while (times-- > 0) pieces += piece;
    return pieces;
  };
  const std::size_t measures = example.find("\"Measure0\""), datas = example.find("\"Data0\"");
  const std::size_t header = example.find("\"Plain\"");
  const std::string wave = example.substr(header, example.find("\"Rolling\"") - header),
                    measure = example.substr(measures, datas - measures),
                    data = example.substr(datas);
  const auto file = [&](const std::string& counts, int waves, int others) {
    return kSignature + "\"\"\r\n" + counts + many(waves, wave) + many(others, measure) +
           many(others, data);
  };
  // The pieces hold six, two and two items.
  EXPECT_EQ(Read(file("24\r\n22\r\n22\r\n", 4, 11)), file("18\r\n18\r\n18\r\n", 3, 9));
  sheet.Waves[0].HasData = true;
  Read(file("2147483647\r\n-1\r\n2147483648\r\n", 0, 0));
  EXPECT_EQ(Bits(sheet.WaveCount == 18, sheet.MeasureCount == 0, sheet.DataCount == 18), "111");
  EXPECT_EQ(sheet.Waves[0].CH1Data[1], 0) << "it still says that it has data";

  for (const auto& [count, rows] :
       {std::pair(-2147483647, 0), {0, 1}, {17000, 17001}, {17001, 17001}, {2147483647, 17001}}) {
    Read(example);
    sheet.Waves[4].Count = sheet.Waves[7].Count = sheet.Datas[0].Count = count;
    sheet.Waves[4].CH2Min.Store(kLastSample, -300);
    const std::string text = DataSheetText(sheet);
    EXPECT_EQ(std::ranges::count(text, '\n'), 295 - 2 * 4 - 3 + 5 * rows) << count;
    EXPECT_TRUE(Read(text) == text) << count;
  }
}

TEST_F(DataSheetFile, ThatCannotBeReadOrWrittenIsTold) {
  const std::string huge = folder + "/huge", absent = folder + "/none/a.orm";
  Put(huge, example);
  std::filesystem::resize_file(huge, (std::uintmax_t{256} << 20) + 1);
  const auto critical = [](const char* text) {
    return Message{.systemText = text, .icon = MessageIcon::Critical};
  };
  for (const auto& [file, told] : {std::pair(folder, "Is a directory"),
                                   {absent, "No such file or directory"},
                                   {huge, "File too large"}}) {
    ReadDataSheet(file, sheet, scratch, prompts);
    EXPECT_EQ(std::exchange(prompts.shown, {}), (std::vector{critical(told), Critical(kInvalid)}));
    const bool writes = file == huge;
    EXPECT_EQ(WriteDataSheet(file, sheet, prompts, NoSync), writes);
    EXPECT_EQ(std::exchange(prompts.shown, {}), std::vector<Message>(!writes, critical(told)));
  }
}

TEST_F(DataSheetFile, IsTheOldOrTheNewOneWhenTheProgramIsKilledWhileSaving) {
  constexpr std::size_t kKills = 5;
  Read(example);
  const std::string changed = (sheet.Title = "changed", DataSheetText(sheet));
  for (std::size_t kill = 0; kill <= kKills; ++kill) {
    Put(path, example);
    const rlim_t most = kill * changed.size() / kKills;
    const pid_t child = fork();
    if (child == 0) {
      // The system kills the program at the byte that is one too many.
      std::signal(SIGXFSZ, [](int) { std::raise(SIGKILL); });
      const rlimit limit{most, most};
      setrlimit(RLIMIT_FSIZE, &limit);
      _exit(WriteDataSheet(path, sheet, prompts, NoSync) ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(WIFSIGNALED(status), kill < kKills);
    EXPECT_EQ(Bytes(path), kill < kKills ? example : changed) << most;
  }
}

}  // namespace
}  // namespace oriolemark
