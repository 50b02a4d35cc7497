#include "tests/ptx/readers/step/p21/RecordText.h"

namespace ptxtest
{

using namespace ptx::step::p21;

namespace
{

std::string listText(const Piece& piece, const Record& record);

std::string parameterText(const Piece& piece, const Parameter& parameter)
{
    if (parameter.kind == Kind::Reference)
        return "#" + std::to_string(parameter.value);
    if (parameter.kind == Kind::List)
        return listText(piece, piece.records[parameter.value]);
    return std::string(piece.textOf(parameter));
}

std::string listText(const Piece& piece, const Record& record)
{
    std::string text = std::string(piece.typeOf(record)) + '(';
    for (std::uint32_t i = 0; i < record.parameterCount; ++i)
        text += (i > 0 ? "," : "") + parameterText(piece, piece.parameters[record.firstParameter + i]);
    return text + ')';
}

void closeComplex(std::vector<std::string>& texts, bool& isComplex)
{
    if (isComplex)
        texts.back() += ')';
    isComplex = false;
}

void addMember(std::string& entity, bool& isComplex, const std::string& member)
{
    if (!isComplex)
        entity.insert(entity.find('=') + 1, 1, '(');
    isComplex = true;
    entity += member;
}

void addEntities(std::vector<std::string>& texts, const Piece& piece)
{
    bool isComplex = false;
    for (const Record& record : piece.records) {
        if (record.role == Role::Member) {
            addMember(texts.back(), isComplex, listText(piece, record));
        } else if (record.role == Role::Entity) {
            closeComplex(texts, isComplex);
            texts.push_back("#" + std::to_string(record.number) + "=" + listText(piece, record));
        }
    }
    closeComplex(texts, isComplex);
}

} // namespace

std::vector<std::string> entityTexts(const Records& records)
{
    std::vector<std::string> texts;
    for (const Piece& piece : records.pieces)
        addEntities(texts, piece);
    return texts;
}

std::vector<std::string> headerTexts(const Records& records)
{
    std::vector<std::string> texts;
    for (const Piece& piece : records.pieces)
        for (const Record& record : piece.records)
            if (record.role == Role::Header)
                texts.push_back(listText(piece, record));
    return texts;
}

std::string allRecords(const Records& records)
{
    std::string text;
    for (const Piece& piece : records.pieces)
        for (const Record& record : piece.records)
            text += std::to_string(static_cast<int>(record.role)) + " #" + std::to_string(record.number) + '@' +
                    std::to_string(piece.begin + record.offset) + ' ' + listText(piece, record) + '\n';
    for (const Damage& damage : records.damages())
        text += std::to_string(damage.offset) + ' ' + std::to_string(damage.number) + ' ' + damage.cause + '\n';
    return text + (records.isComplete ? "complete" : "cut off");
}

std::vector<std::string> damageTexts(std::string_view text, const Records& records)
{
    std::vector<std::string> texts;
    for (const Damage& damage : records.damages())
        texts.push_back(describe(text, damage));
    return texts;
}

std::string fileWith(const std::string& data)
{
    return "ISO-10303-21;\nHEADER;FILE_NAME('a');ENDSEC;\nDATA;\n" + data + "\nENDSEC;\nEND-ISO-10303-21;\n";
}

} // namespace ptxtest
