#include "standalone/znAssets/AssetMaterials.h"

#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/ImageAttachment.h"
#include "host/OSGSystem/Names.h"
#include "host/znOpenSGExt/AssetAttachment.h"
#include "host/znOpenSGUberMaterial/UBRDFMaterial.h"
#include "scene/MaterialLook.h"
#include "scene/SceneEdits.h"
#include "standalone/loading/ReferenceCheck.h"
#include "standalone/session/Session.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>

namespace zn::assets
{

namespace
{

constexpr int largestEdge = 16'384;

/// Null, with what is wrong in `complaint`, when there is no picture of a bearable size.
QImage pictureAt(const QString& path, QString& complaint)
{
    QImageReader reader(path);
    const QSize size = reader.size();
    if (std::max(size.width(), size.height()) > largestEdge) {
        complaint = QCoreApplication::translate("znAssets", "%1: the picture is too large.").arg(path);
        return {};
    }
    QImage picture = reader.read().convertToFormat(QImage::Format_RGB888);
    if (picture.isNull())
        complaint = path + QStringLiteral(": ") + reader.errorString();
    return picture;
}

osg::ImageAttachmentBase::Pixels pixelsOf(const QImage& picture)
{
    osg::ImageAttachmentBase::Pixels pixels;
    for (int row = 0; row < picture.height(); ++row) {
        const uchar* line = picture.constScanLine(row);
        pixels.insert(pixels.end(), line, line + std::ptrdiff_t{3} * picture.width());
    }
    return pixels;
}

osg::AttachmentPtr imageFrom(const QString& path, const QImage& picture)
{
    const osg::ImageAttachmentPtr image = osg::ImageAttachment::create();
    osg::beginEditCP(image, osg::AllFieldsMask, 1);
    image->setFileName(path.toStdString());
    image->setImage(static_cast<unsigned>(picture.width()), static_cast<unsigned>(picture.height()), pixelsOf(picture));
    osg::endEditCP(image, osg::AllFieldsMask, 1);
    return image;
}

/// Why the file at `path`, which `asset` names, is not read; empty when it is. A pipe or a device is none.
QString whyNot(const QString& path, const QString& asset)
{
    files::references::Policy policy;
    if (Session* const session = Session::current())
        policy = loading::referencePolicy(*session);
    if (const auto refusal = files::refusalOf(policy, files::references::Use::Bytes, path, asset))
        return files::textOf(*refusal);
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile())
        return QCoreApplication::translate("znAssets", "this is no regular file");
    return {};
}

osg::MaterialPtr makeEnvironment(const QString& path, const QString& asset, QStringList& complaints)
{
    const osg::UberMaterialPtr environment = osg::UberMaterial::create();
    osg::setName(environment, QFileInfo(path).completeBaseName().toStdString());
    QString complaint = whyNot(path, asset);
    const bool isTaken = complaint.isEmpty();
    if (!isTaken)
        complaint = path + QStringLiteral(": ") + complaint;
    const QImage picture = isTaken ? pictureAt(path, complaint) : QImage();
    if (picture.isNull())
        complaints.append(complaint);
    else
        osg::attach(environment, imageFrom(path, picture));
    return environment;
}

osg::AttachmentPtr uuidAttachment(const std::string& uuid)
{
    const osg::AssetAttachmentPtr attachment = osg::AssetAttachment::create();
    osg::beginEditCP(attachment, osg::AssetAttachmentBase::UuidFieldMask, 1);
    attachment->setUuid(uuid);
    osg::endEditCP(attachment, osg::AssetAttachmentBase::UuidFieldMask, 1);
    return attachment;
}

osg::SurfaceLook surfaceOf(const files::MaterialLook& look)
{
    return {look.ambient, look.diffuse, look.emission, look.specular, look.shininess, look.transparency};
}

} // namespace

osg::MaterialPtr makeAssetMaterial(const AssetLibrary::Entry& entry, QStringList& complaints)
{
    const osg::UBRDFMaterialPtr material = osg::UBRDFMaterial::create();
    osg::setName(material, entry.asset.name);
    osg::attach(material, uuidAttachment(entry.asset.uuid));
    osg::beginEditCP(material, osg::AllFieldsMask, 1);
    material->setLook(surfaceOf(entry.asset.look));
    if (!entry.asset.environmentImage.empty()) {
        const QString picture = QString::fromStdString(entry.asset.environmentImage);
        const QString path = QDir::cleanPath(QFileInfo(entry.file).dir().absoluteFilePath(picture));
        material->setEnvironment(makeEnvironment(path, entry.file, complaints));
    }
    osg::endEditCP(material, osg::AllFieldsMask, 1);
    if (entry.asset.look.surface)
        osg::setSurface(material, *entry.asset.look.surface);
    return material;
}

} // namespace zn::assets
