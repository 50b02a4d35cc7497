#include "ptx/readers/step/recognition/ReferenceScan.h"

#include "ptx/readers/TextFile.h"
#include "ptx/readers/step/p21/StepString.h"

#include <algorithm>
#include <cstring>
#include <set>

namespace ptx::step::recognition
{

namespace
{

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool isWordLetter(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

// std::string_view::find stops at each first letter, which takes ten times as long on a text of capitals.
std::size_t find(std::string_view text, std::string_view word, std::size_t from = 0)
{
    const std::string_view rest = text.substr(from);
    const void* found = ::memmem(rest.data(), rest.size(), word.data(), word.size());
    return found ? static_cast<std::size_t>(static_cast<const char*>(found) - text.data()) : std::string_view::npos;
}

bool contains(std::string_view text, std::string_view word)
{
    return find(text, word) != std::string_view::npos;
}

class NameCollector
{
public:
    explicit NameCollector(std::string_view text) : m_text(text) {}

    /// Takes the first `count` parameters of each entity of type `keyword`, as far as they are strings.
    void add(std::string_view keyword, int count)
    {
        for (std::size_t at = find(m_text, keyword); at != std::string_view::npos; at = find(m_text, keyword, at + 1)) {
            const bool isWhole = at == 0 || !isWordLetter(m_text[at - 1]);
            if (std::size_t next = at + keyword.size(); isWhole && skip(next, '('))
                addStrings(next, count);
        }
    }

    std::vector<std::string> take() { return std::move(m_names); }

private:
    void skipBlanks(std::size_t& at) const
    {
        while (at < m_text.size() && isBlank(m_text[at]))
            ++at;
    }

    bool skip(std::size_t& at, char c) const
    {
        skipBlanks(at);
        if (at == m_text.size() || m_text[at] != c)
            return false;
        ++at;
        return true;
    }

    void addStrings(std::size_t at, int count)
    {
        for (int i = 0; i < count; ++i) {
            skipBlanks(at);
            const std::string_view raw = p21::quotedString(m_text.substr(at));
            if (raw.empty())
                return;
            addName(p21::decodedString(raw));
            at += raw.size();
            if (!skip(at, ','))
                return;
        }
    }

    void addName(const std::string& name)
    {
        if (!std::all_of(name.begin(), name.end(), isBlank) && m_known.insert(name).second)
            m_names.push_back(name);
    }

    std::string_view m_text;
    std::vector<std::string> m_names;
    std::set<std::string> m_known;
};

} // namespace

std::vector<std::string> scanReferences(std::string_view text)
{
    NameCollector names(text);
    const bool hasFiles = contains(text, "DOCUMENT_FILE") && contains(text, "APPLIED_DOCUMENT_REFERENCE");
    const bool hasDocuments = contains(text, "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS");
    if (hasFiles || hasDocuments) {
        names.add("APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT", 1);
        names.add("DOCUMENT_FILE", 2);
    }
    if (hasDocuments)
        names.add("DOCUMENT", 2);
    return names.take();
}

std::vector<std::string> referencesOf(const std::string& path)
{
    const readers::TextFile file(path);
    return scanReferences(file.text());
}

} // namespace ptx::step::recognition
