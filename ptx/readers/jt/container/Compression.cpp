#include "ptx/readers/jt/container/Compression.h"

#include <algorithm>
#include <lzma.h>
#include <zlib.h>

namespace ptx::jt::container
{

namespace
{

constexpr std::size_t Step = 1u << 16;

std::size_t mostUnpacked(std::size_t packed)
{
    return std::max<std::size_t>(64u << 20, 200 * packed);
}

template <class Feed>
std::vector<std::uint8_t> inflateSteps(std::size_t most, Damage& damage, std::size_t offset, Feed feed)
{
    std::vector<std::uint8_t> out;
    for (;;) {
        const std::size_t before = out.size();
        if (before >= most) {
            damage = {"a segment unpacks to more than it can mean", offset};
            return {};
        }
        out.resize(before + Step);
        std::size_t made = 0;
        const int state = feed(out.data() + before, made);
        out.resize(before + made);
        if (state > 0)
            return out;
        if (state < 0 || made == 0) {
            damage = {"a segment does not unpack", offset};
            return {};
        }
    }
}

} // namespace

std::vector<std::uint8_t> inflateXz(Bytes packed, std::size_t offset, Damage& damage)
{
    lzma_stream stream = LZMA_STREAM_INIT;
    if (lzma_stream_decoder(&stream, 256u << 20, 0) != LZMA_OK) {
        damage = {"a segment does not unpack", offset};
        return {};
    }
    stream.next_in = packed.data();
    stream.avail_in = packed.size();
    auto out = inflateSteps(mostUnpacked(packed.size()), damage, offset, [&](std::uint8_t* to, std::size_t& made) {
        stream.next_out = to;
        stream.avail_out = Step;
        const lzma_ret state = lzma_code(&stream, LZMA_FINISH);
        made = Step - stream.avail_out;
        return state == LZMA_STREAM_END ? 1 : state == LZMA_OK ? 0 : -1;
    });
    lzma_end(&stream);
    return out;
}

std::vector<std::uint8_t> inflateZlib(Bytes packed, std::size_t offset, Damage& damage)
{
    z_stream stream{};
    if (inflateInit(&stream) != Z_OK) {
        damage = {"a segment does not unpack", offset};
        return {};
    }
    stream.next_in = const_cast<Bytef*>(packed.data());
    stream.avail_in = static_cast<uInt>(packed.size());
    auto out = inflateSteps(mostUnpacked(packed.size()), damage, offset, [&](std::uint8_t* to, std::size_t& made) {
        stream.next_out = to;
        stream.avail_out = Step;
        const int state = inflate(&stream, Z_NO_FLUSH);
        made = Step - stream.avail_out;
        return state == Z_STREAM_END ? 1 : state == Z_OK ? 0 : -1;
    });
    inflateEnd(&stream);
    return out;
}

} // namespace ptx::jt::container
