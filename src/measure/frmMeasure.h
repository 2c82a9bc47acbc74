#pragma once

#include "measure/frmPassFailed.h"
#include "output/ExportFile.h"
#include "platform/Label.h"
#include "platform/ListView.h"
#include "transfers/ReadingView.h"

namespace oriolemark {

// The window that shows one measure record: 18 quantities with their values, and the verdicts on
// those that are tested.
class frmMeasure : public ReadingView {
 public:
  // `limits` is the one dialog that all views share.
  frmMeasure(const ReadingContext& context, const ExportContext& output, frmPassFailed& limits);

  // Pictures: those of the quantities in the first column, of the verdicts in the last one.
  ListView MeasureView{{"Type", "Value", "Pass&Fail"}};
  Label SettingLabel;  // the record's title
  Button cmdPassFailed;
  Button cmdExport;

  void Form_Load() override;
  void Form_Resize() override;
  void ShowReading() override;

 protected:
  void ShowRecord() override { ShowMeasureRecord(); }
  // Copies the texts of the transfer into the record. The limits stay.
  void TakeReading(int slot) override;

 private:
  MeasureRecord& Record();
  // Shows the names of the quantities, without values.
  void StartDispMeasure();
  // Makes the verdicts anew and shows the record.
  void ShowMeasureValues();
  // Shows what the record holds: its values, or only the names if it was never read.
  void ShowMeasureRecord();
  void ShowRows(ListRows rows);
  std::string CellText(const Quantity& quantity, int column);
  std::string CopiedText(const Quantity& quantity, int column);
  int CellPicture(const Quantity& quantity, int column);
  void cmdPassFailed_Click();
  void cmdExport_Click();

  ExportContext output_;
  frmPassFailed& limits_;
};

}  // namespace oriolemark
