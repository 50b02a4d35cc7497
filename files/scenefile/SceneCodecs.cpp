#include "files/scenefile/SceneCodecs.h"

#include "files/scenefile/AttributeFields.h"
#include "files/scenefile/SurfaceFields.h"
#include "files/scenefile/TransformFields.h"
#include "files/scenefile/VariantFields.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/SwitchMaterial.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "host/znOpenSGExt/FileInfo.h"
#include "host/znOpenSGUberCamera/UberCamera.h"
#include "host/znOpenSGUberMaterial/UberMaterial.h"
#include "scene/Tags.h"

#include <bit>

namespace osg::scenefile
{

namespace
{

void writeGroup(const NodeCore&, ObjectNumbers&, CoreFields&) {}

NodeCorePtr readGroup(const fb::Core&, const NumberedObjects&)
{
    return Group::create();
}

void writeMaterialGroup(const NodeCore& core, ObjectNumbers& numbers, CoreFields& fields)
{
    fields.material = numbers.material(static_cast<const MaterialGroup&>(core).getMaterial());
}

NodeCorePtr readMaterialGroup(const fb::Core& record, const NumberedObjects& objects)
{
    const MaterialGroupPtr core = MaterialGroupBase::create();
    beginEditCP(core, MaterialGroupBase::MaterialFieldMask, 1);
    core->setMaterial(objects.material(record.material()));
    endEditCP(core, MaterialGroupBase::MaterialFieldMask, 1);
    return core;
}

void writeTransform(const NodeCore& core, ObjectNumbers&, CoreFields& fields)
{
    fields.matrix = matrixOf(static_cast<const Transform&>(core));
}

NodeCorePtr readTransform(const fb::Core& record, const NumberedObjects&)
{
    const TransformPtr core = TransformBase::create();
    restoreMatrix(*core, record.matrix());
    return core;
}

void writeComponentTransform(const NodeCore& core, ObjectNumbers& numbers, CoreFields& fields)
{
    writeTransform(core, numbers, fields);
    fields.components = componentsOf(static_cast<const ComponentTransform&>(core));
}

NodeCorePtr readComponentTransform(const fb::Core& record, const NumberedObjects&)
{
    const ComponentTransformPtr core = ComponentTransformBase::create();
    restoreComponents(*core, record.matrix(), record.components());
    return core;
}

void writeTransform3D(const NodeCore& core, ObjectNumbers& numbers, CoreFields& fields)
{
    writeComponentTransform(core, numbers, fields);
    fields.flags = static_cast<const Transform3D&>(core).getFlags();
}

void restoreTransform3D(const Transform3DPtr& core, const fb::Core& record)
{
    restoreComponents(*core, record.matrix(), record.components());
    if (record.flags() == 0)
        return;
    beginEditCP(core, Transform3DBase::FlagsFieldMask, 1);
    core->addFlag(record.flags());
    endEditCP(core, Transform3DBase::FlagsFieldMask, 1);
}

NodeCorePtr readTransform3D(const fb::Core& record, const NumberedObjects&)
{
    const Transform3DPtr core = Transform3DBase::create();
    restoreTransform3D(core, record);
    return core;
}

void writeExtReference(const NodeCore& core, ObjectNumbers& numbers, CoreFields& fields)
{
    const auto& reference = static_cast<const ExtReference&>(core);
    writeTransform3D(core, numbers, fields);
    fields.reference = fb::Reference(reference.getState(), numbers.fileReference(reference.getSourceFile()),
                                     numbers.fileReference(reference.getSmartFile()));
}

NodeCorePtr readExtReference(const fb::Core& record, const NumberedObjects& objects)
{
    const ExtReferencePtr core = ExtReferenceBase::create();
    restoreTransform3D(core, record);
    if (!record.reference())
        return core;
    constexpr FieldMask mask =
        ExtReferenceBase::StateFieldMask | ExtReferenceBase::SourceFileFieldMask | ExtReferenceBase::SmartFileFieldMask;
    beginEditCP(core, mask, 1);
    core->setState(record.reference()->state());
    core->setSourceFile(objects.fileReference(record.reference()->source_file()));
    core->setSmartFile(objects.fileReference(record.reference()->smart_file()));
    endEditCP(core, mask, 1);
    return core;
}

void writeUberCamera(const NodeCore& core, ObjectNumbers& numbers, CoreFields& fields)
{
    const auto& camera = static_cast<const UberCamera&>(core);
    writeTransform3D(core, numbers, fields);
    fields.camera = fb::Camera(camera.getProjection(), camera.getFieldOfView(), camera.getHeight(), camera.getNear(),
                               camera.getFar());
}

/// A projection that this program does not know is taken for a perspective.
NodeCorePtr readUberCamera(const fb::Core& record, const NumberedObjects&)
{
    const UberCameraPtr core = UberCameraBase::create();
    restoreTransform3D(core, record);
    const fb::Camera* camera = record.camera();
    if (!camera)
        return core;
    beginEditCP(core, AllFieldsMask, 1);
    core->setProjection(camera->projection() == UberCameraBase::Parallel ? UberCameraBase::Parallel
                                                                         : UberCameraBase::Perspective);
    core->setFieldOfView(camera->field_of_view());
    core->setHeight(camera->height());
    core->setNear(camera->near());
    core->setFar(camera->far());
    endEditCP(core, AllFieldsMask, 1);
    return core;
}

void writeGeometry(const NodeCore& core, ObjectNumbers& numbers, CoreFields& fields)
{
    const auto& geometry = static_cast<const Geometry&>(core);
    fields.material = numbers.material(geometry.getMaterial());
    fields.mesh = numbers.mesh(GeometryAccess::sharedMesh(geometry));
}

NodeCorePtr readGeometry(const fb::Core& record, const NumberedObjects& objects)
{
    constexpr FieldMask mask = GeometryBase::MeshFieldMask | MaterialDrawableBase::MaterialFieldMask;
    const GeometryPtr core = GeometryBase::create();
    beginEditCP(core, mask, 1);
    core->setMaterial(objects.material(record.material()));
    GeometryAccess::setMesh(*core, objects.mesh(record.mesh()));
    endEditCP(core, mask, 1);
    return core;
}

void writeSimpleMaterial(const Material& material, ObjectNumbers&, MaterialFields& fields)
{
    const auto& simple = static_cast<const SimpleMaterial&>(material);
    fields.simple =
        fb::SimpleColors(std::bit_cast<fb::Color>(simple.getAmbient()), std::bit_cast<fb::Color>(simple.getDiffuse()),
                         std::bit_cast<fb::Color>(simple.getEmission()), std::bit_cast<fb::Color>(simple.getSpecular()),
                         simple.getShininess(), simple.getTransparency());
}

void writeUberMaterial(const Material& material, ObjectNumbers&, MaterialFields& fields)
{
    const SurfaceLook& look = static_cast<const UberMaterial&>(material).getLook();
    fields.simple = fb::SimpleColors(std::bit_cast<fb::Color>(look.ambient), std::bit_cast<fb::Color>(look.diffuse),
                                     std::bit_cast<fb::Color>(look.emission), std::bit_cast<fb::Color>(look.specular),
                                     look.shininess, look.transparency);
}

MaterialPtr readUberMaterial(const fb::Material& record, const NumberedObjects&)
{
    const UberMaterialPtr material = UberMaterialBase::create();
    const fb::SimpleColors* colors = record.simple();
    if (!colors)
        return material;
    beginEditCP(material, UberMaterialBase::LookFieldMask, 1);
    material->setLook({std::bit_cast<Color3f>(colors->ambient()), std::bit_cast<Color3f>(colors->diffuse()),
                       std::bit_cast<Color3f>(colors->emission()), std::bit_cast<Color3f>(colors->specular()),
                       colors->shininess(), colors->transparency()});
    endEditCP(material, UberMaterialBase::LookFieldMask, 1);
    return material;
}

MaterialPtr readSimpleMaterial(const fb::Material& record, const NumberedObjects&)
{
    const SimpleMaterialPtr material = SimpleMaterialBase::create();
    const fb::SimpleColors* colors = record.simple();
    if (!colors)
        return material;
    beginEditCP(material, AllFieldsMask, 1);
    material->setAmbient(std::bit_cast<Color3f>(colors->ambient()));
    material->setDiffuse(std::bit_cast<Color3f>(colors->diffuse()));
    material->setEmission(std::bit_cast<Color3f>(colors->emission()));
    material->setSpecular(std::bit_cast<Color3f>(colors->specular()));
    material->setShininess(colors->shininess());
    material->setTransparency(colors->transparency());
    endEditCP(material, AllFieldsMask, 1);
    return material;
}

void writeSwitchMaterial(const Material& material, ObjectNumbers& numbers, MaterialFields& fields)
{
    const auto& choices = static_cast<const SwitchMaterial&>(material);
    fields.choice = choices.getChoice();
    for (const MaterialPtr& entry : choices.getMaterials())
        fields.materials.push_back(numbers.subMaterial(entry));
}

/// An entry of a class that is not known stays as an empty one, so that the choice stays right.
MaterialPtr readSwitchMaterial(const fb::Material& record, const NumberedObjects& objects)
{
    const SwitchMaterialPtr material = SwitchMaterialBase::create();
    beginEditCP(material, AllFieldsMask, 1);
    material->setChoice(record.choice());
    if (record.materials())
        for (const std::uint32_t number : *record.materials()) {
            material->editMaterials().push_back(objects.material(number));
            material->getMaterials().back().addRef();
        }
    endEditCP(material, AllFieldsMask, 1);
    return material;
}

void writeTags(const Attachment& attachment, ObjectNumbers& numbers, AttachmentFields& fields)
{
    for (const std::string& tag : static_cast<const TagAttachment&>(attachment).tags())
        fields.tags.push_back(numbers.text(tag));
}

AttachmentPtr readTags(const fb::Attachment& record, const NumberedObjects& objects)
{
    std::vector<std::string> tags;
    if (record.tags())
        for (const std::uint32_t text : *record.tags())
            tags.push_back(objects.text(text));
    return TagAttachment::create(std::move(tags));
}

void writeFileInfo(const Attachment& attachment, ObjectNumbers& numbers, AttachmentFields& fields)
{
    const auto& info = static_cast<const FileInfo&>(attachment);
    const std::uint32_t fileName = numbers.text(info.getFileName());
    const std::uint32_t format = numbers.text(info.getFormat());
    fields.fileInfo = fb::FileInfo(fileName, format, numbers.text(info.getImportAppliedMaterialAssetsUrl()));
}

AttachmentPtr readFileInfo(const fb::Attachment& record, const NumberedObjects& objects)
{
    const FileInfoPtr info = FileInfoBase::create();
    if (!record.file_info())
        return info;
    beginEditCP(info, AllFieldsMask, 1);
    info->setFileName(objects.text(record.file_info()->file_name()));
    info->setFormat(objects.text(record.file_info()->format()));
    info->setImportAppliedMaterialAssetsUrl(objects.text(record.file_info()->import_applied_material_assets_url()));
    endEditCP(info, AllFieldsMask, 1);
    return info;
}

void writeVariants(const Attachment& attachment, ObjectNumbers& numbers, AttachmentFields& fields)
{
    fields.variants = variantFields(static_cast<const VariantAttachment&>(attachment).table(), numbers);
}

AttachmentPtr readVariants(const fb::Attachment& record, const NumberedObjects& objects)
{
    return VariantAttachment::create(record.variants() ? restoreVariants(*record.variants(), objects) : VariantTable());
}

void writeSurface(const Attachment& attachment, ObjectNumbers& numbers, AttachmentFields& fields)
{
    fields.surface = surfaceFields(static_cast<const PhysicalSurfaceAttachment&>(attachment).getSurface(), numbers);
}

AttachmentPtr readSurface(const fb::Attachment& record, const NumberedObjects& objects)
{
    const PhysicalSurfaceAttachmentPtr attachment = PhysicalSurfaceAttachmentBase::create();
    if (!record.surface())
        return attachment;
    beginEditCP(attachment, PhysicalSurfaceAttachmentBase::SurfaceFieldMask, 1);
    attachment->setSurface(restoreSurface(*record.surface(), objects));
    endEditCP(attachment, PhysicalSurfaceAttachmentBase::SurfaceFieldMask, 1);
    return attachment;
}

/// Writers put attributes into their table (AttributeRows).
AttachmentPtr readAttributes(const fb::Attachment& record, const NumberedObjects& objects)
{
    return AttributeAttachment::create(attributesIn(record, objects));
}

const CoreCodec cores[] = {
    {Group::_type, writeGroup, readGroup},
    {MaterialGroupBase::_type, writeMaterialGroup, readMaterialGroup},
    {TransformBase::_type, writeTransform, readTransform},
    {ComponentTransformBase::_type, writeComponentTransform, readComponentTransform},
    {Transform3DBase::_type, writeTransform3D, readTransform3D},
    {ExtReferenceBase::_type, writeExtReference, readExtReference},
    {UberCameraBase::_type, writeUberCamera, readUberCamera},
    {GeometryBase::_type, writeGeometry, readGeometry},
};

const MaterialCodec materials[] = {
    {SimpleMaterialBase::_type, writeSimpleMaterial, readSimpleMaterial},
    {UberMaterialBase::_type, writeUberMaterial, readUberMaterial},
    {SwitchMaterialBase::_type, writeSwitchMaterial, readSwitchMaterial},
};

const AttachmentCodec attachments[] = {
    {TagAttachment::_type, writeTags, readTags},
    {FileInfoBase::_type, writeFileInfo, readFileInfo},
    {VariantAttachment::_type, writeVariants, readVariants},
    {PhysicalSurfaceAttachmentBase::_type, writeSurface, readSurface},
    {AttributeAttachment::_type, nullptr, readAttributes},
};

} // namespace

std::span<const CoreCodec> coreCodecs()
{
    return cores;
}

std::span<const MaterialCodec> materialCodecs()
{
    return materials;
}

std::span<const AttachmentCodec> attachmentCodecs()
{
    return attachments;
}

} // namespace osg::scenefile
