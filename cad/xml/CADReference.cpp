#include "cad/xml/CADReference.h"

#include <algorithm>

namespace HB::XML::CAD
{

namespace
{
constexpr std::string_view whiteSpace = " \t\n\v\f\r";
}

ReferenceParts referenceParts(std::string_view reference)
{
    const auto hash = reference.find('#');
    if (hash == std::string_view::npos)
        return {{}, reference};
    return {reference.substr(0, hash), reference.substr(hash + 1)};
}

bool splitReference(std::string_view reference, std::string& file, std::string& id)
{
    const auto [filePart, idPart] = referenceParts(reference);
    id = idPart;
    if (idPart.size() == reference.size())
        return false;
    file = filePart;
    return !file.empty();
}

std::string_view referenceId(std::string_view reference)
{
    return referenceParts(reference).id;
}

void splitRefList(std::string_view text, std::vector<std::string>& tokens)
{
    auto start = text.find_first_not_of(whiteSpace);
    while (start != std::string_view::npos) {
        const auto end = std::min(text.find_first_of(whiteSpace, start), text.size());
        tokens.emplace_back(text.substr(start, end - start));
        start = text.find_first_not_of(whiteSpace, end);
    }
}

bool equalPaths(const std::vector<std::string>& left, const std::vector<std::string>& right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const auto& one, const auto& other) { return referenceId(one) == referenceId(other); });
}

} // namespace HB::XML::CAD
