#include "standalone/znKernel/OutputNames.h"

#include "protocol/FileNames.h"
#include "standalone/znKernel/ConverterCommand.h"

#include <QFile>
#include <QRandomGenerator>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace zn::kernel
{

namespace
{

/// Names that are told apart by a number; behind these chance decides, so that many jobs cost no long look.
constexpr int countedNames = 9;

QString randomMark()
{
    return QString::number(QRandomGenerator::system()->generate(), 16);
}

QString pathOf(const QString& folder, const QString& name, const QString& mark, const char* ending)
{
    const QString marked = mark.isEmpty() ? name : name + QLatin1Char('-') + mark;
    return folder + QLatin1Char('/') + marked + QLatin1String(ending);
}

/// Whether somebody else has the name. When nobody has, it is ours from now on.
bool belongsToOthers(const QString& output)
{
    const QByteArray progress = QFile::encodeName(output + QLatin1String(protocol::ProgressSuffix));
    const int file = ::open(progress.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file < 0)
        return errno == EEXIST;
    ::close(file);
    return false;
}

} // namespace

QString takenSceneFile(const QString& input, const QString& folder)
{
    const QString name = convertedName(input);
    QString output = pathOf(folder, name, QString(), protocol::SceneFileSuffix);
    for (int number = 2; belongsToOthers(output); ++number) {
        const QString mark = number <= countedNames ? QString::number(number) : randomMark();
        output = pathOf(folder, name, mark, protocol::SceneFileSuffix);
    }
    return output;
}

QString updatedFile(const QString& input, const QString& folder)
{
    return pathOf(folder, convertedName(input), randomMark(), "-updated.styl");
}

} // namespace zn::kernel
