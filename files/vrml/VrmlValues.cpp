#include "files/vrml/VrmlValues.h"

namespace files::vrml
{

namespace
{

Ints takeBool(Lexer& lexer)
{
    const std::size_t offset = lexer.offset();
    const std::string_view word = lexer.takeWord();
    const bool isTrue = word == "TRUE" || word == "true";
    if (!isTrue && word != "FALSE" && word != "false")
        lexer.source().fail(ErrorCode::Damaged, tr("'%1' is neither TRUE nor FALSE").arg(quoted(word)), offset);
    return {isTrue ? 1 : 0};
}

Floats takeFloats(Lexer& lexer, const FieldSpec& spec)
{
    const std::size_t offset = lexer.offset();
    Floats values;
    if (!spec.isList || !lexer.accept('[')) {
        for (unsigned i = 0; i < spec.floats; ++i)
            values.push_back(lexer.takeFloat());
        return values;
    }
    while (!lexer.accept(']'))
        values.push_back(lexer.takeFloat());
    if (values.size() % spec.floats != 0)
        lexer.source().fail(
            ErrorCode::Damaged,
            tr("the number of numbers in '%1' is no multiple of %2").arg(quoted(spec.name)).arg(spec.floats), offset);
    return values;
}

/// A picture is a run of numbers without brackets.
Ints takeInts(Lexer& lexer, const FieldSpec& spec)
{
    Ints values;
    if (spec.isList && lexer.accept('[')) {
        while (!lexer.accept(']'))
            values.push_back(lexer.takeInt());
        return values;
    }
    do
        values.push_back(lexer.takeInt());
    while (!spec.isList && lexer.atNumber());
    return values;
}

Strings takeStrings(Lexer& lexer, const FieldSpec& spec)
{
    if (!spec.isList || !lexer.accept('['))
        return {toUtf8(lexer.takeString())};
    Strings values;
    while (!lexer.accept(']'))
        values.push_back(toUtf8(lexer.takeString()));
    return values;
}

} // namespace

Value takeValue(Lexer& lexer, const FieldSpec& spec)
{
    switch (spec.type) {
    case FieldType::Bool:
        return takeBool(lexer);
    case FieldType::Int:
        return Ints{lexer.takeInt()};
    case FieldType::Ints:
        return takeInts(lexer, spec);
    case FieldType::Floats:
        return takeFloats(lexer, spec);
    default:
        return takeStrings(lexer, spec);
    }
}

} // namespace files::vrml
