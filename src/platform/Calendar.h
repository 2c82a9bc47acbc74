#pragma once

#include <functional>
#include <string>

namespace oriolemark {

// Today's date in the system's short form.
using ShortDate = std::function<std::string()>;

}  // namespace oriolemark
