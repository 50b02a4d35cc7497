#include "tests/support/jt/JtBytes.h"

#include "ptx/readers/jt/codec/Hash.h"

#include <bit>

namespace jttest
{

namespace
{

// The residuals from which the values come again; the reader's own prediction of the values so far is what they lack.
Values residualsOf(const Values& values, Predictor predictor)
{
    Values residuals = values;
    for (std::size_t i = 4; i < values.size(); ++i) {
        Values guess(residuals.begin(), residuals.begin() + static_cast<std::ptrdiff_t>(i));
        guess.push_back(0);
        ptx::jt::codec::predict(guess, predictor);
        residuals[i] =
            static_cast<std::int32_t>(static_cast<std::uint32_t>(values[i]) - static_cast<std::uint32_t>(guess[i]));
    }
    return residuals;
}

} // namespace

JtBytes& JtBytes::number(std::uint64_t value, int bytes)
{
    for (int i = 0; i < bytes; ++i)
        m_data.push_back(static_cast<std::uint8_t>(value >> 8 * i));
    return *this;
}

JtBytes& JtBytes::f32(float value)
{
    return i32(std::bit_cast<std::int32_t>(value));
}

JtBytes& JtBytes::floats(const std::vector<float>& values)
{
    for (const float value : values)
        f32(value);
    return *this;
}

JtBytes& JtBytes::text(const std::string& ascii)
{
    i32(static_cast<std::int64_t>(ascii.size()));
    for (const char letter : ascii)
        u16(static_cast<unsigned char>(letter));
    return *this;
}

JtBytes& JtBytes::guid(const std::string& text)
{
    const auto part = [&](std::size_t at, std::size_t digits) {
        return std::stoull(text.substr(at, digits), nullptr, 16);
    };
    number(part(0, 8), 4).number(part(9, 4), 2).number(part(14, 4), 2);
    for (const std::size_t at : {19u, 21u, 24u, 26u, 28u, 30u, 32u, 34u})
        number(part(at, 2), 1);
    return *this;
}

JtBytes& JtBytes::append(const JtBytes& other)
{
    m_data.insert(m_data.end(), other.m_data.begin(), other.m_data.end());
    return *this;
}

JtBytes& JtBytes::version(unsigned value)
{
    return m_major < 9 ? *this : number(value, m_major < 10 ? 2 : 1);
}

JtBytes& JtBytes::array(const Values& values, Predictor predictor)
{
    const auto n = static_cast<std::int64_t>(values.size());
    if (m_major < 9)
        u8(0).i32(n);
    else if (i32(n); n > 0)
        u8(0).i32(32 * n);
    for (const std::int32_t residual : residualsOf(values, predictor))
        i32(residual);
    return *this;
}

JtBytes& JtBytes::exponentsAndMantissae(const std::vector<float>& values, Predictor predictor)
{
    Values exponents;
    Values mantissae;
    for (const std::int32_t word : wordsOf(values)) {
        exponents.push_back(static_cast<std::int32_t>(static_cast<std::uint32_t>(word) >> 23));
        mantissae.push_back(word & 0x7FFFFF);
    }
    return array(exponents, predictor).array(mantissae, predictor);
}

JtBytes& JtBytes::element(const std::string& type, unsigned base, const JtBytes& object)
{
    return i32(17 + static_cast<std::int64_t>(object.m_data.size())).guid(type).u8(base).append(object);
}

Values wordsOf(const std::vector<float>& values)
{
    Values words;
    for (const float value : values)
        words.push_back(std::bit_cast<std::int32_t>(value));
    return words;
}

std::uint32_t sumOf(const std::vector<Values>& arrays)
{
    std::uint32_t sum = 0;
    for (const Values& values : arrays)
        sum = ptx::jt::codec::hash32(values, sum);
    return sum;
}

std::uint32_t sumOfEach(const std::vector<std::vector<float>>& arrays)
{
    std::uint32_t sum = 0;
    for (const std::vector<float>& values : arrays)
        for (const std::int32_t word : wordsOf(values))
            sum = ptx::jt::codec::hash32({&word, 1}, sum);
    return sum;
}

JtBytes laterHead(int major)
{
    JtBytes head(major);
    head.i32(7).version().version().u64(0x1A);
    if (major >= 10)
        head.i32(17).guid("11c12d32-38f9-45ba-93ba-66f9d538ddfb").u8(9).i32(8);
    return head.version().i32(9).version(2);
}

ptx::jt::shapes::Shape shapeOf(const std::string& type, const JtBytes& object)
{
    JtBytes list(object.major());
    list.element(type, 4, object);
    return ptx::jt::shapes::readShape({7, 1000, list.data()}, object.major(), false);
}

} // namespace jttest
