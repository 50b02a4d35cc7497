#pragma once

#include "host/OSGSystem/FieldContainerPtr.h"

/// The pointer types of the scene graph's classes.
namespace osg
{

class AttachmentContainer;
class Attachment;
class Node;
class NodeCore;
class Group;
class Transform;
class ComponentTransform;
class Transform3D;
class Drawable;
class MaterialDrawable;
class Geometry;
class Material;
class ChunkMaterial;
class SimpleMaterial;

///@{
/// Pointer to the class of this name, which converts to the pointers to its base classes. See FCPtr.
using AttachmentContainerPtr = FCPtr<FieldContainerPtr, AttachmentContainer>;
using AttachmentPtr = FCPtr<FieldContainerPtr, Attachment>;
using NodePtr = FCPtr<AttachmentContainerPtr, Node>;
using NodeCorePtr = FCPtr<AttachmentContainerPtr, NodeCore>;
using GroupPtr = FCPtr<NodeCorePtr, Group>;
using TransformPtr = FCPtr<GroupPtr, Transform>;
using ComponentTransformPtr = FCPtr<TransformPtr, ComponentTransform>;
using Transform3DPtr = FCPtr<ComponentTransformPtr, Transform3D>;
using DrawablePtr = FCPtr<NodeCorePtr, Drawable>;
using MaterialDrawablePtr = FCPtr<DrawablePtr, MaterialDrawable>;
using GeometryPtr = FCPtr<MaterialDrawablePtr, Geometry>;
using MaterialPtr = FCPtr<AttachmentContainerPtr, Material>;
using ChunkMaterialPtr = FCPtr<MaterialPtr, ChunkMaterial>;
using SimpleMaterialPtr = FCPtr<ChunkMaterialPtr, SimpleMaterial>;
///@}

} // namespace osg
