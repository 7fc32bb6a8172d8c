#include "Gui/App/Startup.h"

#include "Gui/App/Language.h"
#include "Gui/App/Style.h"
#include "Gui/App/WindowPrompt.h"
#include "Gui/Home/MainWindow.h"

#include <QApplication>
#include <QIcon>
#include <QTranslator>

namespace ChipLoom {

int runChipLoom(int argc, char **argv)
{
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
