#include "waveview/WaveDescription.h"

#include <initializer_list>

#include "waveview/DrawCursors.h"
#include "waveview/DrawTraces.h"

namespace oriolemark {
namespace {

// Makes a sentence of the parts that are not empty. Empty if all are.
std::string Sentence(const std::string& start, std::initializer_list<std::string> parts) {
  std::string sentence;
  for (const std::string& part : parts) {
    if (!part.empty()) sentence += (sentence.empty() ? start : ", ") + part;
  }
  return sentence.empty() ? "" : " " + sentence + ".";
}

std::string Worded(const std::string& before, const std::string& value, const std::string& after) {
  return value.empty() ? "" : before + value + after;
}

}  // namespace

std::string DescribeWave(const WaveRecord& record, const WaveCursors& cursors, double zoom) {
  // The slot may hold the fields of an item that has gone.
  if (!record.HasData) return "No waveform.";
  const Readouts readouts = MakeReadouts(record, cursors, zoom);
  const bool first = ShowsChannel(record, 1) || !record.IsYT;
  const bool second = ShowsChannel(record, 2) || !record.IsYT;
  std::string text = !record.IsYT    ? "X-Y figure."
                     : record.IsScan ? "Rolling waveform."
                                     : "Waveform.";
  text += Sentence("", {Worded("CH1 ", first ? record.CH1Range : "", " per division"),
                        Worded("CH2 ", second ? record.CH2Range : "", " per division")});
  if (record.IsYT) {
    text += Sentence("", {Worded("Time ", record.TimeRange, " per division"),
                          Worded("delay ", record.TriggerDelay, "")});
  }
  if (cursors.CursorXOn) text += Sentence("X cursors apart: ", {readouts.time, readouts.frequency});
  if (cursors.CursorYOn) {
    text += Sentence("Y cursors apart: ",
                     {Worded("CH1 ", ShowsChannel(record, 1) ? readouts.ch1 : "", ""),
                      Worded("CH2 ", ShowsChannel(record, 2) ? readouts.ch2 : "", "")});
  }
  return text;
}

}  // namespace oriolemark
