#pragma once

#include <QIcon>
#include <QString>

namespace oriolemark {

// A picture of the program by its name; an empty one where there is none of that name.
inline QIcon PictureNamed(const QString& name) {
  return QIcon(":/icons/" + name + ".svg");
}

}  // namespace oriolemark
