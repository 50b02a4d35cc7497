#include "standalone/formats/SceneReaders.h"

#include "host/OSGSystem/Names.h"
#include "standalone/formats/ReadTask.h"

#include <QFileInfo>

#include <new>
#include <utility>

namespace formats
{

namespace
{

osg::NodePtr readBy(const SceneReaders& readers, ReadTask& task)
{
    const QFileInfo info(task.path());
    const SceneFormat* format = readers.find(info.suffix());
    if (!format)
        task.fail(ReadErrorCode::UnknownFormat, tr("there is no reader for files of this extension"));
    const osg::NodePtr root = format->read(task);
    osg::setName(root, info.completeBaseName().toStdString());
    return root;
}

ReadError errorOf(const ReadTask& task, ReadErrorCode code, const QString& message)
{
    return {{message, task.path(), {}}, code};
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
    ReadResult result;
    try {
        result.root = readBy(*this, task);
    } catch (const ReadFailure& failure) {
        result.error = failure.error();
    } catch (const std::bad_alloc&) {
        result.error = errorOf(task, ReadErrorCode::OutOfMemory, tr("there is not enough memory for this file"));
    } catch (const std::exception& exception) {
        result.error = errorOf(task, ReadErrorCode::Damaged, QString::fromUtf8(exception.what()));
    }
    result.warnings = task.warnings();
    return result;
}

} // namespace formats
