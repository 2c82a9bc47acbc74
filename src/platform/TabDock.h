#pragma once

#include <string>
#include <vector>

#include "platform/Control.h"
#include "platform/Form.h"

namespace oriolemark {

// Panes docked at an edge of the main window. Each pane is a form with a key.
class TabDock : public Control {
 public:
  struct Pane {
    std::string key;
    Form* form;
  };

  void AddPane(const std::string& key, Form& form) {
    panes_.push_back({key, &form});
    form.Load();
    Tell();
  }
  void ShowPane(const std::string& key) {
    if (Form* form = Find(key)) form->BringToFront();
  }
  // Unloads the pane's form, so that it is loaded again when the pane comes back.
  void HidePane(const std::string& key) {
    if (Form* form = Find(key)) form->Unload();
  }
  const std::vector<Pane>& Panes() const { return panes_; }

  // Width of the dock band in window units.
  double BandWidth() const { return bandWidth_; }
  void SetBandWidth(double units) { Change(bandWidth_, units); }

 private:
  Form* Find(const std::string& key) const {
    for (const Pane& pane : panes_) {
      if (pane.key == key) return pane.form;
    }
    return nullptr;
  }

  std::vector<Pane> panes_;
  double bandWidth_ = 0;
};

}  // namespace oriolemark
