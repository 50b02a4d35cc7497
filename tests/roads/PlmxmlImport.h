#pragma once

#include "importer/Importer.h"
#include "tests/loader/LoaderTest.h"

#include <QEventLoop>
#include <QTimer>

/// Imports of PLMXML documents by the importer; the content of each CAD file is the script of its conversion.
class PlmxmlImport : public LoaderTest
{
protected:
    PlmxmlImport()
    {
        set("files.temporaryFolder", outputFolder());
        set("optimize.sourceReferences", QStringLiteral("keep"));
        set("scene.fold", QStringLiteral("off")); // what is looked at are the nodes that the jobs make
        QObject::connect(&m_importer, &zn::Importer::progressChanged,
                         [this](unsigned, const QString& text) { m_texts << text; });
        QObject::connect(&m_importer, &zn::Importer::partsChanged,
                         [this](const zn::PartCounts& counts, const QString&) { m_counts.push_back(counts); });
    }

    /// A document with one solid part for each location, placed once each as "I0", "I1" ..., moved by 1, 2 ... metres.
    QString documentOf(const std::vector<std::string>& locations, const QString& name = QStringLiteral("car.plmxml"))
    {
        std::string roots, instances, parts;
        for (std::size_t i = 0; i < locations.size(); ++i) {
            const std::string n = std::to_string(i);
            roots += (i ? " i" : "i") + n;
            instances += "<Instance id='i" + n + "' name='I" + n + "' partRef='#p" + n +
                         "'><Transform type='translate'>" + std::to_string(i + 1) + " 0 0</Transform></Instance>";
            parts += "<Part id='p" + n + "' name='P" + n + "' type='solid'><Representation id='r" + n +
                     "' format='X' location='" + locations[i] + "'/></Part>";
        }
        const std::string text = "<PLMXML><ProductDef id='pd'><InstanceGraph rootRefs='" + roots + "'>" + instances +
                                 "</InstanceGraph>" + parts + "</ProductDef></PLMXML>";
        return write(name, QByteArray::fromStdString(text));
    }

    zn::ImportResult import(const QString& file)
    {
        QEventLoop loop;
        zn::ImportResult result;
        QObject::connect(&m_importer, &zn::Importer::finished, &loop, [&](const zn::ImportResult& end) {
            result = end;
            loop.quit();
        });
        QTimer::singleShot(m_longestImport, &loop, &QEventLoop::quit);
        m_importer.import({file});
        loop.exec();
        EXPECT_EQ(result.file, file);
        return result;
    }
    zn::ImportResult importParts(const std::vector<std::string>& locations) { return import(documentOf(locations)); }

    /// The part node of the instance `index` of such a document.
    static osg::NodePtr partOf(const zn::ImportResult& result, unsigned index)
    {
        return result.node->getChild(0)->getChild(index)->getChild(0);
    }

    static QStringList missingTexts(const zn::ImportResult& result)
    {
        QStringList texts;
        for (const zn::MissingPart& part : result.missing)
            texts << QFileInfo(part.file).fileName() + QStringLiteral(": ") + part.reason + QStringLiteral(" [") +
                         part.instances.join(QLatin1Char(' ')) + QLatin1Char(']');
        texts.sort();
        return texts;
    }

    zn::Importer m_importer{m_session};
    int m_longestImport = 60000; ///< in milliseconds
    QStringList m_texts;
    std::vector<zn::PartCounts> m_counts;
};
