#pragma once

#include "ptx/readers/step/p21/Records.h"

#include <unordered_map>

namespace ptx::step::p21
{

/// Reads the parameter lists of a text into a piece.
class ListScanner
{
public:
    /// `text` begins where the texts of `piece` begin.
    ListScanner(std::string_view text, Piece& piece) : m_piece(piece), m_text(text) {}

    /// What a list stands for when it is the outermost one.
    struct Owner {
        std::string_view type;
        std::uint32_t number;
        std::uint32_t offset;
        Role role;
    };

    /// Reads the list whose "(" is at `at` and writes its records, the lists in it first. Returns where it ends, or
    /// Nowhere with a `cause`; what it has written until then is for the caller to take back.
    std::size_t scan(std::size_t at, const Owner& owner);

    /// Why the last list could not be read, a clause.
    const char* cause() const { return m_cause; }
    /// Whether it could not because the text is at its end.
    bool isAtEnd() const { return m_isAtEnd; }

private:
    struct OpenList {
        std::size_t firstPending;
        Owner owner;
    };

    std::size_t fail(const char* cause);
    std::size_t failAtEnd();
    std::size_t open(const Owner& owner, std::size_t bracket);
    void close();
    std::size_t value(std::size_t at);
    std::size_t afterValue(std::size_t at);
    std::size_t plainValue(std::size_t at);
    std::size_t nestedList(std::size_t at);
    std::size_t reference(std::size_t at);
    std::size_t text(std::size_t at);
    std::size_t number(std::size_t at);
    std::size_t enumeration(std::size_t at);
    std::size_t binary(std::size_t at);
    std::size_t keep(Kind kind, std::size_t at, std::size_t end);
    std::uint32_t typeNumber(std::string_view type);
    char at(std::size_t place) const { return place < m_text.size() ? m_text[place] : '\0'; }

    Piece& m_piece;
    std::string_view m_text;
    const char* m_cause = "";
    bool m_isAtEnd = false;
    std::vector<OpenList> m_open;
    std::vector<Parameter> m_pending; ///< of the open lists, the innermost last
    std::unordered_map<std::string_view, std::uint32_t> m_types;
    std::string_view m_lastType;
    std::uint32_t m_lastNumber = 0;
};

} // namespace ptx::step::p21
