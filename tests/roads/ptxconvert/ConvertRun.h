#pragma once

#include "host/OSGSystem/Node.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/Transform3D.h"
#include "tests/roads/ptxconvert/TempFolder.h"

#include <QStringList>

#include <string>
#include <vector>

namespace ptxtest
{

/// One run of the real converter in a folder of its own, and a look at the scene that came out.
class ConvertRun
{
public:
    ConvertRun();
    ~ConvertRun();

    const TempFolder& folder() const { return m_folder; }
    std::string output() const { return m_folder.file("out.osb"); }

    /// Converts `input` to `output()`. @return the exit code, 128 + n when a signal n killed the process
    int convert(const std::string& input, const std::vector<std::string>& options = {});
    /// Writes `content` into the folder under `name` and converts it.
    int convertText(const std::string& name, const std::string& content, const std::vector<std::string>& options = {});
    /// Runs the program with these arguments.
    int run(const QStringList& arguments);

    std::string standardOutput() const { return m_standardOutput; }
    std::string standardError() const { return m_standardError; }
    std::string log() const { return contentOf(output() + ".log"); }
    std::string progress() const { return contentOf(output() + ".tmp"); }

    /// The tree in `output()`, null when it cannot be read; lives as long as this object.
    osg::NodePtr scene();

    /// The program beside the test.
    static QString program();

private:
    TempFolder m_folder;
    std::string m_standardOutput;
    std::string m_standardError;
    osg::RefPtr<osg::NodePtr> m_scene;
};

/// Every node at or below `root` with this name, depth first.
std::vector<osg::NodePtr> nodesNamed(const osg::NodePtr& root, const std::string& name);
/// The first of them, null if there is none.
osg::NodePtr nodeNamed(const osg::NodePtr& root, const std::string& name);

/// The geometries at and below `root`, depth first; one that is shared comes up as often as it is used.
std::vector<osg::GeometryPtr> geometries(const osg::NodePtr& root);

/// The diffuse colour and transparency of the geometry's material; black and -1 when it is no simple material.
struct Look {
    osg::Color3f diffuse;
    float transparency = -1;
    friend bool operator==(const Look&, const Look&) = default;
};
Look lookOf(const osg::GeometryPtr& geometry);

/// What hangs at and below `root`, in the space around `root`.
struct Measures {
    osg::Vec3f low, high;
    double area = 0;
    double volume = 0;
    std::size_t triangles = 0;
};
Measures measure(const osg::NodePtr& root);

std::string nameOf(const osg::NodePtr& node);

} // namespace ptxtest
