#include <gtest/gtest.h>

#include <random>
#include <set>
#include <span>

#include "datasheet/records/DataSheetFile.h"
#include "support/FileFolder.h"
#include "support/RecordingPrompts.h"

namespace oriolemark {
namespace {

const char* const kInvalid = "Data Sheet File Format is Invaild !";
const std::string kSignature = "\"Tavik Technologies TX5000 Data Sheet\"\r\n";
const std::string kEmptySheet = kSignature + "\"\"\r\n0\r\n0\r\n0\r\n";

std::vector<std::string> Lines(const std::string& bytes) {
  return Split(bytes, '\n');
}
std::string Joined(const std::vector<std::string>& lines) {
  std::string bytes;
  for (const std::string& line : lines) bytes += (&line == &lines[0] ? "" : "\n") + line;
  return bytes;
}

struct DataSheetFile : FileFolder, ::testing::Test {
  // Reads these bytes over the sheet and returns what it would save.
  std::string Read(const std::string& bytes) {
    Put(path, bytes);
    ReadDataSheet(path, sheet, scratch, prompts);
    return DataSheetText(sheet);
  }
  // The lines of a sheet with one full item of each kind. Random values are in all that do not say
  // which lines follow; a text has no quotes and no line ends.
  std::vector<std::string> AnySheet() {
    Read(example);
    sheet.Waves[0] = sheet.Waves[5];  // an envelope of both channels
    sheet.WaveCount = sheet.MeasureCount = sheet.DataCount = 1;
    auto lines = Lines(DataSheetText(sheet));
    const std::set<std::size_t> shape{0, 2, 3, 4, 6, 10, 11, 12, 15, 16, 32, 107, 109};
    for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
      if (shape.contains(i)) continue;
      std::string value = std::to_string(static_cast<std::int16_t>(random()) >> random() % 16);
      if (lines[i][0] == '#') value = random() % 2 == 1 ? "#TRUE#" : "#FALSE#";
      if (lines[i][0] == '"') {
        value.resize(random() % 12);
        for (char& c : value) c = static_cast<char>(random());
        std::erase_if(value, [](char c) { return c == '"' || c == '\r' || c == '\n'; });
        value = '"' + value + '"';
      }
      lines[i] = value + '\r';
    }
    return lines;
  }

  VirtualClock clock;
  RecordingPrompts prompts{clock};
  TransferScratch scratch;
  DataSheet sheet;
  std::string path = folder + "/a.orm";
  const std::string example = Bytes(ORIOLEMARK_SOURCE_DIR "/docs/formats/example.orm");
  std::mt19937 random{1};
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

TEST_F(DataSheetFile, WholeOrCutAtAnyByteKeepsOldFieldsAndZeroesSamples) {
  const auto oldLines = AnySheet(), lines = AnySheet();
  const std::string whole = Joined(lines);
  for (std::size_t length = whole.size(); length >= 38; length -= 3) {
    Read(Joined(oldLines));
    const std::string part = whole.substr(0, length);
    const auto now = Lines(Read(part));
    ASSERT_EQ(now.size(), lines.size()) << length;
    const std::size_t held = Lines(part).size() - 1;
    for (std::size_t i = 0; i < lines.size(); ++i) {
      const bool isSample = i >= 23 && i < 31;
      if (i == held && !part.ends_with('\n')) continue;  // the line that is cut
      ASSERT_EQ(now[i], i < held ? lines[i] : isSample ? "0\r" : oldLines[i]) << length;
    }
    ASSERT_TRUE(prompts.shown.empty()) << length;
  }
}

TEST_F(DataSheetFile, OfBadBytesLosesOnlyTheFieldThatHoldsThem) {
  // A line of the example, what it holds now, and how that is saved: "same" as it is read, "old" as
  // before. "~" is a CR, "^" a NUL.
  const auto lines = Lines(example);
  for (const auto& row : Rows(R"(
1 | a b | "a b" || 1 | "a"b" | "a" || 1 | "ab | "ab" || 1 | "a~b" | same || 1 | a"b | "a"b"
1 | - | "" || 1 | "a^" | same || 182 | #false# | #FALSE# || 182 | 0.0 | #FALSE#
182 | FALSE | old || 182 | 0.5 | #TRUE# || 182 | - | old || 185 | 1e3 | 1000 || 185 | 2.5 | 2
185 |  +3.5  | 4 || 185 | abc | old || 185 | 2147483648 | old || 185 | 2147483647 | same
185 | -5 | same || 185 | &H10 | old || 185 | 1e999 | old || 185 | 12 3 | old || 185 | 12~ | old
185 | "17"x | 17 || 188 | 32767.5 | old || 188 | -32768 | same || 291 | 1E3 | 1000
291 | 1e-7 | 0.0000001 || 291 | -.5 | -0.5 || 291 | 9e15 | 9000000000000000
291 | 1e-8 | 1E-08 || 291 | nan | old || 291 | -1234.5678901234567 | same
)")) {
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

TEST_F(DataSheetFile, ThatCannotBeReadIsTold) {
  Put(path, example);
  std::filesystem::resize_file(path, (std::uintmax_t{256} << 20) + 1);
  for (const auto& [file, told] : {std::pair(folder, "Is a directory"), {path, "File too large"}}) {
    ReadDataSheet(file, sheet, scratch, prompts);
    const Message reason{.systemText = told, .icon = MessageIcon::Critical};
    EXPECT_EQ(std::exchange(prompts.shown, {}), (std::vector{reason, Critical(kInvalid)}));
  }
}

}  // namespace
}  // namespace oriolemark
