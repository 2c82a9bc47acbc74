#pragma once

#include <QString>

namespace oriolemark {

// What is shown of a text that came from an instrument, a file or a user: all of it up to a few
// hundred characters, else its head and its end with dots between. The end is the name in a path
// and the cure in a message. A desktop that has to lay out a megabyte stalls.
QString Shortened(const QString& text);

}  // namespace oriolemark
