// Reads the symbol table of the import library: it shows its exported classes, whole, and nothing else.

#include <QProcess>
#include <QRegularExpression>
#include <QStringList>

#include <gtest/gtest.h>

namespace
{

QStringList exportedSymbols()
{
    QProcess nm;
    nm.start(QStringLiteral("nm"),
             {QStringLiteral("-DC"), QStringLiteral("--defined-only"), QString::fromUtf8(ZN_IMPORT_LIBRARY)});
    EXPECT_TRUE(nm.waitForFinished(30000));
    QStringList symbols;
    for (const QString& line : QString::fromUtf8(nm.readAllStandardOutput()).split(QLatin1Char('\n')))
        if (!line.trimmed().isEmpty())
            symbols.append(line.section(QLatin1Char(' '), 2));
    return symbols;
}

TEST(ExportedSymbols, AreThoseOfTheExportedClassesAndNoOthers)
{
    const QRegularExpression allowed(
        QStringLiteral("^((vtable|typeinfo|typeinfo name) for )?(znFileLoaderJob|znPtxConverterJob|znPtxLoaderJob|"
                       "znPtxTreeOptimizationJob|znPLMXMLLoaderJob|znPLMXMLLoader)(::.*)?$"));
    const QStringList symbols = exportedSymbols();
    EXPECT_GT(symbols.size(), 20);
    for (const QString& symbol : symbols)
        EXPECT_TRUE(allowed.match(symbol).hasMatch()) << symbol.toStdString();
}

TEST(ExportedSymbols, HoldTheMetaObjectOfEachJob)
{
    const QStringList symbols = exportedSymbols();
    for (const QString& name :
         {QStringLiteral("znFileLoaderJob"), QStringLiteral("znPtxConverterJob"), QStringLiteral("znPtxLoaderJob"),
          QStringLiteral("znPtxTreeOptimizationJob"), QStringLiteral("znPLMXMLLoaderJob")})
        for (const QString& member : {QStringLiteral("::staticMetaObject"), QStringLiteral("::metaObject() const"),
                                      QStringLiteral("::qt_metacast(char const*)")})
            EXPECT_TRUE(symbols.contains(name + member)) << (name + member).toStdString();
}

} // namespace
