#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ptx::step::p21
{

/// How a parameter is written.
enum class Kind : std::uint8_t {
    Integer,     ///< 12
    Real,        ///< 1.5E-3
    Text,        ///< 'abc', with its quotes
    Enumeration, ///< .T., with its points
    Binary,      ///< "0F", with its quotes
    Omitted,     ///< $
    Derived,     ///< *
    Reference,   ///< #12
    List         ///< (1,2), or LENGTH_MEASURE(1.)
};

/// The longest text of a parameter.
constexpr std::size_t MaxTextLength = (std::size_t{1} << 28) - 1;

/// One parameter of a record. Eight bytes, because a file has millions of them.
struct Parameter {
    Parameter(Kind itsKind, std::size_t itsValue, std::size_t itsLength = 0)
        : value(static_cast<std::uint32_t>(itsValue)), length(itsLength & MaxTextLength), kind(itsKind)
    {
    }

    std::uint32_t value;       ///< a reference: the number; a list: its record in the piece; else where its text begins
    std::uint32_t length : 28; ///< of the text; 0 for references and lists
    Kind kind : 4;
};

/// What a record stands for.
enum class Role : std::uint8_t {
    Header, ///< an entity of the header section
    Entity, ///< #12=POINT(...), or the first member of a complex entity
    Member, ///< a further member of the complex entity before it
    List    ///< a list, written before the record that holds it
};

/// A type with its parameters. Lists are records of their own, each before the one that names it.
struct Record {
    std::uint32_t firstParameter; ///< in the piece; the others follow it
    std::uint32_t parameterCount;
    std::uint32_t number;    ///< of an entity, above 0; 0 for all else
    std::uint32_t offset;    ///< of an entity, where it begins; of all else, where its list begins
    std::uint32_t type : 30; ///< in the piece's types; 0 is a list without a type
    Role role : 2;
};

/// A record that cannot be read, or a place between sections where something else stands.
struct Damage {
    std::uint64_t offset;
    std::uint32_t number; ///< of the record; 0 when it has none
    const char* cause;    ///< a clause: "a parameter is missing"
};

/// What one thread found in its part of the text. Offsets and texts count from `begin`.
struct Piece {
    std::string_view text; ///< from `begin` to the end of the whole text
    std::uint64_t begin = 0;
    std::vector<Parameter> parameters;
    std::vector<Record> records;
    std::vector<std::string_view> types = {std::string_view()};
    std::vector<Damage> damages;

    std::string_view textOf(const Parameter& parameter) const { return text.substr(parameter.value, parameter.length); }
    std::string_view typeOf(const Record& record) const { return types[record.type]; }
};

/// All records of a text, in its order. The text has to outlive it.
struct Records {
    std::vector<Piece> pieces; ///< the first holds the header, and no other does
    bool isComplete = false;   ///< whether the end is there: "END-ISO-10303-21;"

    std::size_t recordCount() const;
    std::size_t parameterCount() const;
    /// In the order of the text.
    std::vector<Damage> damages() const;
};

/// The line of `offset`, which begins with 1.
std::size_t lineOf(std::string_view text, std::uint64_t offset);

/// "#12 in line 34: a parameter is missing"
std::string describe(std::string_view text, const Damage& damage);

} // namespace ptx::step::p21
