#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace HB::XML::CAD
{

/// What a document may ask of the parser, which nests as deep as its input and looks through all attributes of an
/// element for each new one.
struct XMLLimits {
    std::uint32_t depth = 2000;      ///< elements inside one another, the root included
    std::uint32_t attributes = 1000; ///< attributes of one element
};

/// Why a text is not given to the parser.
enum class XMLFault {
    None,
    EmbeddedNul,       ///< the parser would take it for the end of the text
    TooDeep,           ///< XMLLimits::depth
    TooManyAttributes, ///< XMLLimits::attributes
    CutOff,            ///< the text ends inside a tag, comment, CDATA section, declaration or other markup
    StrayEndTag,       ///< an end tag where no element is open
    BadDeclaration,    ///< an XML declaration whose values are not in quotes, or hold markup
    BrokenCharacter    ///< a UTF-8 sequence that lacks bytes, of which the parser would take the bytes behind it
};

/// What a scan found.
struct XMLVerdict {
    XMLFault fault = XMLFault::None; ///< None for a text that may be parsed
    std::size_t position = 0;        ///< byte offset at which the fault was seen; 0 without fault
};

/// One cheap pass over the bytes of a file before the parser sees them. It divides the text into tags, comments and so
/// on as the parser does, so that what it counts is what the parser will meet. A text that passes may still be refused
/// by the parser.
XMLVerdict scanXMLText(std::string_view text, const XMLLimits& limits);

} // namespace HB::XML::CAD
