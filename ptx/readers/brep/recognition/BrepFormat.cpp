#include "ptx/readers/brep/recognition/BrepFormat.h"

#include "protocol/Formats.h"

namespace ptx::brep::recognition
{

namespace
{

constexpr std::string_view TextMark = "CASCADE Topology V";
constexpr std::string_view BinaryMark = "Open CASCADE Topology V";

readers::Match probe(std::string_view head, std::uint64_t)
{
    return head.substr(0, MarkWithin).find(TextMark) != std::string_view::npos ? readers::Match::Certain
                                                                               : readers::Match::No;
}

constexpr readers::Format Row = {
    protocol::format::Brep.name, protocol::format::Brep.extensions, probe, nullptr, nullptr, true};

} // namespace

bool isBinary(std::string_view head)
{
    return head.substr(0, MarkWithin).find(BinaryMark) != std::string_view::npos;
}

const readers::Format& format()
{
    return Row;
}

} // namespace ptx::brep::recognition
