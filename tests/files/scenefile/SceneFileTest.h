#pragma once

#include "files/scenefile/ReadScene.h"
#include "files/scenefile/SceneFile.h"
#include "scene/Mesh.h"
#include "tests/scene/SceneGraphTest.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <functional>

/// A test with a folder of its own, whose name has a blank and an umlaut.
class SceneFileTest : public SceneGraphTest
{
protected:
    using NodeRef = osg::RefPtr<osg::NodePtr>;
    using Code = files::ErrorCode;

    SceneFileTest() : m_folder(QDir::tempPath() + QString::fromUtf8("/scene files ä-XXXXXX")) {}

    QString path(const char* name = "scene.osb") const { return m_folder.filePath(QString::fromUtf8(name)); }
    QStringList filesLeft() const
    {
        return QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    static std::vector<std::byte> contentOf(const QString& file)
    {
        QFile source(file);
        EXPECT_TRUE(source.open(QIODevice::ReadOnly)) << file.toStdString();
        const QByteArray bytes = source.readAll();
        const auto* start = reinterpret_cast<const std::byte*>(bytes.constData());
        return {start, start + bytes.size()};
    }

    /// The bytes of the file that `root` is written to.
    std::vector<std::byte> written(const osg::NodePtr& root) const
    {
        const files::Result<std::uint64_t> result = osg::scenefile::writeSceneFile(root, path());
        EXPECT_TRUE(result) << (result ? "" : result.error().toString().toStdString());
        return contentOf(path());
    }

    /// Reads from memory, where the sanitizers see each step outside the file.
    static files::Result<osg::NodePtr> read(const std::vector<std::byte>& bytes,
                                            const osg::scenefile::SceneFileReadOptions& options = {})
    {
        return osg::scenefile::readScene(osg::scenefile::copyBytes(bytes), options);
    }

    /// What comes back of a tree that was written and read.
    NodeRef roundTrip(const osg::NodePtr& root) const
    {
        written(root);
        const files::Result<osg::NodePtr> result = osg::scenefile::readSceneFile(path());
        EXPECT_TRUE(result) << (result ? "" : result.error().toString().toStdString());
        EXPECT_TRUE(result.warnings.empty());
        return NodeRef(result.value());
    }

    /// The core that comes back of one that was written and read.
    template <class T>
    osg::RefPtr<typename T::Ptr> coreRoundTrip(const osg::NodeCorePtr& core) const
    {
        const NodeRef node(osg::Node::create());
        node->setCore(core);
        const NodeRef back = roundTrip(node);
        EXPECT_EQ(&back->getCore()->getType(), &T::_type);
        return osg::RefPtr<typename T::Ptr>(typename T::Ptr(static_cast<T*>(back->getCore().get())));
    }

    /// A triangle with everything that a mesh can have.
    static std::shared_ptr<const osg::Mesh> fullMesh()
    {
        osg::Mesh mesh;
        mesh.positions = std::vector<osg::Vec3f>{{1, 2, 3}, {4, 5, 6}, {7, 8, 10}, {-1.5f, 0.25f, 1e9f}};
        mesh.normals = std::vector<osg::Vec3f>{{0, 0, 1}, {0, 1, 0}, {1, 0, 0}, {0.6f, 0.8f, 0}};
        mesh.texCoords = std::vector<osg::Vec2f>{{0, 0.125f}, {1, 0.25f}, {2, 0.5f}, {3, 0.75f}};
        mesh.colors =
            std::vector<osg::Color4f>{{1, 0, 0, 0.5f}, {0, 1, 0, 0.25f}, {0, 0, 1, 1}, {0.1f, 0.2f, 0.3f, 0.4f}};
        mesh.triangles = std::vector<std::uint32_t>{0, 1, 2, 2, 1, 3};
        mesh.lines = std::vector<std::uint32_t>{0, 3, 3, 1};
        mesh.points = std::vector<std::uint32_t>{3};
        mesh.faces = std::vector<osg::FaceRange>{{0, 1}, {1, 0}, {1, 1}};
        mesh.brep =
            std::vector<std::byte>{std::byte{0xDE}, std::byte{0xAD}, std::byte{0x00}, std::byte{0xBE}, std::byte{0xEF}};
        return std::make_shared<const osg::Mesh>(std::move(mesh));
    }

    static osg::GeometryPtr geometryOf(const std::shared_ptr<const osg::Mesh>& mesh)
    {
        const osg::GeometryPtr geometry = osg::GeometryBase::create();
        osg::GeometryAccess::setMesh(*geometry, mesh);
        return geometry;
    }

private:
    QTemporaryDir m_folder;
};
