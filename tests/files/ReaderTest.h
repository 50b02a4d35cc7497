#pragma once

#include "files/SceneReader.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/Transform.h"
#include "scene/EditAudit.h"
#include "scene/Mesh.h"
#include "tests/scene/SceneGraphTest.h"
#include "tests/support/BuiltInReading.h"
#include "tests/support/QtPrinters.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <memory>
#include <string>
#include <vector>

/// Reads files that a test writes into a folder with a difficult name, and looks at what came of them. Whatever a read
/// makes is made within brackets, and nothing is left alive after the test.
class ReaderTest : public SceneGraphTest
{
protected:
    ReaderTest() : m_folder(QDir::tempPath() + QString::fromUtf8("/zn Prüf 模型 XXXXXX")) {}

    void TearDown() override
    {
        m_root = osg::NodePtr();
        SceneGraphTest::TearDown();
    }

    QString pathOf(const QString& name) const { return m_folder.filePath(name); }

    QString write(const QString& name, const QByteArray& content) const
    {
        const QString path = pathOf(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
        return path;
    }

    /// Reads and keeps the tree.
    files::ReadResult read(const QString& path, const files::ReadOptions& options = {})
    {
        const osg::EditAudit audit;
        const files::ReadResult result = ::readScene(path, options);
        EXPECT_TRUE(audit.unbracketed().empty());
        EXPECT_TRUE(audit.idleBrackets().empty());
        EXPECT_TRUE(audit.unmatchedEnds().empty());
        EXPECT_TRUE(!result || result.value());
        if (result) {
            EXPECT_EQ(result.value()->getRefCount(), 0u);
            EXPECT_EQ(&result.value()->getCore()->getType(), &osg::Group::_type);
            EXPECT_TRUE(result.value()->getParent() == osg::NullFC);
        }
        m_root = result ? result.value() : osg::NodePtr();
        return result;
    }

    /// The error of a read that must fail, in one line.
    QString errorOf(const QString& path, const files::ReadOptions& options = {})
    {
        const files::ReadResult result = read(path, options);
        if (result)
            return QStringLiteral("none");
        return QString::fromLatin1(files::errorName(result.error().code)) + QStringLiteral(" ") +
               QString(result.error().toString()).remove(m_folder.path() + QStringLiteral("/"));
    }

    static QStringList texts(const std::vector<files::Note>& notes)
    {
        QStringList result;
        for (const files::Note& note : notes)
            result << note.message + QStringLiteral(" @ ") + note.place;
        return result;
    }

    const osg::NodePtr& root() const { return m_root.get(); }

    /// The node below the root by its names; null and a failure if it is not there.
    osg::NodePtr node(const std::vector<std::string>& names) const
    {
        osg::NodePtr here = root();
        for (const std::string& name : names) {
            here = childNamed(here, name);
            EXPECT_TRUE(here) << "no node " << name;
            if (!here)
                break;
        }
        return here;
    }

    static std::string nameOf(const osg::AttachmentContainerPtr& container)
    {
        const char* name = osg::getName(container);
        return name ? name : "(none)";
    }

    static osg::GeometryPtr geometry(const osg::NodePtr& node) { return osg::fcCast<osg::Geometry>(node->getCore()); }
    static const osg::Mesh& mesh(const osg::NodePtr& node) { return osg::GeometryAccess::mesh(*geometry(node)); }

    static osg::SimpleMaterialPtr material(const osg::NodePtr& node)
    {
        return osg::fcCast<osg::SimpleMaterial>(geometry(node)->getMaterial());
    }

    /// Names below `node`: "a(b c) d".
    static std::string outline(const osg::NodePtr& node)
    {
        std::string text;
        for (unsigned i = 0; i < node->getNChildren(); ++i) {
            const osg::NodePtr child = node->getChild(i);
            text += (i ? " " : "") + nameOf(child);
            if (child->getNChildren() > 0)
                text += "(" + outline(child) + ")";
        }
        return text;
    }

    template <class T>
    static std::vector<T> list(const osg::Buffer<T>& buffer)
    {
        return {buffer.begin(), buffer.end()};
    }

private:
    static osg::NodePtr childNamed(const osg::NodePtr& parent, const std::string& name)
    {
        for (unsigned i = 0; i < parent->getNChildren(); ++i)
            if (nameOf(parent->getChild(i)) == name)
                return parent->getChild(i);
        return {};
    }

    QTemporaryDir m_folder;
    osg::RefPtr<osg::NodePtr> m_root;
};

namespace osg
{

inline void PrintTo(const Vec3f& v, std::ostream* out)
{
    *out << '(' << v.x << ' ' << v.y << ' ' << v.z << ')';
}

inline void PrintTo(const Vec2f& v, std::ostream* out)
{
    *out << '(' << v.x << ' ' << v.y << ')';
}

inline void PrintTo(const Color3f& c, std::ostream* out)
{
    *out << '(' << c.red << ' ' << c.green << ' ' << c.blue << ')';
}

inline void PrintTo(const Color4f& c, std::ostream* out)
{
    *out << '(' << c.red << ' ' << c.green << ' ' << c.blue << ' ' << c.alpha << ')';
}

} // namespace osg
