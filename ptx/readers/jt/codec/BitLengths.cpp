#include "ptx/readers/jt/codec/BitLengths.h"

#include "ptx/readers/jt/codec/BitReader.h"

#include <bit>

namespace ptx::jt::codec
{

Values decodeBitLengths(const CodeText& text, container::Cursor& cursor)
{
    BitReader bits(text.words, text.flip);
    Values values;
    int width = 0;
    while (bits.position() < text.bits) {
        if (bits.u(1) == 1) {
            const std::uint32_t up = bits.u(1);
            do {
                width += up ? 2 : -2;
                if (width < 0 || width > 32 || bits.isBeyond(text.bits))
                    return failed(cursor, "a bit width is out of range");
            } while (bits.u(1) == up);
        }
        if (values.size() == text.count)
            return failed(cursor, "an array has more values than it says");
        values.push_back(bits.s(static_cast<unsigned>(width)));
    }
    return values;
}

Values decodeBitLengths(const CodeText& text, int major, container::Cursor& cursor)
{
    const bool isMark2 = major < 10;
    BitReader bits(text.words, text.flip);
    const auto nibbles = [&] {
        std::uint32_t value = 0;
        unsigned k = 0;
        do
            value |= bits.u(4) << 4 * k++;
        while (bits.u(1) == 1 && k < 8);
        const unsigned unused = 32 - 4 * k;
        return static_cast<std::int32_t>(value << unused) >> unused;
    };
    Values values;
    values.reserve(text.count);
    if (bits.u(1) == 0) {
        const unsigned a = isMark2 ? bits.u(6) : 0;
        const unsigned b = isMark2 ? bits.u(6) : 0;
        if (a > 32 || b > 32)
            return failed(cursor, "a bit width is out of range");
        const std::int32_t least = isMark2 ? bits.s(a) : nibbles();
        const std::int32_t most = isMark2 ? bits.s(b) : nibbles();
        if (most < least)
            return failed(cursor, "the range of an array is empty");
        const auto low = static_cast<std::uint32_t>(least);
        const auto width = static_cast<unsigned>(std::bit_width(static_cast<std::uint32_t>(most) - low));
        for (std::size_t i = 0; i < text.count; ++i)
            values.push_back(static_cast<std::int32_t>(bits.u(width) + low));
        return bits.isBeyond(text.bits) ? failed(cursor, "an array has fewer bits than its values need") : values;
    }
    const auto mean = static_cast<std::uint32_t>(isMark2 ? bits.s(32) : nibbles());
    const unsigned stepBits = isMark2 ? bits.u(3) : 4;
    const unsigned runBits = isMark2 ? bits.u(3) : 4;
    if (stepBits < 2 || runBits == 0)
        return failed(cursor, "a bit width is out of range");
    const std::int32_t least = -(1 << (stepBits - 1));
    int width = 0;
    while (values.size() < text.count) {
        std::int32_t step = 0;
        do {
            step = bits.s(stepBits);
            width += step;
            if (bits.isBeyond(text.bits))
                return failed(cursor, "an array has fewer bits than its values need");
        } while (step == least || step == -least - 1);
        if (width < 0 || width > 32)
            return failed(cursor, "a bit width is out of range");
        for (std::uint32_t run = bits.u(runBits); run > 0 && values.size() < text.count; --run)
            values.push_back(
                static_cast<std::int32_t>(static_cast<std::uint32_t>(bits.s(static_cast<unsigned>(width))) + mean));
    }
    return bits.isBeyond(text.bits) ? failed(cursor, "an array has fewer bits than its values need") : values;
}

} // namespace ptx::jt::codec
