#pragma once

#include "platform/Label.h"

namespace oriolemark {

// A text that the user can edit. Text() is always what the box shows.
class TextBox : public Label {};

}  // namespace oriolemark
