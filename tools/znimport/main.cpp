#include "standalone/session/SessionFolder.h"
#include "tools/znimport/Application.h"
#include "tools/znimport/Batch.h"
#include "tools/znimport/Ending.h"
#include "tools/znimport/Interrupt.h"
#include "tools/znimport/SelfCheck.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <langinfo.h>

namespace
{

int wrongUse(const QString& error)
{
    znimport::complain(error);
    std::fputs("Try 'znimport --help'.\n", stderr);
    return 2;
}

/// Qt writes file names in the locale's letters: where these are not UTF-8, names with other letters would be lost.
void useUtf8()
{
    std::setlocale(LC_CTYPE, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0)
        qputenv("LC_ALL", "C.UTF-8");
}

int print(const QString& text)
{
    std::fputs(text.toUtf8().constData(), stdout);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    znimport::Interrupt::catchSignals();
    useUtf8();
    // A write beyond the limit of file sizes is a failure like a full disk, and no reason to end without a word.
    std::signal(SIGXFSZ, SIG_IGN);
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("znimport"));
    QTranslator translator;
    if (translator.load(QLocale(), QStringLiteral("znCADImport"), QStringLiteral("_"),
                        QStringLiteral(":/translations")))
        QCoreApplication::installTranslator(&translator);
    znimport::CommandLineResult parsed = znimport::parseCommandLine(QCoreApplication::arguments().mid(1));
    if (parsed.error)
        return wrongUse(*parsed.error);
    for (int i = 1; i < argc; ++i)
        parsed.commandLine.arguments.append(argv[i]);
    if (parsed.commandLine.help)
        return print(znimport::helpText());
    if (parsed.commandLine.version)
        return print(QStringLiteral("znimport " ZN_VERSION "\n"));
    if (parsed.commandLine.helpSettings)
        return print(zn::Settings().helpText());
    if (const auto trouble = zn::SessionFolder::trouble()) {
        znimport::complain(*trouble);
        return 1;
    }
    if (parsed.commandLine.selfCheck)
        return znimport::selfCheck(parsed.commandLine);
    if (!parsed.commandLine.batchFolder.isEmpty())
        return znimport::Batch(parsed.commandLine).run();
    return znimport::Application(parsed.commandLine).run();
}
