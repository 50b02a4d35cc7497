#include "files/vrml/VrmlFiles.h"

#include "files/Failure.h"
#include "files/vrml/VrmlParser.h"

#include <QDir>
#include <QFileInfo>

namespace files::vrml
{

namespace
{

constexpr std::size_t maxFiles = 1000;

} // namespace

Files::Files(ReadTask& task) : m_task(task), m_store(task.options().limits.maxNodes) {}

const File& Files::open(const QString& path)
{
    auto file = std::make_unique<File>(m_task, path);
    file->nodes = parse(file->source, m_store);
    std::unique_ptr<File>& kept = m_files[QFileInfo(path).canonicalFilePath()];
    kept = std::move(file);
    return *kept;
}

Files::Target Files::targetOf(const Node& inlined, const File& from) const
{
    Target target;
    const QDir folder = QFileInfo(from.source.path()).dir();
    for (const std::string& url : inlined.strings("url")) {
        QString name = QString::fromStdString(url);
        if (name.startsWith(QLatin1String("file://")))
            name.remove(0, 7);
        const QFileInfo info(QDir::cleanPath(folder.absoluteFilePath(name)));
        if (name.isEmpty())
            continue;
        if (const auto refusal = m_task.refusal(references::Use::Document, info.filePath(), from.source.path()))
            target.refusal = refusal;
        else if (info.isFile())
            return {info.canonicalFilePath(), std::nullopt};
    }
    return target;
}

const File* Files::openInline(const Node& inlined, const File& from)
{
    const auto [path, refusal] = targetOf(inlined, from);
    if (path.isEmpty()) {
        const std::span<const std::string> urls = inlined.strings("url");
        const QString name = quoted(urls.empty() ? std::string() : urls.front());
        from.source.warn(refusal ? tr("the file '%1' is left out: %2").arg(name, files::textOf(*refusal))
                                 : tr("the file '%1' is not there").arg(name),
                         inlined.offset);
        return nullptr;
    }
    const auto known = m_files.find(path);
    if (known != m_files.end())
        return known->second.get();
    if (m_files.size() >= maxFiles)
        from.source.fail(ErrorCode::LimitExceeded, tr("more than %1 files").arg(static_cast<qulonglong>(maxFiles)),
                         inlined.offset);
    m_files[path] = nullptr;
    try {
        return &open(path);
    } catch (const files::Failure& failure) {
        if (failure.error().code == ErrorCode::LimitExceeded)
            throw;
        m_task.warnIn(failure.error().file, failure.error().message, failure.error().place);
        return nullptr;
    }
}

} // namespace files::vrml
