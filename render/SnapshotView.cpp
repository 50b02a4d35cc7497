#include "render/SnapshotView.h"

#include <QCoreApplication>
#include <QStringList>

#include <array>

namespace render
{

namespace
{

struct NamedView {
    View view;
    const char* name;
};

constexpr std::array<NamedView, 7> namedViews = {{{View::Iso, "iso"},
                                                  {View::Front, "front"},
                                                  {View::Back, "back"},
                                                  {View::Left, "left"},
                                                  {View::Right, "right"},
                                                  {View::Top, "top"},
                                                  {View::Bottom, "bottom"}}};

QString knownNames()
{
    QStringList names;
    for (const NamedView& entry : namedViews)
        names << QString::fromLatin1(entry.name);
    return names.join(QStringLiteral(", "));
}

} // namespace

ViewChoice viewFromText(const QString& text)
{
    for (const NamedView& entry : namedViews)
        if (text.compare(QLatin1String(entry.name), Qt::CaseInsensitive) == 0)
            return {entry.view, QString()};
    const QString message = QCoreApplication::translate("Snapshot", "Unknown view \"%1\". Known views are: %2");
    return {std::nullopt, message.arg(text, knownNames())};
}

QString viewName(View view)
{
    for (const NamedView& entry : namedViews)
        if (entry.view == view)
            return QString::fromLatin1(entry.name);
    return QString();
}

} // namespace render
