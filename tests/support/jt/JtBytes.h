#pragma once

#include "ptx/readers/jt/codec/Predictors.h"
#include "ptx/readers/jt/shapes/Shape.h"

#include <string>
#include <vector>

namespace jttest
{

inline constexpr const char* StripSet = "10dd10ab-2ac8-11d1-9b6b-0080c7bb5997";
inline constexpr const char* PolylineSet = "10dd10a1-2ac8-11d1-9b6b-0080c7bb5997";
inline constexpr const char* PolygonSet = "10dd109f-2ac8-11d1-9b6b-0080c7bb5997";
inline constexpr const char* PointSet = "98134716-0011-0818-1998-080009835d5a";

using ptx::jt::codec::Predictor;
using ptx::jt::codec::Values;

/// Writes what a JT file of one version holds, low byte first, for tests that read it again.
class JtBytes
{
public:
    explicit JtBytes(int major) : m_major(major) {}

    int major() const { return m_major; }
    const std::vector<std::uint8_t>& data() const { return m_data; }

    JtBytes& u8(unsigned value) { return number(value, 1); }
    JtBytes& u16(unsigned value) { return number(value, 2); }
    JtBytes& i32(std::int64_t value) { return number(static_cast<std::uint64_t>(value), 4); }
    JtBytes& u64(std::uint64_t value) { return number(value, 8); }
    JtBytes& f32(float value);
    JtBytes& floats(const std::vector<float>& values);
    JtBytes& text(const std::string& ascii);
    JtBytes& guid(const std::string& text);
    JtBytes& append(const JtBytes& other);
    /// The version that each block begins with, which version 8 has not.
    JtBytes& version(unsigned value = 1);
    /// A packed array of the plain codec, as what `predictor` leaves of `values`.
    JtBytes& array(const Values& values, Predictor predictor = Predictor::None);
    /// Floats as version 9 writes them: exponents, then mantissae.
    JtBytes& exponentsAndMantissae(const std::vector<float>& values, Predictor predictor);
    /// An element with its length.
    JtBytes& element(const std::string& type, unsigned base, const JtBytes& object);

private:
    JtBytes& number(std::uint64_t value, int bytes);

    int m_major;
    std::vector<std::uint8_t> m_data;
};

/// The bits of floats.
Values wordsOf(const std::vector<float>& values);

/// The check sum of arrays, one after another.
std::uint32_t sumOf(const std::vector<Values>& arrays);
/// That of floats in version 9, one by one.
std::uint32_t sumOfEach(const std::vector<std::vector<float>>& arrays);

/// What the shapes of the versions 9 and 10 begin with.
JtBytes laterHead(int major);

/// Reads a shape segment that holds one element of this type.
ptx::jt::shapes::Shape shapeOf(const std::string& type, const JtBytes& object);

} // namespace jttest
