#include "ptx/scene/NodeNames.h"

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

} // namespace ptx::scene
