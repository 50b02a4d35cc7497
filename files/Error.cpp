#include "files/Error.h"

#include "files/Text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace files
{

namespace
{

constexpr std::array<std::pair<ErrorCode, const char*>, 26> names = {{
    {ErrorCode::NotFound, "NotFound"},           {ErrorCode::NotRegular, "NotRegular"},
    {ErrorCode::NotReadable, "NotReadable"},     {ErrorCode::Refused, "Refused"},
    {ErrorCode::ReadFailed, "ReadFailed"},       {ErrorCode::UnknownFormat, "UnknownFormat"},
    {ErrorCode::NotASceneFile, "NotASceneFile"}, {ErrorCode::UnsupportedVersion, "UnsupportedVersion"},
    {ErrorCode::Unsupported, "Unsupported"},     {ErrorCode::Empty, "Empty"},
    {ErrorCode::Truncated, "Truncated"},         {ErrorCode::Damaged, "Damaged"},
    {ErrorCode::DamagedHeader, "DamagedHeader"}, {ErrorCode::DamagedTable, "DamagedTable"},
    {ErrorCode::DamagedGraph, "DamagedGraph"},   {ErrorCode::DamagedMesh, "DamagedMesh"},
    {ErrorCode::WrongChecksum, "WrongChecksum"}, {ErrorCode::LimitExceeded, "LimitExceeded"},
    {ErrorCode::OutOfMemory, "OutOfMemory"},     {ErrorCode::NothingToWrite, "NothingToWrite"},
    {ErrorCode::InvalidMesh, "InvalidMesh"},     {ErrorCode::TooLarge, "TooLarge"},
    {ErrorCode::CannotCreate, "CannotCreate"},   {ErrorCode::WriteFailed, "WriteFailed"},
    {ErrorCode::ReaderFailed, "ReaderFailed"},   {ErrorCode::Cancelled, "Cancelled"},
}};

} // namespace

const char* errorName(ErrorCode code)
{
    const auto* row = std::find_if(names.begin(), names.end(), [code](const auto& name) { return name.first == code; });
    return row == names.end() ? "Unknown" : row->second;
}

QString Error::toStringWithCode() const
{
    const QString name = QString::fromLatin1(errorName(code));
    return place.isEmpty() ? tr("%1: %2 (%3)").arg(file, message, name)
                           : tr("%1: %2 (%3 at %4)").arg(file, message, name, place);
}

} // namespace files
