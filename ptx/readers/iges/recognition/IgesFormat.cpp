#include "ptx/readers/iges/recognition/IgesFormat.h"

#include "protocol/Formats.h"

namespace ptx::iges::recognition
{

namespace
{

// The terminate section has a T in column 73; every line has its section letter there.
readers::Match probe(std::string_view head, std::uint64_t)
{
    constexpr std::size_t SectionColumn = 72;
    const std::size_t lineEnd = head.find_first_of("\r\n");
    const std::string_view first = head.substr(0, lineEnd);
    const bool isStart = first.size() > SectionColumn && (first[SectionColumn] == 'S' || first[SectionColumn] == 'C');
    return isStart && first.find_first_not_of("0123456789 ", SectionColumn + 1) == std::string_view::npos
               ? readers::Match::Certain
               : readers::Match::No;
}

constexpr readers::Format Row = {protocol::format::Iges.name, protocol::format::Iges.extensions, probe, nullptr};

} // namespace

const readers::Format& format()
{
    return Row;
}

} // namespace ptx::iges::recognition
