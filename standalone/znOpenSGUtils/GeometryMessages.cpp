#include "standalone/znOpenSGUtils/GeometryMessages.h"

#include "host/OSGSystem/Names.h"
#include "host/znUtils/znLog.h"

#include <QCoreApplication>

namespace zn::nodes
{

namespace
{

QString tr(const char* text)
{
    return QCoreApplication::translate("GeometryMessages", text);
}

} // namespace

void tell(const std::vector<geometry::GeometryNote>& notes)
{
    for (const geometry::GeometryNote& note : notes) {
        const char* name = osg::getName(note.geometry);
        const QString sentence =
            tr("Geometry %1: %2").arg(name ? QString::fromUtf8(name) : tr("without a name"), note.text);
        znLog::error(sentence.toUtf8().constData());
    }
}

} // namespace zn::nodes
