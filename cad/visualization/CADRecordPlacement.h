#pragma once

#include "host/OSGSystem/Node.h"

#include <vector>

/// The placement of a node whose core is an `osg::ComponentTransform`. For any other node, and for null, setters do
/// nothing and getters give an empty vector. Lengths are millimetres, angles radians.
namespace HB::Visualization::CADRecordPlacement
{

///@{
/// Where the node stands.
void setTranslation(const osg::NodePtr& node, float x, float y, float z);
std::vector<float> getTranslation(const osg::NodePtr& node);
///@}

/// An axis of no length stands for no rotation.
void setRotation(const osg::NodePtr& node, float x, float y, float z, float angle);
/// The unit axis and the angle; (0, 0, 1, 0) for no rotation.
std::vector<float> getRotation(const osg::NodePtr& node);

///@{
/// Factors along the axes.
void setScale(const osg::NodePtr& node, float x, float y, float z);
std::vector<float> getScale(const osg::NodePtr& node);
///@}

} // namespace HB::Visualization::CADRecordPlacement
