#include "transfers/WaveReader.h"

#include <algorithm>
#include <array>
#include <limits>

#include "link/StringRES.h"
#include "values/Number.h"
#include "values/StringFunc.h"

namespace oriolemark {
namespace {

constexpr double kSampleLength = 5;  // characters, the blank included
constexpr int kBothChannels = 3;
// Progress in per cent after the first query.
constexpr double kQueriesDone = 5;

// The rows of the instrument's screen as sample bytes.
constexpr int kTopByte = 26;
constexpr int kBottomByte = 225;

struct Block {
  const char* source;   // follows ":DATA"
  const char* channel;  // ":CH1", ":CH2" or empty; follows the source
  SampleArray WaveRecord::*destination;
  Clamp clamp = Clamp::Screen;
};

// The blocks of one way of acquiring, for the channels that are read. Only the X channel of an X-Y
// figure is not limited to the screen.
struct BlockList {
  int channels;
  int count;
  std::array<Block, 4> blocks;
};

constexpr Block kPlain1{kChannel1, "", &WaveRecord::CH1Data};
constexpr Block kPlain2{kChannel2, "", &WaveRecord::CH2Data};
constexpr Block kXAxis{kChannel1, "", &WaveRecord::CH1Data, Clamp::None};
constexpr Block kMax1{kEnvelopeMax, kCH1, &WaveRecord::CH1Data};
constexpr Block kMin1{kEnvelopeMin, kCH1, &WaveRecord::CH1Min};
constexpr Block kMax2{kEnvelopeMax, kCH2, &WaveRecord::CH2Data};
constexpr Block kMin2{kEnvelopeMin, kCH2, &WaveRecord::CH2Min};

constexpr BlockList kXYBlocks{kBothChannels, 2, {kXAxis, kPlain2, {}, {}}};
constexpr std::array<BlockList, 3> kPlainBlocks{{
    {1, 1, {kPlain1, {}, {}, {}}},
    {2, 1, {kPlain2, {}, {}, {}}},
    {kBothChannels, 2, {kPlain1, kPlain2, {}, {}}},
}};
constexpr std::array<BlockList, 3> kEnvelopeBlocks{{
    {1, 2, {kMax1, kMin1, {}, {}}},
    {2, 2, {kMax2, kMin2, {}, {}}},
    {kBothChannels, 4, {kMax1, kMin1, kMax2, kMin2}},
}};

const BlockList& BlocksOf(const WaveRecord& record) {
  if (!record.IsYT) return kXYBlocks;
  const bool envelope = record.Envelope && !record.IsScan;
  return (envelope ? kEnvelopeBlocks : kPlainBlocks)[static_cast<std::size_t>(
      std::clamp(record.Channels, 1, kBothChannels) - 1)];
}

void StoreShort(const std::string& reply, std::int16_t& field) {
  const auto number = WholeNumberInReply(reply, std::numeric_limits<std::int16_t>::min(),
                                         std::numeric_limits<std::int16_t>::max());
  if (number) field = static_cast<std::int16_t>(*number);
}

void StoreSize(const std::string& reply, std::int32_t& field) {
  const auto number = WholeNumberInReply(reply, std::numeric_limits<std::int32_t>::min(),
                                         std::numeric_limits<std::int32_t>::max());
  if (number) field = *number;
}

}  // namespace

std::string WaveReader::Ask(std::string_view path) {
  return context_.scope.AskScope(std::string(path) + kQuery);
}

void WaveReader::ShowProgress(double percent) {
  context_.progress.bar.SetValue(percent);
  context_.progress.bar.Refresh();
  context_.waiting.DoEvents();
}

// Looked up again at each use. An assignment runs its right side first: the reply has come before
// the record is looked up.
WaveRecord& WaveReader::Record() {
  const int slot = context_.scratch.TransferWaveSlot;
  return slot == kNoSlot ? dropped_ : context_.sheet.Waves[static_cast<std::size_t>(slot)];
}

void WaveReader::ReadWaveform(std::string channel) {
  const std::string timeBase = kTimeBase;
  const std::string data = kData;
  StoreSize(Ask(data + kWinMemSize), context_.scratch.TransferSize);
  ShowProgress(kQueriesDone);
  Record().Count = context_.scratch.TransferSize;
  Record().IsYT = Ask(timeBase + kFormat) == "Y-T";
  if (!Record().IsYT) channel = "CH1CH2";
  const bool scan = Ask(timeBase + kScan) == "ON";
  if (scan) {
    const std::string start = Ask(data + kRollingStartPos);
    StoreShort(start, Record().RollingStartPos);
    const std::string width = Ask(data + kRollingEraseWidth);
    StoreShort(width, Record().RollingEraseWidth);
  }
  Record().IsScan = scan;
  // A rolling record keeps the envelope flag of the record before.
  if (!scan) Record().Envelope = Ask(std::string(kAcquire) + kAcquisition) == "ENVELOPE";
  ReadChannelFields(channel);
  Record().TimeRange = Ask(timeBase + kRange);
  Record().TriggerDelay = Ask(timeBase + kTriggerDelay);
  Record().Date = context_.today();
  ReadBlocks();
}

void WaveReader::ReadChannelFields(const std::string& channel) {
  const std::string ch1 = kChannel1;
  const std::string ch2 = kChannel2;
  if (channel == "CH1") {
    Record().Channels = 1;
    Record().CH1Range = Ask(ch1 + kRange);
    Record().CH1Offset = Ask(ch1 + kOffset);
  } else if (channel == "CH2") {
    Record().Channels = 2;
    Record().CH2Range = Ask(ch2 + kRange);
    Record().CH2Offset = Ask(ch2 + kOffset);
  } else {
    Record().Channels = kBothChannels;
    Record().CH1Range = Ask(ch1 + kRange);
    Record().CH2Range = Ask(ch2 + kRange);
    Record().CH1Offset = Ask(ch1 + kOffset);
    Record().CH2Offset = Ask(ch2 + kOffset);
  }
}

void WaveReader::ReadBlocks() {
  const BlockList& list = BlocksOf(Record());
  const double total = static_cast<double>(list.count) * Record().Count;
  for (int i = 0; i < list.count; ++i) {
    // Nobody waits for the samples of an item that has been removed.
    if (context_.scratch.TransferWaveSlot == kNoSlot) return;
    const Block& block = list.blocks[static_cast<std::size_t>(i)];
    context_.scope.SendToScope(std::string(kData) + block.source + block.channel);
    ReadBlock(block.destination, 100.0 * i / list.count, total, Record().Count, block.clamp);
  }
}

void WaveReader::ReadBlock(SampleArray WaveRecord::*destination, double base, double total,
                           int count, Clamp clamp) {
  ReadTokens(base, total, count, context_.scope.Link().traits.firstSample, KeepTokens::No);
  SampleArray& samples = context_.scratch.TransferSamples;
  const int last = std::clamp(count, 0, kLastSample);
  for (std::int32_t& row : samples.RowsToFill().subspan(1, static_cast<std::size_t>(last))) {
    row = (clamp == Clamp::None ? row : std::clamp(row, kTopByte, kBottomByte)) - kTopByte;
  }
  Record().*destination = samples;
}

void WaveReader::ReadChannelData(const std::string& channel) {
  TransferScratch& scratch = context_.scratch;
  StoreSize(Ask(std::string(kData) + kWinMemSize), scratch.TransferSize);
  ShowProgress(kQueriesDone);
  const std::string root = channel == "CH2" ? kChannel2 : kChannel1;
  const std::string rangeText = Ask(root + kRange);
  scratch.TransferVoltRange = ConvertStrToVolt(rangeText).value;
  scratch.TransferVoltOffset = LeadingNumber(Ask(root + kOffset)) * scratch.TransferVoltRange;
  const std::string timeText = Ask(std::string(kTimeBase) + kRange);
  scratch.TransferTimeRange = ConvertStrToTime(timeText).value;
  scratch.TransferTriggerDelay =
      ConvertStrToTime(Ask(std::string(kTimeBase) + kTriggerDelay)).value;
  scratch.TransferText = channel + " " + rangeText + "  " + timeText + " " +
                         " Size=" + std::to_string(scratch.TransferSize) +
                         " [Date:" + context_.today() + "]";
  // Nobody waits for the samples of an item that has been removed.
  if (scratch.TransferDataSlot == kNoSlot) return;
  // Sent directly, because the read of a table does not touch CommBusy.
  context_.scope.Link().Send(std::string(kData) + root);
  ReadTokens(0, scratch.TransferSize, scratch.TransferSize, 1, KeepTokens::Yes);
}

void WaveReader::ReadTokens(double base, double total, int count, int firstIndex, KeepTokens keep) {
  const std::string text = ReadReply(base, total);
  const auto plain = static_cast<std::int64_t>(Split(text, firstIndex, keep));
  if (text.empty() || plain < std::min(count, kLastSample)) context_.scope.onIncomplete();
}

std::string WaveReader::ReadReply(double base, double total) {
  Transport& link = context_.scope.Link();
  const bool byTimer = link.traits.progressByTimer;
  context_.progress.timer2.SetEnabled(byTimer);
  const std::string text = link.ReadBlock([&](std::size_t received) {
    const double percent = base + 100.0 * static_cast<double>(received) / (kSampleLength * total);
    if (byTimer) {
      context_.progress.Progress = percent;
    } else {
      ShowProgress(percent);
    }
  });
  context_.progress.timer2.SetEnabled(false);
  return text;
}

// Reads all tokens in one pass. A token ends with a blank. Text behind the last blank is not a
// token; in its place the last token is stored once more.
std::size_t WaveReader::Split(std::string_view text, int firstIndex, KeepTokens keep) {
  std::size_t plainTokens = 0;
  TransferScratch& scratch = context_.scratch;
  const std::span<std::int32_t> rows = scratch.TransferSamples.RowsToFill();
  if (keep == KeepTokens::Yes) scratch.TransferTokens.resize(rows.size());
  std::string_view token;
  for (std::size_t i = static_cast<std::size_t>(firstIndex); i < rows.size(); ++i) {
    const std::size_t plain = ConvertPlainTokens(text, rows.subspan(i));
    for (std::size_t k = 0; k < plain && keep == KeepTokens::Yes; ++k) {
      scratch.TransferTokens[i + k] = text.substr(k * kPlainToken, kPlainToken - 1);
    }
    if (plain > 0) token = text.substr((plain - 1) * kPlainToken, kPlainToken - 1);
    i += plain;
    plainTokens += plain;
    text.remove_prefix(plain * kPlainToken);
    if (i == rows.size()) break;
    const std::size_t blank = text.find(' ');
    // A text that begins with a blank has an empty first token.
    if (blank != std::string_view::npos) {
      token = text.substr(0, blank);
      text.remove_prefix(blank + 1);
    }
    if (keep == KeepTokens::Yes) scratch.TransferTokens[i] = token.substr(0, kLongestToken);
    rows[i] = ConvertHexByteToNum(token);
    if (blank == std::string_view::npos) break;
  }
  return plainTokens;
}

}  // namespace oriolemark
