#include "ptx/scene/NodeNames.h"

#include "files/scenefile/ConvertedTree.h"

#include <algorithm>
#include <string_view>

namespace ptx::scene
{

namespace
{

bool isCounter(std::string_view name)
{
    constexpr std::string_view Prefix = "NAUO";
    if (name.starts_with(Prefix))
        name.remove_prefix(Prefix.size());
    if (name.starts_with("=>["))
        return true;
    return std::all_of(name.begin(), name.end(), [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace

std::string nodeName(const model::Occurrence& occurrence, const model::Product& product)
{
    return isCounter(occurrence.name) && !product.name.empty() ? product.name : occurrence.name;
}

std::vector<std::string> nodeTags(const model::Occurrence& occurrence, const model::Product& product)
{
    using namespace osg::scenefile::converted;
    std::vector<std::string> tags = occurrence.tags;
    tags.insert(tags.end(), product.tags.begin(), product.tags.end());
    const std::string name = nodeName(occurrence, product);
    if (!product.name.empty() && product.name != name)
        tags.push_back(tag(ProductKey, product.name));
    if (!occurrence.name.empty() && occurrence.name != name)
        tags.push_back(tag(OccurrenceKey, occurrence.name));
    return tags;
}

} // namespace ptx::scene
