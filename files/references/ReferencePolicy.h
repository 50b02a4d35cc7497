#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Which files a file may name, decided here for all readers, the importer and the converter.
namespace files::references
{

/// Which documents (part files, documents within documents, material libraries) are followed.
enum class Rule {
    Parts, ///< wherever the document says
    Below, ///< in the folder of the file that was asked for, and below it
    None   ///< nowhere
};

/// What becomes of the file that is named.
enum class Use {
    Document, ///< a reader makes something of it
    Bytes     ///< it may end up in an output as it is: buffers, pictures
};

/// Why a file is not taken.
enum class Refusal {
    BytesOutside,    ///< content from outside the folder of the file that names it
    DocumentOutside, ///< a document from outside the folder of the file that was asked for
    NotFollowed      ///< no document is followed
};

/// What one import allows.
struct Policy {
    Rule rule = Rule::Parts;
    std::string top;                       ///< folder of the file that was asked for, absolute
    std::vector<std::string> folders = {}; ///< open, with what is below them, to `Rule::Below` and to bytes

    /// Why `path` (absolute, in UTF-8) may not be taken when a file in `folder` names it; nothing when it may.
    ///
    /// "." and ".." mean what they say in the text of the path; links are followed, and none may lead outside. The disk
    /// is asked about nothing that lies outside, so that nobody learns from the answer what is there. Whoever opens
    /// the file afterwards takes `plainPath(path)`.
    std::optional<Refusal> refusal(Use use, const std::string& path, const std::string& folder) const;

    /// Whether any document may be followed to `path`, from wherever.
    bool allowsDocument(const std::string& path) const { return !refusal(Use::Document, path, top); }
};

/// `path`, absolute, without "." and "..".
std::string plainPath(const std::string& path);

/// "parts", "below", "none".
const char* word(Rule rule);
/// The rule of that word; nothing for any other word.
std::optional<Rule> ruleOf(std::string_view word);

/// The reason in English, with the option that would allow it.
const char* sentence(Refusal refusal);

} // namespace files::references
