#pragma once

#include "host/languagecore/Export.h"

#include <string>
#include <vector>

namespace ac {

/// Symbol paths: segments joined by points, compared without regard to case.
class KESTRUN_LANGUAGECORE_EXPORT SplitPath {
public:
    static std::vector<std::string> segments(const std::string& path);
    /// True when the segments of the prefix begin those of the path, whole segments only. An empty prefix begins
    /// nothing.
    static bool isPrefixPath(const std::string& prefix, const std::string& path);
};

} // namespace ac
