#pragma once

#include "ptx/readers/step/p21/ListScanner.h"

namespace ptx::step::p21
{

/// Between which words of a text a place lies.
enum class Section : std::uint8_t {
    Outside, ///< before, between and behind the others
    Header,
    Data,
    Other, ///< of the later editions: ANCHOR, REFERENCE, SIGNATURE
    Ended  ///< nothing more is read: behind "END-ISO-10303-21;", or at the end of the text
};

/// Where the reading stands, between two records.
struct Place {
    std::uint64_t at = 0;
    Section section = Section::Outside;
    std::vector<std::uint32_t> scopes = {}; ///< the entities whose scopes are open, the innermost last

    bool operator==(const Place&) const = default;
};

/// Reads a part of a text into a piece, from one record to another. What cannot be read is left out and kept as a
/// damage; the reading goes on with the next line or statement that looks like a record.
class RecordScanner
{
public:
    RecordScanner(std::string_view text, const Place& from, Piece& piece);

    /// Reads until the next record or section begins at `stop` or behind it, and returns where that is.
    Place scanTo(std::uint64_t stop);
    /// Reads until the first data section begins.
    Place scanToData();
    /// Whether the text ended with the word for its end.
    bool sawEnd() const { return m_sawEnd; }

private:
    Place place() const { return {m_piece.begin + m_at, m_section, m_scopes}; }
    bool isAtEnd();
    void step();
    void stepOutside();
    void stepHeader();
    void stepData();
    void stepOther();
    void endData();
    void readHeaderEntity();
    void readEntity();
    void endScope();
    void readBody(std::size_t begin, std::size_t at, std::uint32_t number);
    bool openScope(std::size_t at, std::uint32_t number);
    void takeBack(std::size_t records, std::size_t parameters);
    std::size_t entityBody(std::size_t at, const ListScanner::Owner& owner);
    std::size_t complexBody(std::size_t at, const ListScanner::Owner& owner);
    std::size_t afterExports(std::size_t at) const;
    std::size_t typedList(std::size_t at, ListScanner::Owner owner);
    std::size_t statementEnd(std::size_t at);
    std::size_t fail(const char* cause);
    std::string_view word() const;
    void beginSection(Section section);
    void passStatement();
    void damage(std::size_t at, std::uint32_t number, const char* cause);
    void loseSectionEnd();

    Piece& m_piece;
    ListScanner m_lists;
    std::string_view m_text;
    std::size_t m_at = 0;
    Section m_section;
    std::vector<std::uint32_t> m_scopes;
    const char* m_cause = ""; ///< why the present record cannot be read
    bool m_isCut = false;     ///< the text ended in the present record
    bool m_sawEnd = false;
    bool m_isBeforeData = false; ///< where alone a header may begin
};

} // namespace ptx::step::p21
