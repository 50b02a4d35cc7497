#include "ptx/readers/step/recognition/StepFormat.h"

#include "protocol/Formats.h"
#include "ptx/readers/step/recognition/ReferenceScan.h"

namespace ptx::step::recognition
{

namespace
{

readers::Match probe(std::string_view head, std::uint64_t)
{
    return head.find("ISO-10303-21") != std::string_view::npos ? readers::Match::Certain : readers::Match::No;
}

bool refersToParts(const std::string& path)
{
    return !referencesOf(path).empty();
}

constexpr readers::Format Row = {
    protocol::format::Step.name, protocol::format::Step.extensions, probe, nullptr, refersToParts, false, referencesOf};

} // namespace

const readers::Format& format()
{
    return Row;
}

} // namespace ptx::step::recognition
