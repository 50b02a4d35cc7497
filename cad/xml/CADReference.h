#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Operations on the text of references between elements.
///
/// A reference is a bare id ("id7"), a local reference ("#id7") or a reference into another file
/// ("a.plmxml#id7"). Elements keep references as they were read; they are taken apart at look-up.
namespace HB::XML::CAD
{

/// A reference taken apart at its first hash sign. The views lead into the text it was made from.
struct ReferenceParts {
    std::string_view file; ///< what stands before the hash sign; empty for a bare id and a local reference
    std::string_view id;   ///< what stands behind the hash sign; the whole text if there is none
};

/// Takes a reference apart. The views lead into `reference`.
ReferenceParts referenceParts(std::string_view reference);

/// Takes a reference apart into `file` and `id`. A text without hash sign leaves `file` as it is and is the id as a
/// whole; a text that ends in the hash sign has an empty id.
/// @return true when the text has a hash sign and a file part that is not empty
bool splitReference(std::string_view reference, std::string& file, std::string& id);

/// The id part of a reference, whatever its file part. The view leads into `reference`.
std::string_view referenceId(std::string_view reference);

/// Appends the tokens of a text that are separated by white space to `tokens`, which is not cleared. Tokens keep their
/// hash signs.
void splitRefList(std::string_view text, std::vector<std::string>& tokens);

/// Whether two instance paths name the same place: as many entries, and position by position the same id part.
/// File parts count for nothing; case counts.
bool equalPaths(const std::vector<std::string>& left, const std::vector<std::string>& right);

} // namespace HB::XML::CAD
