#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

namespace oriolemark {

// The sign in the lower right corner of a picture.
enum class PictureMark { None, Unsaved };

// The program's picture with this name. It is empty if there is no such picture. Its outlines have
// the colour of the theme's text, also after the theme has changed.
QIcon PictureNamed(const QString& name);
// The same, with a second picture for an expanded tree row.
QIcon PictureNamed(const QString& name, const QString& open, PictureMark mark = PictureMark::None);

// A colour between two, `share` of the way from `one` to `other`, from 0 to 1.
QColor Mixed(const QColor& one, const QColor& other, double share);

}  // namespace oriolemark
