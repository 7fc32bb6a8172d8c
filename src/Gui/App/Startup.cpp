#include "Gui/App/Startup.h"

#include "Base/Version.h"
#include "Gui/App/Language.h"
#include "Gui/App/Style.h"
#include "Gui/App/WindowPrompt.h"
#include "Gui/Home/MainWindow.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>
#include <QTranslator>

#include <algorithm>

namespace ChipLoom {

namespace {

/// Answers "--help" and "--version", which need no display, and ends the process then.
void answerOptions(int argc, char **argv)
{
    const auto asks = [](const char *argument) {
        const QLatin1String text(argument);
        return text == QLatin1String("-h") || text == QLatin1String("--help") || text == QLatin1String("-v") ||
               text == QLatin1String("--version");
    };
    if (std::none_of(argv + 1, argv + argc, asks))
        return;
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("chiploom"));
    QCoreApplication::setApplicationVersion(QLatin1String(ProgramVersion));
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Chip Loom: configures ZV32 microcontrollers and writes their C "
                                                    "projects. Without windows: chiploom-cli."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("A design to open (.ZVWP)."),
                                 QStringLiteral("[file]"));
    parser.process(application);
}

} // namespace

int runChipLoom(int argc, char **argv)
{
    answerOptions(argc, argv);
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);

    const XMLOperation xml(AppPaths::ofThisProcess());
    QString setting;
    xml.GetConfigValueFromXml(xml.paths().configFile(), QStringLiteral("Language"), setting);
    GlobalLanguage::g_CurrentLanguage = languageFrom(setting, QLocale::system());
    QTranslator translator;
    const bool loaded = translator.load(translationFile(GlobalLanguage::g_CurrentLanguage));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/image/ZevtraIcon")));
    if (loaded)
        QApplication::installTranslator(&translator);
    switchQtTexts(GlobalLanguage::g_CurrentLanguage);
    Style::apply(application);

    WindowPrompt prompt;
    MainWindow window(xml, prompt);
    window.SetLanguage(GlobalLanguage::g_CurrentLanguage);
    window.SetQTranslator(&translator);
    window.show();
    const QString file = QApplication::arguments().value(1).replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (!window.offerRecovery() && !file.isEmpty())
        window.OpenDesignFromDoubleClickFile(file);
    return QApplication::exec();
}

} // namespace ChipLoom
