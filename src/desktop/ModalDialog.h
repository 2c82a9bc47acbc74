#pragma once

#include "platform/Waiting.h"

class QDialog;

namespace oriolemark {

// Shows one of the toolkit's dialogs in front of all other windows and waits until it closes.
// Returns true if it was accepted. The wait goes through `Waiting`, so that closing the program
// ends it like every other wait.
bool RunModal(QDialog& dialog, Waiting& waiting);

}  // namespace oriolemark
