#pragma once

#include <string>

namespace oriolemark {

// Whether this program may read and write the device.
bool MayUse(const std::string& path);

// The group that may use the device; `usual` where it belongs to root's or is not there.
std::string GroupOf(const std::string& path, const std::string& usual);

// What a user without the right does about it.
std::string JoinGroup(const std::string& group);

}  // namespace oriolemark
