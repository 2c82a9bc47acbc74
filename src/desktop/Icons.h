#pragma once

#include <QIcon>
#include <QString>

namespace oriolemark {

// A picture of the program by its name; an empty one where there is none of that name. Its outlines
// have the colour of the theme's text, also after the theme has changed.
QIcon PictureNamed(const QString& name);
// The same with another picture for what is open, as the row of a tree with its children.
QIcon PictureNamed(const QString& name, const QString& open);

}  // namespace oriolemark
