#pragma once

#include "importer/plmxml/Normaliser.h"
#include "importer/plmxml/PlaceWalk.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <cstdio>

/// Documents in a folder of their own, and what the normaliser makes of them.
class NormaliserTest : public testing::Test
{
protected:
    using Way = importer::plmxml::NormalisedDocument::Way;

    QString path(const char* name) const { return m_folder.filePath(QString::fromUtf8(name)); }

    void make(const char* name, const QByteArray& content = "x")
    {
        EXPECT_TRUE(QDir().mkpath(QFileInfo(path(name)).path()));
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    const importer::plmxml::NormalisedDocument& normalise(const std::string& content, const QStringList& preferred = {})
    {
        make("car.plmxml", QByteArray::fromStdString("<PLMXML>" + content + "</PLMXML>"));
        m_result = importer::plmxml::normalise(path("car.plmxml"), {preferred, {}, true});
        return m_result;
    }

    /// Why it was refused.
    QString reason() const { return describe(m_result.refusal); }

    /// "name x y z" of each place, in the numbers of the document, depth first; hidden ones in brackets.
    std::vector<std::string> places() const
    {
        using namespace importer::plmxml;
        std::vector<std::string> texts;
        std::vector<Matrix4> worlds;
        PlaceWalk(m_result.structure)
            .run(
                [&](const Place& place) {
                    const StructurePlacement& placement = m_result.structure.placements[place.placement];
                    const bool isMoved = place.override && place.override->isMoved;
                    worlds.resize(place.depth);
                    worlds.push_back((isMoved ? place.override->placed : placement.placed) *
                                     (place.depth > 0 ? worlds.back() : Identity4));
                    const bool isNamed = place.override && !place.override->name.empty();
                    char numbers[100];
                    std::snprintf(numbers, sizeof numbers, " %g %g %g", worlds.back()[12] + 0.0,
                                  worlds.back()[13] + 0.0, worlds.back()[14] + 0.0);
                    texts.push_back((isNamed ? place.override->name : placement.name) + numbers);
                    return true;
                },
                [](const Place&) {});
        return texts;
    }

    /// "names down to it, part, file" of each piece of a shape at each place, depth first.
    std::vector<std::string> shapes() const
    {
        using namespace importer::plmxml;
        std::vector<std::string> texts;
        std::vector<std::string> names;
        PlaceWalk(m_result.structure)
            .run(
                [&](const Place& place) {
                    const StructurePlacement& placement = m_result.structure.placements[place.placement];
                    names.resize(place.depth);
                    names.push_back((place.depth > 0 ? names.back() : "") + placement.name);
                    const StructurePart& part = m_result.structure.parts[placement.part];
                    for (const ShapePiece& piece : part.pieces)
                        texts.push_back(names.back() + " " + part.name + " " +
                                        m_result.facts.files[piece.file].path.toStdString());
                    return true;
                },
                [](const Place&) {});
        return texts;
    }

    /// "path places why" of each file that is named, sorted.
    std::vector<std::string> files() const
    {
        std::vector<std::string> texts;
        for (const zn::StructureFile& file : m_result.facts.files)
            texts.push_back(
                (file.path + QStringLiteral(" %1 ").arg(file.places) + file.whyNot).trimmed().toStdString());
        std::sort(texts.begin(), texts.end());
        return texts;
    }

    static std::string at(const char* translation)
    {
        return std::string("<Transform>1 0 0 0 0 1 0 0 0 0 1 0 ") + translation + " 1</Transform>";
    }

    importer::plmxml::NormalisedDocument m_result;
    QTemporaryDir m_folder{QDir::tempPath() + QString::fromUtf8("/normaliser äö XXXXXX")};
};
