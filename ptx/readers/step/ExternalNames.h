#pragma once

#include <string>
#include <string_view>
#include <vector>

class STEPCAFControl_Reader;
class TDF_Label;

namespace ptx::step
{

/// The names of other files in a STEP model that holds its parts, kept from OCCT: its own road loads every file
/// at once, overflows its stack on files that refer to each other, and gives up on names in another case of letters.
class ExternalNames
{
public:
    /// Takes the names out of the model that `reader` has read and not yet transferred, and leaves marks in their
    /// place.
    explicit ExternalNames(STEPCAFControl_Reader& reader);

    /// Whether some product refers to another file.
    bool isEmpty() const { return !m_hasReferences; }
    /// After the transfer: the names that stand for the part of `label`, best first; none for any other label.
    std::vector<std::string> of(const TDF_Label& label) const;

    /// Whether OCCT complains of one of the marks: it takes each for the name of a file, which it cannot find.
    static bool isAboutMark(std::string_view complaint);
    /// Whether `text`, the id or name of a document, has been exchanged for a mark.
    static bool isMark(std::string_view text);

private:
    std::vector<std::vector<std::string>> m_names; ///< by the number in the mark
    bool m_hasReferences = false;
};

} // namespace ptx::step
