#pragma once

#include <QString>

namespace oriolemark {

// The most characters that a row, title or tool tip shows of a text, the most in an entry of a
// menu, which cannot be scrolled, and the most in a message.
inline constexpr qsizetype kShownInLine = 500;
inline constexpr qsizetype kShownInMenu = 120;
inline constexpr qsizetype kShownInMessage = 2000;

// The shown part of a text from an instrument, a file or a user. A text above `limit` characters is
// cut to its head and its end, with dots between. The end has the name of a path and the cure of a
// message. The desktop would stall if it had to lay out a megabyte.
QString Shortened(const QString& text, qsizetype limit = kShownInLine);

// The same text, with possible line breaks inside words that are longer than any path.
QString Breakable(QString text);

}  // namespace oriolemark
