#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace oriolemark {

// A name as names are compared: letters in lower case, digits and signs, nothing else.
std::string Plain(std::string_view name);

// A text in lower case and without blanks.
std::string Folded(std::string_view text);

// The names that are nearest to a mistyped one, as " Did you mean A or B?". Empty if none is near.
std::string DidYouMean(std::string_view typed, const std::vector<std::string>& names);

// From the last point of the file's name on, in lower case. Empty if there is none.
std::string ExtensionOf(const std::string& path);

// Whether the file is a picture.
bool IsPicture(const std::string& path);

}  // namespace oriolemark
