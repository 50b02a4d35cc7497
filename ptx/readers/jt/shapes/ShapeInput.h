#pragma once

#include "ptx/readers/jt/codec/Packets.h"
#include "ptx/readers/jt/codec/Predictors.h"

#include <algorithm>

namespace ptx::jt::shapes
{

/// The element of a shape segment while it is read: what the readers of its parts share.
struct ShapeInput {
    ShapeInput(container::Cursor data, int version)
        : in(data), packets(in, version, std::max<std::size_t>(LeastValues, ValuesPerByte * in.left())), major(version)
    {
    }
    ShapeInput(const ShapeInput&) = delete;
    ShapeInput& operator=(const ShapeInput&) = delete;

    codec::Values array(codec::Predictor predictor)
    {
        codec::Values values = packets.read();
        codec::predict(values, predictor);
        return values;
    }

    /// An error of this text unless the check sum that comes next is `hash`.
    void compare(std::uint32_t hash, const char* what) { compare(in.u32(), hash, what); }

    void compare(std::uint32_t stored, std::uint32_t hash, const char* what)
    {
        ++hashes;
        if (stored != hash)
            in.fail(what);
    }

    // What a segment may decode to.
    static constexpr std::size_t LeastValues = 1u << 20;
    static constexpr std::size_t ValuesPerByte = 64;

    container::Cursor in;
    codec::PacketReader packets;
    int major;
    unsigned hashes = 0; ///< that were compared
};

} // namespace ptx::jt::shapes
