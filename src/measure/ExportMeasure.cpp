#include "measure/ExportMeasure.h"

#include "measure/Quantities.h"
#include "output/TextTable.h"

namespace oriolemark {
namespace {

constexpr const char* kSignature = "Tavik Technologies -[Measure]";
constexpr int kLinesBelowSignature = 4;

}  // namespace

std::string MeasureFileText(const MeasureRecord& record) {
  // Without data, the record may hold the values of an item that was here before.
  static const MeasureRecord kNoData;
  const MeasureRecord& shown = record.HasData ? record : kNoData;
  TextTable table;
  table.AddLine(kSignature);
  table.AddEmptyLines(kLinesBelowSignature);
  table.AddLine(shown.Title);
  table.AddEmptyLines(1);
  for (const Quantity& quantity : kQuantities) {
    const MeasureValue& value = shown.Values[quantity.index];
    table.AddRow({quantity.fileName, RemoveSpaces(value.Text), value.Verdict});
  }
  return table.TakeBytes();
}

}  // namespace oriolemark
