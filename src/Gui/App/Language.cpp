#include "Gui/App/Language.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

namespace ChipLoom {

LANGUAGE languageFrom(const QString &setting, const QLocale &system)
{
    for (const LANGUAGE language : {UI_EN, UI_CH}) {
        if (setting == languageSetting(language))
            return language;
    }
    return system.language() == QLocale::Chinese ? UI_CH : UI_EN;
}

QString languageSetting(LANGUAGE language)
{
    return language == UI_CH ? QStringLiteral("UI_CH") : QStringLiteral("UI_EN");
}

QString translationFile(LANGUAGE language)
{
    return language == UI_CH ? QStringLiteral(":/image/tr_zh.qm") : QStringLiteral(":/image/tr_en.qm");
}

bool switchLanguage(QTranslator *translator, LANGUAGE language)
{
    if (language == GlobalLanguage::g_CurrentLanguage || !QCoreApplication::removeTranslator(translator))
        return false;
    // Installed even if it did not load: only an installed translator can be taken out again.
    translator->load(translationFile(language));
    QCoreApplication::installTranslator(translator);
    switchQtTexts(language);
    GlobalLanguage::g_CurrentLanguage = language;
    return true;
}

void switchQtTexts(LANGUAGE language)
{
    const QString name = QStringLiteral("QtTexts");
    delete QCoreApplication::instance()->findChild<QTranslator *>(name); // which takes it out
    if (language != UI_CH)
        return;
    auto *translator = new QTranslator(QCoreApplication::instance());
    translator->setObjectName(name);
    translator->load(QStringLiteral("qtbase_zh_CN"), QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    QCoreApplication::installTranslator(translator);
}

} // namespace ChipLoom
