#include "host/languagecore/SplitPath.h"

#include "host/languagecore/Names.h"

#include <algorithm>

namespace ac {

std::vector<std::string> SplitPath::segments(const std::string& path)
{
    std::vector<std::string> parts;
    std::size_t begin = 0;
    for (std::size_t point = path.find('.'); point != std::string::npos; point = path.find('.', begin)) {
        parts.push_back(path.substr(begin, point - begin));
        begin = point + 1;
    }
    parts.push_back(path.substr(begin));
    return parts;
}

bool SplitPath::isPrefixPath(const std::string& prefix, const std::string& path)
{
    if (prefix.empty())
        return false;
    const std::vector<std::string> first = segments(prefix);
    const std::vector<std::string> whole = segments(path);
    return first.size() <= whole.size() && std::equal(first.begin(), first.end(), whole.begin(), &sameName);
}

} // namespace ac
