#pragma once

#include "output/ExportFile.h"
#include "platform/Label.h"
#include "platform/ListView.h"
#include "transfers/ReadingView.h"

namespace oriolemark {

// The window of a table of samples. The table keeps no cell: each is made from the record when it
// is shown.
class frmData : public ReadingView {
 public:
  // An item without data has so many empty rows.
  static constexpr int kBlankRows = 1000;

  frmData(const ReadingContext& context, ExportContext exporting);

  ListView MeasureView;
  Label SettingLabel;
  Button cmdExport;

  // Shows the record of the view's slot.
  void LoadData();
  void ShowReading() override;
  void cmdExport_Click();

 protected:
  void Form_Unload() override;
  void ShowRecord() override { LoadData(); }
  void TakeReading(int slot) override;

 private:
  DataRecord& Record(int slot) { return context_.sheet.Datas[static_cast<std::size_t>(slot)]; }
  void FillTable();
  void BlankTable();
  void PlaceColumns();

  ExportContext exporting_;
};

}  // namespace oriolemark
