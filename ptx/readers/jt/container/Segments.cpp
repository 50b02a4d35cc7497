#include "ptx/readers/jt/container/Segments.h"

#include "ptx/readers/jt/container/Compression.h"

#include <algorithm>
#include <cstdio>

namespace ptx::jt::container
{

namespace
{

constexpr std::size_t TextSize = 80;
constexpr std::size_t SegmentHeader = 24;

bool readVersion(Bytes text, Framing& framing)
{
    const std::string line(text.begin(), text.end());
    return std::sscanf(line.c_str(), "Version %2d.%2d", &framing.major, &framing.minor) == 2 && framing.major >= 8 &&
           framing.major <= 10;
}

std::uint64_t fileOffset(Cursor& cursor, int major)
{
    return major >= 10 ? cursor.number<std::uint64_t>() : cursor.u32();
}

void readTable(Bytes file, std::uint64_t table, Framing& framing)
{
    Cursor toc(file.subspan(table), framing.isBigEndian, table);
    const std::size_t n = toc.count(framing.major >= 10 ? 32 : 28);
    struct Row {
        Guid id;
        std::uint64_t offset;
        int type;
    };
    std::vector<Row> rows;
    std::vector<std::uint64_t> ends = {table, file.size()};
    for (std::size_t i = 0; i < n; ++i) {
        Row row{readGuid(toc), fileOffset(toc, framing.major), 0};
        toc.u32(); // lengths of some writers are too short
        row.type = static_cast<int>(toc.u32() >> 24);
        rows.push_back(row);
        ends.push_back(row.offset);
    }
    std::sort(ends.begin(), ends.end());
    for (const Row& row : rows) {
        const std::uint64_t end =
            std::min<std::uint64_t>(file.size(), *std::upper_bound(ends.begin(), ends.end() - 1, row.offset));
        if (row.offset <= file.size() && end >= row.offset && end - row.offset >= SegmentHeader)
            framing.segments[row.id] = {row.type, row.offset + SegmentHeader,
                                        file.subspan(row.offset + SegmentHeader, end - row.offset - SegmentHeader)};
    }
    if (!toc.isOk())
        framing.damage = toc.damage();
}

} // namespace

Guid readGuid(Cursor& cursor)
{
    const auto a = cursor.u32();
    const auto b = cursor.number<std::uint16_t>();
    const auto c = cursor.number<std::uint16_t>();
    Guid guid{std::uint8_t(a >> 24), std::uint8_t(a >> 16), std::uint8_t(a >> 8), std::uint8_t(a),
              std::uint8_t(b >> 8),  std::uint8_t(b),       std::uint8_t(c >> 8), std::uint8_t(c)};
    const Bytes rest = cursor.take(8);
    std::copy(rest.begin(), rest.end(), guid.begin() + 8);
    return guid;
}

std::string guidText(const Guid& guid)
{
    std::string text;
    char digits[3];
    for (std::size_t i = 0; i < guid.size(); ++i) {
        std::snprintf(digits, sizeof digits, "%02x", guid[i]);
        text += (i == 4 || i == 6 || i == 8 || i == 10 ? "-" : "");
        text += digits;
    }
    return text;
}

bool isJtHeader(std::string_view head)
{
    Framing framing;
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(head.data());
    return head.size() > TextSize && readVersion({bytes, TextSize}, framing);
}

Framing readFraming(Bytes file)
{
    Framing framing;
    Cursor text(file, false);
    if (!readVersion(text.take(TextSize), framing)) {
        framing.damage = {"the file does not begin as a JT file of version 8, 9 or 10", 0};
        return framing;
    }
    framing.isBigEndian = text.u8() == 1;
    Cursor header(text.rest(), framing.isBigEndian, TextSize + 1);
    header.u32();
    const std::uint64_t table = fileOffset(header, framing.major);
    framing.sceneGraph = readGuid(header);
    if (!header.isOk() || table > file.size())
        framing.damage = {"the table of contents lies beyond the end of the file", TextSize};
    else
        readTable(file, table, framing);
    return framing;
}

std::vector<std::uint8_t> unpack(const Segment& segment, bool isBigEndian, Damage& damage)
{
    Cursor head(segment.data, isBigEndian, segment.offset);
    head.u32();
    const std::int32_t length = head.i32();
    const int algorithm = head.u8();
    if (!head.isOk() || length < 1 || static_cast<std::size_t>(length) - 1 > head.left()) {
        damage = {"the header of a packed segment is damaged", segment.offset};
        return {};
    }
    const Bytes packed = head.take(static_cast<std::size_t>(length) - 1);
    if (algorithm == 2)
        return inflateZlib(packed, segment.offset, damage);
    if (algorithm == 3)
        return inflateXz(packed, segment.offset, damage);
    return {packed.begin(), packed.end()};
}

bool nextElement(Cursor& list, Element& element)
{
    if (list.left() < 20)
        return false;
    const std::size_t length = list.count(1);
    Cursor data = list.part(length);
    const Guid type = readGuid(data);
    if (!list.isOk() || !data.isOk() || std::all_of(type.begin(), type.end(), [](int byte) { return byte == 0xFF; }))
        return false;
    element.type = guidText(type);
    element.base = data.u8();
    element.data = data;
    return data.isOk();
}

} // namespace ptx::jt::container
