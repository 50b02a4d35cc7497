#pragma once

#include "ptx/readers/jt/container/Cursor.h"

#include <array>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace ptx::jt::container
{

/// Sixteen bytes as a text writes them: byte order of the file undone.
using Guid = std::array<std::uint8_t, 16>;

Guid readGuid(Cursor& cursor);
/// The form with dashes, lower case.
std::string guidText(const Guid& guid);

struct Segment {
    int type = 0;
    std::size_t offset = 0; ///< of its data in the file
    Bytes data;             ///< as it lies in the file
};

/// Which parts a file is made of. It refers to the bytes of the file.
struct Framing {
    int major = 0;
    int minor = 0;
    bool isBigEndian = false;
    Guid sceneGraph{};
    std::map<Guid, Segment> segments;
    Damage damage;
};

/// Whether `head`, the beginning of a file, is that of a JT file of a version that is read.
bool isJtHeader(std::string_view head);

Framing readFraming(Bytes file);

/// The unpacked data of a segment of a type that is packed as a whole; `damage` tells why it is empty.
std::vector<std::uint8_t> unpack(const Segment& segment, bool isBigEndian, Damage& damage);

/// The next element of a list.
struct Element {
    std::string type; ///< its GUID as text
    int base = 0;
    Cursor data;
};

/// Whether there was one: false at the mark of the end and at the end of the data.
bool nextElement(Cursor& list, Element& element);

} // namespace ptx::jt::container
