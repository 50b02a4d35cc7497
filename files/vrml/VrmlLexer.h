#pragma once

#include "files/vrml/VrmlSource.h"

#include <string>
#include <string_view>

namespace files::vrml
{

/// Takes words, brackets, numbers and strings out of a text, one after the other. Blanks, commas and comments separate
/// them. What is not there as asked for ends the read, with its place.
class Lexer
{
public:
    /// `source` outlives the lexer.
    explicit Lexer(const Source& source);

    bool atEnd();
    /// The next character that is not blank; 0 at the end.
    char peek();
    /// The number of bytes before the next thing.
    std::size_t offset();

    /// Takes `bracket` if it comes next.
    bool accept(char bracket);
    void expect(char bracket);
    /// Takes the word `wanted` if it comes next.
    bool acceptWord(std::string_view wanted);
    std::string_view takeWord();

    bool atNumber();
    float takeFloat();
    std::int32_t takeInt();
    std::string takeString();

    /// Takes what comes up to the bracket that closes one that was taken before.
    void skipToClosing();
    /// Takes what may be a value of a type that is not known.
    void skipValue();

    const Source& source() const { return m_source; }

private:
    void skipBlanks();
    void skipString();
    std::string_view wordHere() const;
    [[noreturn]] void fail(const QString& message) const;
    [[noreturn]] void failAtNumber() const;
    float takeLargeOrSmall(const char* start);

    const Source& m_source;
    const char* m_begin;
    const char* m_here;
    const char* m_end;
};

} // namespace files::vrml
