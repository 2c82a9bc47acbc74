#pragma once

#include <string>

namespace oriolemark {

// Whether this program may read and write the device.
bool MayUse(const std::string& path);

// The group that may use the device. Returns `usual` if the group is root's or the device is
// missing.
std::string GroupOf(const std::string& path, const std::string& usual);

// The advice for a user who has no access.
std::string JoinGroup(const std::string& group);

}  // namespace oriolemark
