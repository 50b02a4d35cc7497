// Files: their names, and the one format of this host, an outline of names, one a line.
#include "Containers.h"

#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znKernel/znFileIO.h"
#include "host/znKernel/znFileIOHelper.h"
#include "host/znKernel/znScenegraph.h"
#include "host/znUtils/znFile.h"

#include <filesystem>
#include <fstream>

namespace
{

std::vector<znFileIO::loadedS>& loaded()
{
    static std::vector<znFileIO::loadedS> list;
    return list;
}

osg::NodePtr makeNamedNode(const std::string& name)
{
    const osg::NodePtr node = osg::makeNodeFor(osg::Group::create());
    osg::setName(node, name);
    return node;
}

} // namespace

znFileIO::loadedS::loadedS(const osg::NodePtr& node) : m_nodeId(node->getContainerId()) {}

osg::NodePtr znFileIO::loadedS::getNode() const
{
    return osg::NodePtr(static_cast<osg::Node*>(osg::FieldContainerFactory::the()->getContainer(m_nodeId).get()));
}

int znFileIO::load(const std::vector<QString>& files, osg::NodePtr parent, bool, bool, bool)
{
    loaded().clear();
    const osg::NodePtr target = parent ? parent : znScenegraph::getRoot();
    for (const QString& file : files) {
        std::ifstream stream(std::filesystem::path(file.toStdString()));
        if (!stream)
            continue;
        const osg::NodePtr root = makeNamedNode(znFile::getBaseName(file.toStdString()));
        for (std::string line; std::getline(stream, line);)
            root->addChild(makeNamedNode(line));
        target->addChild(root);
        loaded().emplace_back(root);
    }
    return loaded().size() == files.size() ? LoadedFully : LoadedInPart;
}

const std::vector<znFileIO::loadedS>& znFileIO::getLoadedGeometriesList()
{
    return loaded();
}

bool znFileIO::getConvertToUberMaterials()
{
    return false;
}
void znFileIO::convertToUberMaterials(const osg::NodePtr&) {}
bool znFileIO::getUseGSK()
{
    return false;
}
void znFileIO::applyGeometryImportTransformations(const osg::NodePtr&, const QString&, bool, bool, bool) {}

/// Of all formats this host knows documents of parts alone.
znCADFileTypes::FileType znFileIOHelper::getFileTypeByFileName(const QString& path)
{
    return isPLMXMLFile(path) ? znCADFileTypes::PLMXML : znCADFileTypes::Undefined;
}
bool znFileIOHelper::isAssemblyFile(const QString& path)
{
    return isPLMXMLFile(path);
}
bool znFileIOHelper::canContainMixedAssemblies(const QString& path)
{
    return isPLMXMLFile(path);
}
bool znFileIOHelper::isStylarFile(const QString&)
{
    return false;
}
bool znFileIOHelper::isBrantelMechanorFile(const QString&)
{
    return false;
}
bool znFileIOHelper::isPtxFile(const QString&)
{
    return false;
}
bool znFileIOHelper::isPLMXMLFile(const QString& path)
{
    return path.endsWith(QStringLiteral(".plmxml"), Qt::CaseInsensitive);
}
QString znFileIOHelper::getFileNameFromFileInfo(const osg::NodePtr& node)
{
    const external::Notes* notes = external::findNotes(node);
    return notes ? QString::fromStdString(notes->file) : QString();
}

bool znFile::exists(const std::string& path, bool onlyFiles, bool)
{
    std::error_code error;
    return onlyFiles ? std::filesystem::is_regular_file(path, error) : std::filesystem::exists(path, error);
}
void znFile::remove(const std::string& path)
{
    std::error_code error;
    std::filesystem::remove(path, error);
}
std::string znFile::getTmpDir()
{
    return std::filesystem::temp_directory_path().string() + "/";
}
std::string znFile::convertSeparators(const std::string& path)
{
    return path;
}
std::string znFile::getExtension(const std::string& path)
{
    const std::string extension = std::filesystem::path(path).extension().string();
    return extension.empty() ? extension : extension.substr(1);
}
std::string znFile::getBaseName(const std::string& path)
{
    return std::filesystem::path(path).stem().string();
}
