#pragma once

#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "standalone/startup/StandaloneSession.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <vector>

/// A test within a session of its own, with a folder whose name has a blank, an umlaut and Chinese letters. It leaves
/// nothing alive but what it names as left on purpose.
class SessionTest : public testing::Test
{
protected:
    SessionTest() : m_folder(QDir::tempPath() + QString::fromUtf8("/zn session ä 壳 XXXXXX"))
    {
        m_session.setLogSink([this](const char* text) { m_log.emplace_back(text); });
    }

    void TearDown() override
    {
        m_session.setLogSink({});
        std::vector<std::string> left;
        for (const osg::LivingContainer& container : m_session.end())
            left.push_back(container.type + (container.name.empty() ? "" : " " + container.name));
        EXPECT_THAT(left, testing::UnorderedElementsAreArray(m_leftOnPurpose)) << "left alive in the session";
    }

    /// What the behaviour under test leaves alive by design: the type, and a blank and the name where it has one.
    void leavesOnPurpose(std::vector<std::string> containers) { m_leftOnPurpose = std::move(containers); }

    /// Writes a file into the test's folder and gives its path.
    QString write(const QString& name, const QByteArray& content) const
    {
        QFile file(m_folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
        file.write(content);
        return file.fileName();
    }
    QString path(const QString& name) const { return m_folder.filePath(name); }

    /// A file of one triangle.
    QString writeTriangle(const QString& name) const { return write(name, "v 0 0 0\nv 2 0 0\nv 0 3 0\nf 1 2 3\n"); }

    /// A new group node below `parent`.
    static osg::NodePtr addGroup(const osg::NodePtr& parent, const char* name)
    {
        const osg::NodePtr node = osg::makeNodeFor(osg::Group::create());
        osg::setName(node, name);
        parent->addChild(node);
        return node;
    }

    static std::string nameOf(const osg::NodePtr& node)
    {
        const char* name = osg::getName(node);
        return name ? name : "";
    }

    /// The names of the children of `node`.
    static std::vector<std::string> childNames(const osg::NodePtr& node)
    {
        std::vector<std::string> names;
        for (unsigned i = 0; i < node->getNChildren(); ++i)
            names.push_back(nameOf(node->getChild(i)));
        return names;
    }

    QTemporaryDir m_folder;
    zn::StandaloneSession m_session;
    std::vector<std::string> m_log;

private:
    std::vector<std::string> m_leftOnPurpose;
};
