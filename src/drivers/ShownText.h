#pragma once

#include <QString>

namespace oriolemark {

// Characters that a row, a title or a tool tip shows of a text, and those that a message shows.
inline constexpr qsizetype kShownInLine = 500;
inline constexpr qsizetype kShownInMessage = 2000;

// What is shown of a text that came from an instrument, a file or a user: all of it up to `limit`
// characters, else its head and its end with dots between. The end is the name in a path and the
// cure in a message. A desktop that has to lay out a megabyte stalls.
QString Shortened(const QString& text, qsizetype limit = kShownInLine);

// The same text, with places for a line's end inside words that are longer than any path.
QString Breakable(QString text);

}  // namespace oriolemark
