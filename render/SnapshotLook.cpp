#include "render/SnapshotLook.h"

#include <QCoreApplication>

namespace render
{

LookChoice lookFromText(const QString& text)
{
    for (const SnapshotLook look : {SnapshotLook::Plain, SnapshotLook::Studio})
        if (text.compare(lookName(look), Qt::CaseInsensitive) == 0)
            return {look, QString()};
    const QString message = QCoreApplication::translate("Snapshot", "Unknown look \"%1\". Known looks are: %2, %3");
    return {std::nullopt, message.arg(text, lookName(SnapshotLook::Plain), lookName(SnapshotLook::Studio))};
}

QString lookName(SnapshotLook look)
{
    return look == SnapshotLook::Studio ? QStringLiteral("studio") : QStringLiteral("plain");
}

} // namespace render
