#include "files/vrml/VrmlTransforms.h"

#include "files/vrml/VrmlGeometry.h"
#include "scene/MatrixMath.h"

#include <cmath>

namespace files::vrml
{

osg::Quaternion rotationOf(std::span<const float> numbers)
{
    if (numbers.size() < 4)
        return {};
    const double length = std::hypot(double(numbers[0]), double(numbers[1]), double(numbers[2]));
    if (!(length > 0))
        return {};
    const double half = double(numbers[3]) / 2;
    const double sine = std::sin(half) / length;
    return {float(numbers[0] * sine), float(numbers[1] * sine), float(numbers[2] * sine), float(std::cos(half))};
}

osg::Matrix matrixOf(const Node& transform)
{
    using namespace osg;
    const Vec3f center = vectorOf(transform.floats("center"), {});
    const Quaternion along = rotationOf(transform.floats("scaleOrientation"));
    const Matrix moved = translationMatrix(vectorOf(transform.floats("translation"), {}));
    const Matrix turned = rotationMatrix(rotationOf(transform.floats("rotation")));
    const Matrix scaled = rotationMatrix(along) * scaleMatrix(vectorOf(transform.floats("scale"), {1, 1, 1})) *
                          rotationMatrix({-along.x, -along.y, -along.z, along.w});
    return moved * translationMatrix(center) * turned * scaled * translationMatrix({-center.x, -center.y, -center.z});
}

} // namespace files::vrml
