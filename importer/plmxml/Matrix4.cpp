#include "importer/plmxml/Matrix4.h"

#include "importer/plmxml/Numbers.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <vector>

namespace importer::plmxml
{

namespace
{

/// Those of all texts in an element. Empty when a word is none, or when there are too many.
std::vector<double> numbersOf(const pugi::xml_node& element)
{
    std::vector<double> numbers;
    for (pugi::xml_node child = element.first_child(); child; child = child.next_sibling()) {
        if (child.type() != pugi::node_pcdata && child.type() != pugi::node_cdata)
            continue;
        const std::optional<std::vector<double>> more = numbersIn(child.value());
        if (!more || numbers.size() + more->size() > MostNumbers)
            return {};
        numbers.insert(numbers.end(), more->begin(), more->end());
    }
    return numbers;
}

Matrix4 withAxes(const std::vector<double>& axes)
{
    Matrix4 matrix = Identity4;
    for (std::size_t i = 0; i < 9; ++i)
        matrix[i / 3 * 4 + i % 3] = axes[i];
    return matrix;
}

Matrix4 ofSixteen(const std::vector<double>& numbers)
{
    Matrix4 matrix = Identity4;
    std::copy(numbers.begin(), numbers.end(), matrix.begin());
    const double divisor = matrix[15] == 0 ? 1 : matrix[15];
    for (const std::size_t i : {12u, 13u, 14u})
        matrix[i] /= divisor;
    matrix[3] = matrix[7] = matrix[11] = 0;
    matrix[15] = 1;
    return matrix;
}

double cofactor(const Matrix4& m, std::size_t row, std::size_t column)
{
    const std::size_t r1 = (row + 1) % 3, r2 = (row + 2) % 3, c1 = (column + 1) % 3, c2 = (column + 2) % 3;
    return m[r1 * 4 + c1] * m[r2 * 4 + c2] - m[r1 * 4 + c2] * m[r2 * 4 + c1];
}

} // namespace

std::optional<Matrix4> matrixOf(const pugi::xml_node& transform)
{
    const std::vector<double> numbers = numbersOf(transform);
    const std::string_view type = transform.attribute("type").value();
    if (type == "translate" && numbers.size() == 3)
        return Matrix4{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, numbers[0], numbers[1], numbers[2], 1};
    if ((type == "rotate" || type == "general3") && numbers.size() == 9)
        return withAxes(numbers);
    if (type == "scale" && numbers.size() == 1)
        return Matrix4{numbers[0], 0, 0, 0, 0, numbers[0], 0, 0, 0, 0, numbers[0], 0, 0, 0, 0, 1};
    const bool isGeneral = type != "translate" && type != "rotate" && type != "general3" && type != "scale";
    return isGeneral && numbers.size() == 16 ? std::optional(ofSixteen(numbers)) : std::nullopt;
}

bool hasPlainEnd(const pugi::xml_node& transform)
{
    const std::vector<double> numbers = numbersOf(transform);
    return numbers.size() != 16 || numbers.back() == 1;
}

Matrix4 operator*(const Matrix4& inner, const Matrix4& outer)
{
    Matrix4 product{};
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column)
            for (std::size_t i = 0; i < 4; ++i)
                product[row * 4 + column] += inner[row * 4 + i] * outer[i * 4 + column];
    return product;
}

std::optional<Matrix4> inverseOf(const Matrix4& matrix)
{
    double determinant = 0;
    double size = 1;
    for (std::size_t i = 0; i < 3; ++i) {
        determinant += matrix[i] * cofactor(matrix, 0, i);
        size *= std::hypot(matrix[i * 4], matrix[i * 4 + 1], matrix[i * 4 + 2]);
    }
    if (!std::isfinite(determinant) || std::abs(determinant) <= 1e-9 * size)
        return std::nullopt;
    Matrix4 inverse = Identity4;
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column)
            inverse[row * 4 + column] = cofactor(matrix, column, row) / determinant;
    for (std::size_t column = 0; column < 3; ++column) {
        inverse[12 + column] = 0;
        for (std::size_t i = 0; i < 3; ++i)
            inverse[12 + column] -= matrix[12 + i] * inverse[i * 4 + column];
    }
    return inverse;
}

bool isNear(const Matrix4& a, const Matrix4& b)
{
    double length = 1;
    for (const std::size_t i : {12u, 13u, 14u})
        length = std::max({length, std::abs(a[i]), std::abs(b[i])});
    for (std::size_t i = 0; i < 16; ++i)
        if (!(std::abs(a[i] - b[i]) <= 1e-6 * (i >= 12 ? length : 1)))
            return false;
    return true;
}

} // namespace importer::plmxml
