#include "cad/visualization/PLMXMLTransforms.h"

#include "cad/xml/CADDocument.h"
#include "cad/xml/CADInstance.h"
#include "cad/xml/CADPart.h"
#include "cad/xml/CADTransform.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "import/TreeEdits.h"

#include <algorithm>

namespace HB::Visualization
{

using namespace XML::CAD;

namespace
{

/// Documents give lengths in metres.
constexpr float millimetres = 1000.0F;

osg::NodePtr addNode(const osg::NodePtr& parent, const osg::NodeCorePtr& core)
{
    const osg::NodePtr node = osg::makeNodeFor(core);
    frame::addChild(parent, node);
    return node;
}

void setAxes(const std::vector<float>& values, osg::Matrix& matrix)
{
    for (unsigned column = 0; column < 3; ++column)
        for (unsigned row = 0; row < 3; ++row)
            matrix[4 * column + row] = values[3 * column + row];
    for (const unsigned i : {3U, 7U, 11U, 12U, 13U, 14U})
        matrix[i] = 0;
    matrix[15] = 1;
}

void setOrigin(const float* metres, osg::Matrix& matrix)
{
    for (unsigned i = 0; i < 3; ++i)
        matrix[12 + i] = metres[i] * millimetres;
}

void setAll(const std::vector<float>& values, osg::Matrix& matrix)
{
    std::copy(values.begin(), values.end(), matrix.values.begin());
    setOrigin(values.data() + 12, matrix);
}

/// A count of numbers that does not fit the type leaves the matrix as it is.
void applyTransform(const CADTransform* transform, osg::Matrix& matrix)
{
    if (!transform)
        return;
    const std::vector<float> values = transform->getTransformValues();
    const auto has = [&values](std::size_t count) { return values.size() == count; };
    switch (transform->getType()) {
    case CADTransform::Type::Rotate:
    case CADTransform::Type::General3:
        if (has(9))
            setAxes(values, matrix);
        break;
    case CADTransform::Type::Translate:
        if (has(3))
            setOrigin(values.data(), matrix);
        break;
    case CADTransform::Type::Scale:
        if (has(1))
            matrix[0] = matrix[5] = matrix[10] = values[0];
        break;
    case CADTransform::Type::General:
        if (has(16))
            setAll(values, matrix);
        break;
    }
}

} // namespace

osg::TransformPtr PLMXMLTransforms::sharedCore(const std::string& reference)
{
    osg::TransformPtr& core = m_cores[reference];
    if (core)
        return core;
    osg::Matrix matrix;
    applyTransform(m_document.findTransform(reference), matrix);
    core = osg::Transform::create();
    osg::beginEditCP(core, osg::Transform::MatrixFieldMask, 1);
    core->setMatrix(matrix);
    osg::endEditCP(core, osg::Transform::MatrixFieldMask, 1);
    return core;
}

osg::NodePtr PLMXMLTransforms::addInstanceTransform(const osg::NodePtr& parent, const std::string& reference,
                                                    const CADInstance& instance)
{
    const osg::NodePtr node = addNode(parent, sharedCore(reference));
    if (!instance.getName().empty())
        osg::setName(node, instance.getName());
    else if (const CADPart* part = m_document.findPartById(instance.getPartRef()))
        osg::setName(node, part->getName());
    return node;
}

osg::NodePtr PLMXMLTransforms::addRepresentationTransform(const osg::NodePtr& parent, const std::string& reference)
{
    if (reference.empty())
        return parent;
    const auto found = m_cores.find(reference);
    if (found != m_cores.end())
        return addNode(parent, found->second);
    const CADTransform* transform = m_document.findTransform(reference);
    if (!transform)
        return parent;
    osg::Matrix matrix;
    applyTransform(transform, matrix);
    const osg::TransformPtr core = osg::Transform::create();
    core->setMatrix(matrix);
    return addNode(parent, core);
}

} // namespace HB::Visualization
