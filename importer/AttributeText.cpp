#include "importer/AttributeText.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace importer
{

namespace
{

constexpr std::size_t mostShown = 200;

/// Cut between letters of UTF-8.
std::size_t cutPlace(const std::string& text)
{
    std::size_t place = mostShown;
    while (place > 0 && (static_cast<unsigned char>(text[place]) & 0xC0) == 0x80)
        --place;
    return place;
}

/// How many bytes a letter of UTF-8 has that begins with this one; 0 where none does.
std::size_t letterSize(unsigned char first)
{
    if (first < 0x80)
        return 1;
    return first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF5 ? 4 : 0;
}

/// The same of the letter at the beginning of `text`; 0 for bytes that are none. The second byte tells longer forms of
/// letters than need be, halves of pairs and what lies beyond U+10FFFF.
std::size_t letterSize(std::string_view text)
{
    const auto at = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const std::size_t size = letterSize(at(0));
    if (size > text.size())
        return 0;
    for (std::size_t i = 1; i < size; ++i)
        if ((at(i) & 0xC0) != 0x80)
            return 0;
    const bool isWrong = (at(0) == 0xE0 && at(1) < 0xA0) || (at(0) == 0xED && at(1) >= 0xA0) ||
                         (at(0) == 0xF0 && at(1) < 0x90) || (at(0) == 0xF4 && at(1) >= 0x90);
    return isWrong ? 0 : size;
}

/// Those below U+0020, and from U+007F to U+009F.
bool isControl(std::string_view letter)
{
    const auto first = static_cast<unsigned char>(letter.front());
    return first < ' ' || first == 0x7F || (first == 0xC2 && static_cast<unsigned char>(letter[1]) < 0xA0);
}

/// A terminal obeys control characters, and shows nothing sensible for bytes that are no UTF-8.
std::string shown(const std::string& text)
{
    std::string result;
    const bool isCut = text.size() > mostShown;
    std::string_view rest(text.data(), isCut ? cutPlace(text) : text.size());
    while (!rest.empty()) {
        const std::size_t size = letterSize(rest);
        const std::string_view letter = rest.substr(0, std::max(size, std::size_t(1)));
        rest.remove_prefix(letter.size());
        if (size > 0 && !isControl(letter)) {
            result += letter;
            continue;
        }
        for (const char c : letter) {
            char code[8];
            std::snprintf(code, sizeof code, "\\x%02x", static_cast<unsigned>(static_cast<unsigned char>(c)));
            result += code;
        }
    }
    return isCut ? result + "... (" + std::to_string(text.size()) + " bytes)" : result;
}

std::string linesOf(const osg::AttributeList& attributes, const std::string& start)
{
    std::string text;
    for (const osg::Attribute& attribute : attributes)
        text += start + shown(attribute.name) + " = " + shown(osg::textOf(attribute)) + "\n";
    return text;
}

} // namespace

std::string AttributeText::of(const osg::NodePtr& node, const std::string& indentation)
{
    std::string text;
    const auto product = osg::attributeAttachment(node, osg::AttributeOwner::Product);
    if (product && m_told.insert(product.get()).second)
        text = linesOf(product->attributes(), indentation + "product: ");
    return text + linesOf(osg::attributesOf(node, osg::AttributeOwner::Occurrence), indentation + "occurrence: ");
}

} // namespace importer
