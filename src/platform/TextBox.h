#pragma once

#include "platform/Label.h"

namespace oriolemark {

// A text that the user can edit too. The text is what stands in the box at any moment.
class TextBox : public Label {};

}  // namespace oriolemark
