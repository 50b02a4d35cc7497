#pragma once

#include "cad/xml/XMLTextScan.h"

#include <cstddef>
#include <string>

namespace HB::XML::CAD
{

class CADBase;

/// A place in the text of a document, both counted from 1; 0 where it is not known.
struct CADPlace {
    int line = 0;   ///< of the text
    int column = 0; ///< bytes of the line
};

/// Where an element of the model came from.
struct CADOrigin {
    const CADBase* element = nullptr; ///< lives as long as the document
    std::string name;                 ///< of the two that some elements may have, the one that it has
    bool hasId = false;               ///< whether the document gives it one
    CADPlace place;                   ///< of its start tag
};

/// Why a document was refused.
struct CADFault {
    /// What refused it.
    enum class Cause {
        Unreadable, ///< there is no such regular file, or it cannot be read
        Text,       ///< the text is not fit for the parser
        Syntax,     ///< the parser refused it
        Root,       ///< its root element is another than "PLMXML", or it has none
        Transform,  ///< a value of a `Transform` is no number that fits
        Material    ///< an attribute of a `Material` has a word among its numbers
    };

    Cause cause = Cause::Unreadable; ///< the rest follows from it
    CADPlace place = {};             ///< where it was seen; of Text always known
    XMLFault text = XMLFault::None;  ///< of Text
    std::string words = {};          ///< of Syntax the parser's, of Root its name, of Material that of the attribute
    std::size_t value = 0;           ///< of Transform: which of its values, from 1
};

} // namespace HB::XML::CAD
