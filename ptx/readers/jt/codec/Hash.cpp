#include "ptx/readers/jt/codec/Hash.h"

namespace ptx::jt::codec
{

namespace
{

struct State {
    std::uint32_t a = 0x9e3779b9u;
    std::uint32_t b = 0x9e3779b9u;
    std::uint32_t c = 0;

    void round(int right1, int left, int right2)
    {
        a = (a - b - c) ^ (c >> right1);
        b = (b - c - a) ^ (a << left);
        c = (c - a - b) ^ (b >> right2);
    }

    void mix()
    {
        round(13, 8, 13);
        round(12, 16, 5);
        round(3, 10, 15);
    }
};

} // namespace

std::uint32_t hash32(std::span<const std::int32_t> values, std::uint32_t seed)
{
    State state{.c = seed};
    const auto word = [&](std::size_t i) { return static_cast<std::uint32_t>(values[i]); };
    std::size_t i = 0;
    for (; values.size() - i >= 3; i += 3) {
        state.a += word(i);
        state.b += word(i + 1);
        state.c += word(i + 2);
        state.mix();
    }
    state.c += static_cast<std::uint32_t>(values.size());
    if (values.size() - i == 2)
        state.b += word(i + 1);
    if (values.size() - i >= 1)
        state.a += word(i);
    state.mix();
    return state.c;
}

std::uint32_t hash16(std::span<const std::int32_t> values, std::uint32_t seed)
{
    State state{.c = seed};
    std::size_t i = 0;
    const auto half = [&](std::size_t k, int shift) {
        return i + k < values.size() ? (static_cast<std::uint32_t>(values[i + k]) & 0xFFFFu) << shift : 0u;
    };
    for (; values.size() - i >= 6; i += 6) {
        state.a += half(0, 0) + half(1, 16);
        state.b += half(2, 0) + half(3, 16);
        state.c += half(4, 0) + half(5, 16);
        state.mix();
    }
    // The low half of the last word is taken by the length.
    state.c += static_cast<std::uint32_t>(values.size()) + half(4, 16);
    state.b += half(2, 0) + half(3, 16);
    state.a += half(0, 0) + half(1, 16);
    state.mix();
    return state.c;
}

} // namespace ptx::jt::codec
