#pragma once

#include <memory>

#include "platform/RasterCanvas.h"

namespace oriolemark {

// A raster that draws its texts in the font of the program's pictures. Drawing a text needs a
// QGuiApplication.
std::unique_ptr<Canvas> MakeRasterCanvas();

}  // namespace oriolemark
