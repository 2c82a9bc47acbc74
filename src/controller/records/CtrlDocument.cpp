#include "controller/records/CtrlDocument.h"

namespace oriolemark {

void SetNewSettings(CtrlSettings& settings) {
  CtrlSettings fresh;
  fresh.MemOffset = settings.MemOffset;
  fresh.VideoStandard = settings.VideoStandard;
  settings = fresh;
}

}  // namespace oriolemark
