#include "importer/plmxml/References.h"

namespace importer::plmxml
{

QString shownText(std::string_view utf8)
{
    constexpr std::size_t shown = 200;
    return QString::fromUtf8(utf8.data(), static_cast<int>(std::min(utf8.size(), shown)));
}

Reference referenceOf(std::string_view text)
{
    const std::size_t hash = text.find('#');
    if (hash == std::string_view::npos)
        return {{}, text};
    return {text.substr(0, hash), text.substr(hash + 1)};
}

std::string_view ownIdOf(std::string_view text)
{
    const Reference reference = referenceOf(text);
    return reference.file.empty() ? reference.id : std::string_view();
}

std::vector<std::string_view> wordsOf(std::string_view list)
{
    std::vector<std::string_view> words;
    eachWord(list, [&words](std::string_view word) {
        words.push_back(word);
        return true;
    });
    return words;
}

pugi::xml_node References::follow(const pugi::xml_node& from, const char* attribute, ElementKind kind)
{
    pugi::xml_node found;
    eachWord(from.attribute(attribute).value(), [&](std::string_view word) {
        found = look(from, attribute, word, kind);
        return false;
    });
    return found;
}

std::vector<pugi::xml_node> References::followList(const pugi::xml_node& from, const char* attribute, ElementKind kind)
{
    std::vector<pugi::xml_node> found;
    for (const std::string_view word : wordsOf(from.attribute(attribute).value()))
        if (const pugi::xml_node target = look(from, attribute, word, kind))
            found.push_back(target);
    return found;
}

pugi::xml_node References::look(const pugi::xml_node& from, const char* attribute, std::string_view word,
                                ElementKind kind)
{
    const std::string_view id = ownIdOf(word);
    const pugi::xml_node target = kind == ElementKind::Representation ? m_index.findShape(id) : m_index.find(kind, id);
    if (!target)
        note(from, attribute, word);
    return target;
}

void References::note(const pugi::xml_node& from, const char* attribute, std::string_view word)
{
    // Who looks at an element again meets the same text.
    if (!m_noted.insert(word.data()).second)
        return;
    ++m_danglingCount;
    if (m_dangling.size() >= DanglingReference::maxKept)
        return;
    m_dangling.push_back({shownText(m_index.document().nameOf(from)), shownText(from.attribute("id").value()),
                          QString::fromUtf8(attribute), shownText(word), m_index.document().lineOf(from)});
}

} // namespace importer::plmxml
