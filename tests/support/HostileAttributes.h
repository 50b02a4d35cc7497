#pragma once

#include "scene/Attributes.h"

#include <string>

/// Attributes as nobody in their right mind writes them: control characters, bytes that are no UTF-8, a text of
/// `longBytes`, a name of that length, a list of such, marks of every output, and `names` further names.
inline osg::AttributeList hostileAttributes(std::size_t longBytes, int names)
{
    const std::string control("\x1B[31m\x07\r\n\x00\x7F\xC2\x9B", 12);
    const std::string broken = "\xFF\xC3(\xED\xA0\x80\xF8";
    osg::AttributeList attributes = {{control, control},
                                     {broken, broken},
                                     {"long", std::string(longBytes, 'x')},
                                     {std::string(longBytes, 'n'), true},
                                     {"list", std::vector<std::string>{std::string(longBytes, 'y'), control, broken}},
                                     {"marks", std::string("\",;=\\</script>%&{}[]"), "\"%\n"},
                                     {"", osg::AttributeDate{""}}};
    for (int i = 0; i < names; ++i)
        attributes.push_back({"key " + std::to_string(i), std::int64_t(i)});
    return attributes;
}
