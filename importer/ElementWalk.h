#pragma once

#include <tinyxml.h>

namespace importer
{

/// Visits `top` and the elements below it in the order of the text, without recursion. `visit` tells of each whether
/// the elements in it are visited as well.
template <class Visit>
void walkElements(const TiXmlElement& top, const Visit& visit)
{
    const TiXmlElement* element = &top;
    bool descend = visit(top);
    while (element) {
        const TiXmlElement* next = descend ? element->FirstChildElement() : nullptr;
        while (!next && element != &top) {
            next = element->NextSiblingElement();
            if (!next)
                element = element->Parent()->ToElement();
        }
        element = next;
        descend = element && visit(*element);
    }
}

} // namespace importer
