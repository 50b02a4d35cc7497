#include "ptx/readers/FormatChoice.h"

#include "import/filetypes/znCADFileTypes.h"
#include "protocol/Formats.h"

#include <algorithm>
#include <set>

namespace ptx::readers
{

namespace
{

const Format* formatOfExtension(Formats formats, const std::string& extension)
{
    for (const Format& format : formats)
        if (std::find(format.extensions.begin(), format.extensions.end(), extension) != format.extensions.end())
            return &format;
    return nullptr;
}

const Format* formatOfContent(Formats formats, std::string_view head, std::uint64_t size)
{
    for (const Format& format : formats)
        if (format.probe(head, size) == Match::Certain)
            return &format;
    return nullptr;
}

// "prt" and "asm" belong to two formats each.
std::string vocabularyNames(const std::string& extension)
{
    std::set<std::string> names;
    for (const auto& [type, row] : znCADFileTypes::extensionTable())
        if (row.extensions.contains(extension))
            names.insert(znCADFileTypes::fileTypeName(type));
    std::string text;
    for (const std::string& name : names)
        text += (text.empty() ? "" : " or ") + name;
    return text;
}

core::Failure unsupported(const std::string& extension, const Format* content)
{
    const std::string known = vocabularyNames(extension);
    const std::string what =
        known.empty() ? "files with the extension \"" + extension + "\"" : known + " files (." + extension + ")";
    const std::string hint = content ? "; its content is " + std::string(content->name) + ", so a name that ends in ." +
                                           content->extensions[0] + " would help"
                                     : std::string();
    return {core::ExitCode::Unsupported, "this build has no reader for " + what + hint};
}

core::Failure belied(const std::string& extension, const Format& named, const Format* content)
{
    const std::string holds =
        content ? "its content is " + std::string(content->name) + ": rename it to end in ." + content->extensions[0]
                : std::string("its content is not");
    return {core::ExitCode::Damaged,
            "the file is named as " + std::string(named.name) + " (." + extension + "), but " + holds};
}

} // namespace

core::Outcome<const Format*> chooseFormat(Formats formats, const std::string& path, std::string_view head,
                                          std::uint64_t size)
{
    const std::string extension = protocol::extensionOf(path);
    const Format* named = formatOfExtension(formats, extension);
    const Format* content = formatOfContent(formats, head, size);
    if (named && (named == content || (!content && named->probe(head, size) == Match::Possible)))
        return named;
    if (named)
        return belied(extension, *named, content);
    return unsupported(extension, content);
}

} // namespace ptx::readers
