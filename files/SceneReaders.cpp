#include "files/SceneReaders.h"

#include "files/Failure.h"
#include "files/ReadTask.h"
#include "host/OSGSystem/Names.h"

#include <QFileInfo>

#include <new>
#include <utility>

namespace files
{

namespace
{

osg::NodePtr readBy(const SceneReaders& readers, ReadTask& task)
{
    const QFileInfo info(task.path());
    const SceneFormat* format = readers.find(info.suffix());
    if (!format)
        task.fail(ErrorCode::UnknownFormat, tr("there is no reader for files of this extension"));
    const osg::NodePtr root = format->read(task);
    osg::setName(root, info.completeBaseName().toStdString());
    return root;
}

Error errorOf(const ReadTask& task, ErrorCode code, const QString& message)
{
    return {{message, task.path(), {}}, code};
}

files::Expected<osg::NodePtr> rootOrError(const SceneReaders& readers, ReadTask& task)
{
    try {
        return readBy(readers, task);
    } catch (const files::Failure& failure) {
        return failure.error();
    } catch (const std::bad_alloc&) {
        return errorOf(task, ErrorCode::OutOfMemory, tr("there is not enough memory for this file"));
    } catch (const std::exception& exception) {
        return errorOf(task, ErrorCode::Damaged, QString::fromUtf8(exception.what()));
    }
}

} // namespace

void SceneReaders::add(SceneFormat format)
{
    m_formats.push_back(std::move(format));
}

const SceneFormat* SceneReaders::find(const QString& extension) const
{
    const QString wanted = extension.toLower();
    for (auto format = m_formats.rbegin(); format != m_formats.rend(); ++format)
        if (format->extensions.contains(wanted))
            return &*format;
    return nullptr;
}

ReadResult SceneReaders::read(const QString& path, const ReadOptions& options) const
{
    ReadTask task(path, options);
    files::Expected<osg::NodePtr> root = rootOrError(*this, task);
    return {std::move(root), task.warnings()};
}

} // namespace files
