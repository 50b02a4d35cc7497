#include "ptx/readers/step/LeftOutTags.h"

#include "files/scenefile/ConvertedTree.h"

namespace ptx::step
{

std::vector<std::string> leftOutTags(const std::string& file, std::size_t views, const annotations::Drawing& drawing)
{
    using osg::scenefile::converted::leftOutTag;
    std::vector<std::string> tags;
    if (views > 0)
        tags.push_back(leftOutTag({file, "saved views of several parts", views}));
    std::size_t contents = 0;
    for (const auto& [type, count] : drawing.unread)
        contents += count;
    if (contents > 0)
        tags.push_back(leftOutTag({file, "contents of annotations", contents}));
    return tags;
}

} // namespace ptx::step
